#pragma once

#include <cstdint>

#include "pixel/QxBitmap.h"

namespace QxFontEffect::test::reference {

/// Coverage of a pixel; 0 outside the bitmap.
inline uint8_t coverageAt(const QxBitmap& coverage, int64_t x, int64_t y) {
    const bool within = x >= 0 && y >= 0 && x < int64_t{coverage.width} && y < int64_t{coverage.height};
    return within ? coverage.pixels[y * coverage.width + x] : uint8_t{0};
}

/// f / 256 of c1 and the rest of c0, channel by channel.
inline uint32_t mixed(uint32_t c1, uint32_t c0, int f) {
    uint32_t color = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const int high = static_cast<int>(c1 >> shift & 255), low = static_cast<int>(c0 >> shift & 255);
        color |= static_cast<uint32_t>((high * f + low * (256 - f)) >> 8) << shift;
    }
    return color;
}

inline uint32_t premultiplied(uint32_t color) {
    const uint32_t a = color >> 24;
    uint32_t pixel = a << 24;
    for (int shift = 0; shift < 24; shift += 8) pixel |= (((color >> shift & 255) + 1) * a >> 8) << shift;
    return pixel;
}

}  // namespace QxFontEffect::test::reference
