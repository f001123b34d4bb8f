#pragma once

#include <cstdint>

namespace QxFontEffect {

/// Turns a row of blurred coverage into the shadow inside the glyphs: 255 minus it where there is ink, else 0.
///
/// Coverage only opens or shuts a pixel: a faint edge pixel receives the full shadow, which keeps the dark rim
/// unbroken along anti-aliased edges.
///
/// @param coverage  `count` samples, must not overlap the row.
/// @param row       `count` samples, changed in place.
void complementWhereInked(const uint8_t* coverage, int count, uint8_t* row);

}  // namespace QxFontEffect
