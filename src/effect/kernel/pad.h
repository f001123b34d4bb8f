#pragma once

#include <cstdint>

#include "pixel/plane.h"

namespace QxFontEffect {

/// Copies a plane into the middle of a larger one and fills the frame around it.
///
/// @param inside  W x H samples.
/// @param pad     width of the frame on every side, pixels, 0 or more.
/// @param frame   value of the frame.
/// @param dst     (W + 2 * pad) x (H + 2 * pad), must not overlap `inside`.
void padPlane8(ConstPlane8 inside, int pad, uint8_t frame, Plane8 dst);

/// Replaces every sample by 255 minus it.
void complementPlane8(Plane8 plane);

}  // namespace QxFontEffect
