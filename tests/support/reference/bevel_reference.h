#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "effect/ParamPostProcessing.h"
#include "effect/QxBevelProperty.h"
#include "effect/kernel/pinned_math.h"
#include "effect/kernel/sqrt_table.h"
#include "pixel/QxBlender.h"
#include "support/reference/coverage_reference.h"

/// The bevel in its plainest loops: every plane whole, every pass over all of it.
namespace QxFontEffect::test::reference {

inline void squaredDistances(float* d, const float* f, int n) {
    std::vector<int> v(static_cast<size_t>(n));
    std::vector<float> z(static_cast<size_t>(n) + 1);
    const auto cross = [&](int q, int p) {
        return ((f[q] + static_cast<float>(q * q)) - (f[p] + static_cast<float>(p * p))) /
               static_cast<float>(2 * q - 2 * p);
    };
    size_t k = 0;
    z[0] = -1e20f;
    z[1] = 1e20f;
    for (int q = 1; q < n; ++q) {
        float s = cross(q, v[k]);
        while (s <= z[k]) s = cross(q, v[--k]);
        v[++k] = q;
        z[k] = s;
        z[k + 1] = 1e20f;
    }
    k = 0;
    for (int q = 0; q < n; ++q) {
        while (z[k + 1] < static_cast<float>(q)) ++k;
        d[q] = f[v[k]] + static_cast<float>((q - v[k]) * (q - v[k]));
    }
}

/// The exact distances of a map whose samples are 0 or 1e20, in place: columns, then rows, then roots up to `limit`.
inline void exactDistances(std::vector<float>& map, int width, int height, float limit) {
    std::vector<float> f(static_cast<size_t>(std::max(width, height))), d = f;
    for (int x = 0; x < width; ++x) {
        for (int y = 0; y < height; ++y) f[static_cast<size_t>(y)] = map[static_cast<size_t>(y * width + x)];
        squaredDistances(d.data(), f.data(), height);
        for (int y = 0; y < height; ++y) map[static_cast<size_t>(y * width + x)] = d[static_cast<size_t>(y)];
    }
    for (int y = 0; y < height; ++y) {
        float* row = map.data() + y * width;
        squaredDistances(d.data(), row, width);
        for (int x = 0; x < width; ++x) {
            const float squared = d[static_cast<size_t>(x)];
            row[x] = squared <= 0.0f ? 0.0f : squared > limit * limit ? limit : fsqrt(squared);
        }
    }
}

/// Where the search for the outline starts at a pixel.
inline float outlineStart(uint8_t coverage, bool inside, int radius) {
    const float v = static_cast<float>(coverage ^ (inside ? 255 : 0)) / 254.99f;
    return v <= 0.001f ? static_cast<float>(radius) : v < 1.0f ? 1.0f - v : 0.0f;
}

/// Rows rowStart..rowEnd - 1 of a map in raster order, in place.
inline void refine(float* map, int width, int height, int radius, int rowStart, int rowEnd) {
    for (int y = rowStart; y < rowEnd; ++y)
        for (int x = 0; x < width; ++x) {
            float& value = map[y * width + x];
            if (value == 0.0f) continue;
            for (int v = std::max(y - radius, 0); v <= std::min(y + radius, height - 1); ++v)
                for (int u = std::max(x - radius, 0); u <= std::min(x + radius, width - 1); ++u) {
                    const float neighbour = map[v * width + u];
                    if (neighbour < 1.0f)
                        value = std::min(value, neighbour + roundedIntSqrt((v - y) * (v - y) + (u - x) * (u - x)));
                }
        }
}

/// Columns first, then rows; pixels within `radius` of the edges are 0.
inline std::vector<uint8_t> blurred(const std::vector<uint8_t>& src, int width, int height, int radius) {
    std::vector<int> w{100};
    const float q = static_cast<float>(radius) * static_cast<float>(radius) / 4.60517f;
    for (int j = 1; j <= radius; ++j)
        w.push_back(static_cast<int>(static_cast<double>(pinnedExp(-static_cast<float>(j * j) / q) * 100.0f) + 0.5));
    int sum = 100;
    for (int j = 1; j <= radius; ++j) sum += 2 * w[static_cast<size_t>(j)];

    std::vector<uint8_t> dst(src.size());
    for (int y = radius; y < height - radius; ++y) {
        std::vector<int> t(static_cast<size_t>(width));
        for (int x = radius; x < width - radius; ++x) {
            int total = 0;
            for (int j = -radius; j <= radius; ++j)
                total += src[static_cast<size_t>((y + j) * width + x)] * w[static_cast<size_t>(std::abs(j))];
            t[static_cast<size_t>(x)] = total / sum;
        }
        for (int x = radius; x < width - radius; ++x) {
            int total = 0;
            for (int j = -radius; j <= radius; ++j)
                total += t[static_cast<size_t>(x + j)] * w[static_cast<size_t>(std::abs(j))];
            dst[static_cast<size_t>(y * width + x)] = static_cast<uint8_t>(std::min(total / sum, 255));
        }
    }
    return dst;
}

/// The area a bevel is worked out on, with its planes.
struct BevelArea {
    int r, R, B, m, width, height;
    std::vector<float> distance;
    std::vector<uint8_t> shadow, highlight;
};

inline BevelArea bevelArea(const QxBevelProperty& property, const QxRect& rect) {
    BevelArea a{};
    a.r = static_cast<int>(property.size);
    a.R = property.technique != 0 ? a.r + 2 : static_cast<int>(std::ceil(static_cast<float>(2 * a.r) / 3.0f + 1.0f));
    a.B = property.technique != 0 ? 0 : a.R;
    a.m = std::max(2 * property.soften, 2 * a.B) + a.R;
    a.width = rect.right - rect.left + 2 * a.m;
    a.height = rect.bottom - rect.top + 2 * a.m;
    const size_t pixels = static_cast<size_t>(a.width) * static_cast<size_t>(a.height);
    a.distance.resize(pixels);
    a.shadow.resize(pixels);
    a.highlight.resize(pixels);
    return a;
}

inline void exactMap(const QxBevelProperty& property, const ParamPostProcessing& p, BevelArea& a) {
    for (int y = 0; y < a.height; ++y)
        for (int x = 0; x < a.width; ++x) {
            const bool within = x >= a.m && x <= a.width - a.m && y >= a.m && y <= a.height - a.m;
            const bool covered =
                within && coverageAt(*p.srcBitmap, p.textRect->left + x - a.m, p.textRect->top + y - a.m) != 0;
            a.distance[static_cast<size_t>(y * a.width + x)] = covered != (property.style == 1) ? 0.0f : 1e20f;
        }
    exactDistances(a.distance, a.width, a.height, static_cast<float>(a.R));
}

inline void localMap(const QxBevelProperty& property, const ParamPostProcessing& p, BevelArea& a) {
    const bool inside = property.style == 1;
    std::fill(a.distance.begin(), a.distance.end(), inside ? 0.0f : static_cast<float>(a.R));
    for (int y = a.m; y < a.height - a.m; ++y)
        for (int x = a.m; x < a.width - a.m; ++x)
            a.distance[static_cast<size_t>(y * a.width + x)] = outlineStart(
                coverageAt(*p.srcBitmap, p.textRect->left + x - a.m, p.textRect->top + y - a.m), inside, a.R);
    refine(a.distance.data(), a.width, a.height, a.R, 0, a.height);
}

inline uint8_t applied(int alpha, int t, float e) {
    const int q = ((alpha * t) >> 8) + 1;
    const int product = q * static_cast<int>(e);
    return static_cast<uint8_t>(product >= 65536 ? 255 : product < 0 ? 0 : product >> 8);
}

inline void lightMaps(const QxBevelProperty& property, BevelArea& a) {
    const float turn = (180.0f - property.angle) * 3.14159f / 180.0f, rise = property.altitude * 3.14159f / 180.0f;
    const float sign = property.direction == 0 ? -1.0f : 1.0f;
    const float lx = sign * (pinnedCos(turn) * pinnedCos(rise)), ly = sign * (pinnedSin(turn) * pinnedCos(rise));
    const float lz = pinnedSin(rise), h = 2.4f / std::max(property.depth, 0.1f);
    const int shadowAlpha = static_cast<int>(property.shadowColor >> 24);
    const int highlightAlpha = static_cast<int>(property.highlightColor >> 24);
    for (int y = 1; y < a.height - 1; ++y)
        for (int x = 1; x < a.width - 1; ++x) {
            const float* d = a.distance.data() + y * a.width + x;
            if (*d == static_cast<float>(a.R)) continue;
            const float gx = (d[-1] - d[1]) * 0.5f, gy = (d[-a.width] - d[a.width]) * 0.5f;
            const float n = fsqrt(h * h + gx * gx + gy * gy);
            const float s = std::clamp((h * lz - lx * gx - ly * gy) / n * 255.0f, 0.0f, 255.0f);
            const float e = std::clamp(static_cast<float>(a.R) - *d, 0.0f, 255.0f);
            const size_t at = static_cast<size_t>(y * a.width + x);
            if (property.style == 1) {
                a.shadow[at] = applied(shadowAlpha, static_cast<int>(s + 1.0f), e);
                a.highlight[at] = applied(highlightAlpha, 256 - static_cast<int>(s), e);
            } else {
                const int u = 255 - static_cast<int>(s);
                a.shadow[at] = applied(shadowAlpha, u, e);
                a.highlight[at] = applied(highlightAlpha, 256 - u, e);
            }
        }
}

inline void bevel(const QxBevelProperty& property, const ParamPostProcessing& p) {
    BevelArea a = bevelArea(property, *p.textRect);
    if (property.technique == 0 && a.R >= 11)
        exactMap(property, p, a);
    else
        localMap(property, p, a);
    lightMaps(property, a);
    for (std::vector<uint8_t>* map : {&a.shadow, &a.highlight}) {
        if (property.technique == 0) *map = blurred(*map, a.width, a.height, a.B);
        if (property.soften >= 1) *map = blurred(*map, a.width, a.height, property.soften);
    }
    const float k = property.technique == 0 ? 1.83f : 1.0f;
    std::vector<uint32_t> pixels;
    for (size_t i = 0; i < a.shadow.size(); ++i) {
        const int lit = static_cast<int>(k * a.highlight[i]), shaded = static_cast<int>(k * a.shadow[i]);
        const uint32_t d = static_cast<uint32_t>(std::min(std::abs(lit - shaded), 255));
        const uint32_t c = lit > shaded ? property.highlightColor : property.shadowColor;
        pixels.push_back(premultiplied((c & 0x00FFFFFFu) | d << 24));
    }
    QxBlender::drawBitmapBlend32(p.textRect->left - a.m, p.textRect->top - a.m, p.dstBitmap, pixels.data(), a.width,
                                 a.height, a.width, p.layerMode == 1 ? QXE_BLEND_SRC_OVER : QXE_BLEND_DST_OVER);
}

}  // namespace QxFontEffect::test::reference
