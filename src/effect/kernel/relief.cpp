#include "effect/kernel/relief.h"

#include <algorithm>

#include "effect/kernel/sqrt_table.h"

namespace QxFontEffect {
namespace {

inline float clampStrength(float value) {
    return value > 0.0f ? (value < 255.0f ? value : 255.0f) : 0.0f;
}

inline float strengthOf(float height, const ReliefBand& band) {
    const float fromTop = band.top - height;
    return clampStrength((band.bothEnds ? std::min(height, fromTop) : fromTop) * band.gain);
}

// How bright a slope is, 0..255.
inline float shadeOf(float gx, float gy, const ReliefLight& light) {
    const float length = fsqrt(light.h * light.h + gx * gx + gy * gy);
    return clampStrength((light.h * light.lz - light.lx * gx - light.ly * gy) / length * 255.0f);
}

// The + 1 makes full alpha and full shade pass the strength on unchanged.
inline uint8_t applied(int alpha, int shade, int strength) {
    const int product = ((alpha * shade >> 8) + 1) * strength;
    return static_cast<uint8_t>(product >= 65536 ? 255 : product < 0 ? 0 : product >> 8);
}

}  // namespace

void lightReliefRow(const float* above, const float* here, const float* below, int count, const ReliefLight& light,
                    const ReliefBand& band, uint8_t* shadow, uint8_t* highlight) {
    for (int x = 0; x < count; ++x) {
        const float gx = (here[x - 1] - here[x + 1]) * 0.5f;
        const float gy = (above[x] - below[x]) * 0.5f;
        const float shade = shadeOf(gx, gy, light);
        const int strength = static_cast<int>(strengthOf(here[x], band));
        // Two roundings: adding 1 before the conversion can carry the last fraction up.
        const int lit = band.rising ? 256 - static_cast<int>(shade) : static_cast<int>(shade) + 1;
        const int shaded = band.rising ? static_cast<int>(shade + 1.0f) : 255 - static_cast<int>(shade);
        shadow[x] = applied(light.shadowAlpha, shaded, strength);
        highlight[x] = applied(light.highlightAlpha, lit, strength);
    }
}

}  // namespace QxFontEffect
