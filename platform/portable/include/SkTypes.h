#pragma once

#include <cstddef>
#include <cstdint>

/// A byte widened to a register.
using U8CPU = unsigned;

/// Index of a glyph in its font; 0 is the font's "missing" picture.
using SkGlyphID = uint16_t;

/// Process-wide number of a typeface, never 0 and never reused.
using SkFontID = uint32_t;
