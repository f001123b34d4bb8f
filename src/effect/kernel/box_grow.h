#pragma once

#include <cstdint>

#include "pixel/plane.h"

namespace QxFontEffect {

/// Bytes of scratch that `growByBoxPlane8` wants for planes of `width` columns.
int64_t boxGrowScratchBytes(int width);

/// Grows the bright parts of a plane by about a pixel a pass: every sample becomes the sum of the 3 x 3 samples around
/// it, divided by 4 and limited to 255.
///
/// The first and the last row never change. In the other rows the first and the last sample are 0 after a pass; a
/// plane less than three columns wide becomes 0 there.
///
/// @param plane    changed in place; planes less than three rows high stay as they are.
/// @param passes   0 or less changes nothing.
/// @param scratch  boxGrowScratchBytes(plane.width) bytes, contents undefined before and after.
void growByBoxPlane8(Plane8 plane, int passes, uint8_t* scratch);

}  // namespace QxFontEffect
