#include "effect/kernel/color_ramp.h"

#include <algorithm>
#include <cmath>

namespace QxFontEffect {

uint32_t mixColors(uint32_t c0, uint32_t c1, int f) {
    constexpr uint32_t kLanes = 0x00FF00FFu;
    const uint32_t share1 = static_cast<uint32_t>(f);
    const uint32_t share0 = 256u - share1;
    const uint32_t redBlue = ((c1 & kLanes) * share1 + (c0 & kLanes) * share0) >> 8;
    const uint32_t alphaGreen = ((c1 >> 8) & kLanes) * share1 + ((c0 >> 8) & kLanes) * share0;
    return (redBlue & kLanes) | (alphaGreen & ~kLanes);
}

uint32_t segmentColor(float t, float start, float span, uint32_t c0, uint32_t c1) {
    if (span == 0.0f) return t == start ? c0 : c1;
    const float f = (t - start) / span * 256.0f;
    if (!(f >= 1.0f)) return c0;
    if (f >= 256.0f) return c1;
    return mixColors(c0, c1, static_cast<int>(f));
}

float rampPosition(int i, RampCurve curve) {
    const float t = static_cast<float>(i) * 0.00390625f;
    if (curve == RampCurve::SquareRoot) return std::sqrt(t);
    if (curve == RampCurve::Square) return t * t;
    return t;
}

uint32_t premultiplyColor(uint32_t color) {
    const uint32_t alpha = color >> 24;
    const uint32_t red = (((color >> 16) & 255u) + 1u) * alpha >> 8;
    const uint32_t green = (((color >> 8) & 255u) + 1u) * alpha >> 8;
    const uint32_t blue = ((color & 255u) + 1u) * alpha >> 8;
    return alpha << 24 | red << 16 | green << 8 | blue;
}

void fadeRampAlpha(uint32_t* ramp, float range) {
    const float share = range >= 1.0f ? 0.99f : range > 0.0f ? range : 0.01f;
    const int first = static_cast<int>(static_cast<double>(share) * 256.0);
    for (int i = first; i < kRampEntries; ++i) {
        const float left = static_cast<float>(256 - i) * 256.0f / static_cast<float>(256 - first);
        const uint32_t alpha = (ramp[i] >> 24) * static_cast<uint32_t>(left) >> 8;
        ramp[i] = (ramp[i] & 0x00FFFFFFu) | alpha << 24;
    }
}

void fillRamp(uint32_t color, uint32_t* ramp) {
    std::fill(ramp, ramp + kRampEntries, color);
}

}  // namespace QxFontEffect
