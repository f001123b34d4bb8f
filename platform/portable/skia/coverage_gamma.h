#pragma once

#include <cstdint>

namespace portable {

/// The platform's correction of antialiased glyph masks for dark text on a light ground: coverage c becomes
/// 255 (1 - (1 - c/255)^(1/g)), rounded, with g = 89/64, which makes masks lighter. The curve depends on the
/// brightness of the paint's colour; text goes into coverage masks in black only, so this is the curve for black.
///
/// @return 256 bytes indexed by coverage, valid for the whole process.
const uint8_t* blackCoverageGamma();

}  // namespace portable
