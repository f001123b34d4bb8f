#include "effect/kernel/gauss_weights.h"

#include "effect/kernel/pinned_math.h"

namespace QxFontEffect {

int gaussWeight(int radius, int peak, int distance) {
    if (distance == 0) return peak;
    // ln 100 to six digits, so that the weight at the radius is 1.
    constexpr float kLn100 = 4.60517f;
    const float variance = static_cast<float>(radius) * static_cast<float>(radius) / kLn100;
    const float exponent = -static_cast<float>(distance * distance) / variance;
    const float scaled = pinnedExp(exponent) * static_cast<float>(peak);
    // Never negative, so cutting off after the addition rounds as meant.
    return static_cast<int>(static_cast<double>(scaled) + 0.5);  // NOLINT(bugprone-incorrect-roundings)
}

GaussBell makeGaussBell(int radius, int peak) {
    GaussBell bell{};
    bell.radius = radius;
    bell.peak = peak;
    int weight = peak;
    for (int reach = 0; reach <= radius; ++reach) {
        const int beyond = reach == radius ? 0 : gaussWeight(radius, peak, reach + 1);
        const int height = weight - beyond;
        bell.sum += height * (2 * reach + 1);
        if (height > 0) bell.boxes[bell.boxCount++] = {reach, height};
        weight = beyond;
    }
    return bell;
}

}  // namespace QxFontEffect
