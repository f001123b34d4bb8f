#include "effect/shadow_geometry.h"

#include <algorithm>

#include "effect/kernel/gauss_weights.h"
#include "effect/kernel/pinned_math.h"
#include "effect/safe_convert.h"

namespace QxFontEffect {
namespace {

// 3.14159 and not pi: shifts are rounded to whole pixels, and the last digits decide ties. Angle 30, distance 1 gives
// (-1, 0) with this constant and (-1, 1) with pi.
constexpr float kShortPi = 3.14159f;

int32_t roundAwayFromZero(float value) {
    return truncToInt(value > 0.0f ? value + 0.5f : value - 0.5f);
}

}  // namespace

ShadowShift shadowShift(float angleDegrees, float distance) {
    const float radians = angleDegrees * kShortPi / 180.0f;
    return {roundAwayFromZero(distance * -pinnedCos(radians)), roundAwayFromZero(distance * pinnedSin(radians))};
}

int32_t shadowRadius(float size) {
    if (size != size) return -1;
    // Rounded in double precision: the float below 0.5 must not become 1 on the way.
    const int32_t radius = std::max(truncToInt(static_cast<double>(size) + 0.5), 0);
    return radius <= kMaxGaussRadius ? radius : -1;
}

}  // namespace QxFontEffect
