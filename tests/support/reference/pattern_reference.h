#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "pixel/QxBitmap.h"
#include "pixel/QxRect.h"

namespace QxFontEffect::test {

/// The pattern's pixels in the plainest loops: what the core blends, 0 where there is no ink. The rectangle lies within
/// the coverage, settings are finite, and both tile sides are at least 1 or the rectangle's side there is 1.
inline std::vector<uint32_t> patternPixelsRef(const QxBitmap& coverage, const QxRect& rect, const QxBitmap& pattern,
                                              float scale, float opacity) {
    const int width = rect.right - rect.left;
    const int height = rect.bottom - rect.top;
    const int patternWidth = static_cast<int>(pattern.width);
    const int patternHeight = static_cast<int>(pattern.height);
    const int tileWidth = static_cast<int>(scale * static_cast<float>(patternWidth));
    const int tileHeight = static_cast<int>(scale * static_cast<float>(patternHeight));
    const auto sample = [&](int x, int y, int k) -> int {
        return pattern
            .pixels[(static_cast<size_t>(y) * pattern.width + static_cast<size_t>(x)) * 4 + static_cast<size_t>(k)];
    };

    std::vector<uint32_t> scratch(static_cast<size_t>(width) * static_cast<size_t>(height), 0);
    for (int r = 0; r < height; ++r) {
        const float sy = static_cast<float>(tileHeight == 0 ? r : r % tileHeight) / scale;
        const int y0 = static_cast<int>(std::floor(sy));
        const int fy = static_cast<int>((sy - static_cast<float>(y0)) * 255.0f);
        const int y1 = y0 + 1 < patternHeight ? y0 + 1 : 0;
        for (int c = 0; c < width; ++c) {
            if (coverage.pixels[static_cast<size_t>(rect.top + r) * coverage.width +
                                static_cast<size_t>(rect.left + c)] == 0)
                continue;
            const float sx = static_cast<float>(tileWidth == 0 ? c : c % tileWidth) / scale;
            const int x0 = static_cast<int>(std::floor(sx));
            const int fx = static_cast<int>((sx - static_cast<float>(x0)) * 255.0f);
            const int x1 = x0 + 1 < patternWidth ? x0 + 1 : 0;
            int v[4];
            for (int k = 0; k < 4; ++k) {
                const int top = (255 - fx) * sample(x0, y0, k) + fx * sample(x1, y0, k);
                const int bottom = (255 - fx) * sample(x0, y1, k) + fx * sample(x1, y1, k);
                v[k] = ((top * (255 - fy) + bottom * fy) >> 16) & 255;
            }
            const int alpha = static_cast<int>(opacity * static_cast<float>(v[0]));
            for (int k = 1; k < 4; ++k) v[k] = std::min(((v[k] + 1) * alpha) >> 8, 255);
            scratch[static_cast<size_t>(r) * static_cast<size_t>(width) + static_cast<size_t>(c)] =
                static_cast<uint32_t>(alpha) << 24 | static_cast<uint32_t>(v[1]) << 16 |
                static_cast<uint32_t>(v[2]) << 8 | static_cast<uint32_t>(v[3]);
        }
    }
    return scratch;
}

}  // namespace QxFontEffect::test
