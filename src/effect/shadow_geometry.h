#pragma once

#include <cstdint>

namespace QxFontEffect {

/// How far a shadow falls, in whole pixels, right and down positive.
struct ShadowShift {
    int32_t dx;
    int32_t dy;
};

/// The shift of a shadow under light from `angleDegrees` (0 is the right, 90 the top) that falls `distance` pixels:
/// opposite to the light, each coordinate rounded half away from zero. NaN gives 0, what is out of range the limit.
ShadowShift shadowShift(float angleDegrees, float distance);

/// The blur radius of a shadow's size: pixels, rounded, negative sizes count as 0. Negative for sizes that draw
/// nothing, which are NaN and those beyond kMaxGaussRadius.
int32_t shadowRadius(float size);

}  // namespace QxFontEffect
