#pragma once

#include <cstdint>

#include "pixel/QxBitmap.h"

namespace QxFontEffect::test::reference {

/// Coverage of a pixel; 0 outside the bitmap.
inline uint8_t coverageAt(const QxBitmap& coverage, int64_t x, int64_t y) {
    const bool within = x >= 0 && y >= 0 && x < int64_t{coverage.width} && y < int64_t{coverage.height};
    return within ? coverage.pixels[y * coverage.width + x] : uint8_t{0};
}

}  // namespace QxFontEffect::test::reference
