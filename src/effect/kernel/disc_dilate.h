#pragma once

#include <cstdint>

namespace QxFontEffect {

/// Cells of an anti-aliased disc on each side of its centre: the radius rounded to the nearest whole number.
///
/// @return 0 and more, or -1 where there is no disc: NaN, -1.5 and less, or a side that does not fit 32 bits.
int discReach(float radius);

/// One cell of an anti-aliased disc: 255 within the radius, falling to 0 over the pixel beyond it.
///
/// The centre cell is min(radius, 1) and not what the ring formula gives there, so that a disc narrower than a pixel
/// is weak in the middle as well.
///
/// @param row, column  from the centre.
uint8_t discCell(float radius, int64_t row, int64_t column);

}  // namespace QxFontEffect
