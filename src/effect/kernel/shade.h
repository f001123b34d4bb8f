#pragma once

#include <cstdint>

namespace QxFontEffect {

/// Turns a row of blurred coverage into the shadow inside the glyphs: 255 minus it where there is ink, else 0.
///
/// Coverage only opens or shuts a pixel: a faint edge pixel receives the full shadow, which keeps the dark rim
/// unbroken along anti-aliased edges.
///
/// @param coverage  `count` samples, like the others.
/// @param shadow    must not overlap them.
void complementWhereInked(const uint8_t* coverage, const uint8_t* blurred, int count, uint8_t* shadow);

}  // namespace QxFontEffect
