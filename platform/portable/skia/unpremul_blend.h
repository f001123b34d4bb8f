#pragma once

#include <cstdint>

#include "SkColor.h"

namespace portable {

/// Four bytes as they lie in memory: colour not multiplied by alpha.
struct RgbaPixel {
    uint8_t r, g, b, a;
};

inline RgbaPixel pixelOf(SkColor color) {
    return {static_cast<uint8_t>(SkColorGetR(color)), static_cast<uint8_t>(SkColorGetG(color)),
            static_cast<uint8_t>(SkColorGetB(color)), static_cast<uint8_t>(SkColorGetA(color))};
}

/// Source-over between colours that are not multiplied by alpha. With alphas S and D in 0..1 the result's alpha is
/// a = S + D (1 - S) and its colours are (s S + d D (1 - S)) / a, in single precision, rounded half up. Where the
/// ground is fully transparent the source is copied as it is; two transparent pixels give 0, 0, 0, 0.
inline RgbaPixel sourceOver(RgbaPixel source, RgbaPixel ground) {
    if (source.a == 0 && ground.a == 0) return {0, 0, 0, 0};
    if (source.a == 0) return ground;
    if (source.a == 255 || ground.a == 0) return source;

    const float sourceAlpha = static_cast<float>(source.a) / 255.0f;
    const float groundPart = static_cast<float>(ground.a) / 255.0f * (1.0f - sourceAlpha);
    const float alpha = sourceAlpha + groundPart;
    const auto mixed = [&](uint8_t s, uint8_t d) {
        const float sum = static_cast<float>(s) / 255.0f * sourceAlpha + static_cast<float>(d) / 255.0f * groundPart;
        const float level = sum / alpha * 255.0f + 0.5f;
        return static_cast<uint8_t>(level < 255.0f ? level : 255.0f);
    };
    const float level = alpha * 255.0f + 0.5f;
    return {mixed(source.r, ground.r), mixed(source.g, ground.g), mixed(source.b, ground.b),
            static_cast<uint8_t>(level < 255.0f ? level : 255.0f)};
}

/// Adds coverage c to coverage d. An untouched destination gets c itself.
inline uint8_t coverageOver(unsigned c, unsigned d) {
    return static_cast<uint8_t>((255 * c + d * (255 - c) + 255) >> 8);
}

/// Coverage under a paint's alpha; 255 leaves it as it is, 128 halves it.
inline unsigned coverageTimesAlpha(unsigned c, unsigned alpha) {
    return c * (alpha + 1) >> 8;
}

}  // namespace portable
