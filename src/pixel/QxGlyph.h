#pragma once

#include <cstdint>

namespace QxFontEffect {

/// One rasterised line of glyphs: a coverage image and its placement relative to pen and baseline.
///
/// The 16-bit sides wrap for lines wider or higher than 65535 pixels; the pixel memory is then larger than
/// width x height, never smaller.
struct QxGlyph {
    unsigned char* pixels;  ///< width x height coverage bytes, no row padding; owned by the drawing driver
    uint16_t width;         ///< columns
    uint16_t height;        ///< rows
    int32_t top;            ///< rows from the top row down to the baseline
    int32_t left;           ///< columns from the pen to the left column
};

}  // namespace QxFontEffect
