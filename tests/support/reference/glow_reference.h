#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "effect/ParamPostProcessing.h"
#include "effect/QxGlowProperty.h"
#include "pixel/QxBlender.h"
#include "support/reference/coverage_reference.h"
#include "support/reference/gauss_reference.h"

/// The glows in their plainest loops. Settings are finite, the size is 0 or more, and stops come in order.
namespace QxFontEffect::test::reference {

/// @param curve  what becomes of an entry's place along the table.
template <typename Curve>
std::vector<uint32_t> glowTable(const QxGlowProperty& property, float range, Curve curve) {
    if (property.size == 0.0f) return std::vector<uint32_t>(257, 0);
    std::vector<uint32_t> lut(257, property.count == 0 ? property.color : property.gradient[0].color);
    if (property.count >= 2) {
        const QxGradient* stops = property.gradient;
        lut[256] = stops[property.count - 1].color;
        int j = 0;
        float s0 = 0.0f, s1 = stops[1].position, length = s1;
        for (int i = 1; i < 256; ++i) {
            const float t = curve(static_cast<float>(i) * 0.00390625f);
            if (s1 < t && j + 2 < property.count) {
                s0 = s1;
                s1 = stops[j + 2].position;
                length = s1 - s0;
                ++j;
            }
            const float k = (t - s0) / length * 256.0f;
            const uint32_t c0 = stops[j].color, c1 = stops[j + 1].color;
            lut[static_cast<size_t>(i)] = k < 1.0f ? c0 : k >= 256.0f ? c1 : mixed(c1, c0, static_cast<int>(k));
        }
    }
    if (range >= 1.0f) range = 0.99f;
    if (range <= 0.0f) range = 0.01f;
    const int k0 = static_cast<int>(static_cast<double>(range) * 256.0);
    for (int i = k0; i <= 256; ++i) {
        const int factor = static_cast<int>(static_cast<float>(256 - i) * 256.0f / static_cast<float>(256 - k0));
        uint32_t& entry = lut[static_cast<size_t>(i)];
        entry = (entry & 0x00FFFFFFu) | ((entry >> 24) * static_cast<uint32_t>(factor) >> 8) << 24;
    }
    return lut;
}

inline void growByBox(Grey& plane, int passes) {
    for (int pass = 0; plane.height >= 3 && pass < passes; ++pass) {
        const Grey old = plane;
        for (int y = 1; y < plane.height - 1; ++y)
            for (int x = 0; x < plane.width; ++x) {
                if (x == 0 || x == plane.width - 1) {
                    plane.at(x, y) = 0;
                    continue;
                }
                int sum = 0;
                for (int v = y - 1; v <= y + 1; ++v)
                    for (int u = x - 1; u <= x + 1; ++u) sum += old.at(u, v);
                plane.at(x, y) = static_cast<uint8_t>(std::min(sum >> 2, 255));
            }
    }
}

inline void glow(const QxGlowProperty& property, const ParamPostProcessing& p, bool inner) {
    const QxRect& rect = *p.textRect;
    const int r1 = static_cast<int>(property.size) + 1, pad = 2 * r1;
    const std::vector<uint32_t> lut = glowTable(property, 0.3f, [](float t) { return t; });

    Grey grey(rect.right - rect.left + 2 * pad, rect.bottom - rect.top + 2 * pad, inner ? 255 : 0);
    for (int y = pad; y < grey.height - pad; ++y)
        for (int x = pad; x < grey.width - pad; ++x) {
            const uint8_t ink = coverageAt(*p.srcBitmap, rect.left + x - pad, rect.top + y - pad);
            grey.at(x, y) = inner ? static_cast<uint8_t>(255 - ink) : ink;
        }
    const int passes = static_cast<int>(static_cast<double>(r1) * static_cast<double>(0.475f));
    growByBox(grey, passes < 2 ? 1 : passes);

    const int rb = static_cast<int>(static_cast<float>(r1) * 0.9f);
    const Bell weights = bell(rb, 128.0f);
    std::vector<uint32_t> output(grey.samples.size(), inner ? 0xFFFFFFFFu : 0u);
    for (int y = rb; y < grey.height - rb; ++y) {
        const std::vector<int64_t> sums = blurredRowSums(grey, weights, y, inner ? 255 : 0);
        for (int x = rb; x < grey.width - rb; ++x) {
            const int64_t S = sums[static_cast<size_t>(x)];
            const int64_t b = (inner ? 255 * weights.sum - S : S) / weights.sum;
            output[static_cast<size_t>(y) * static_cast<size_t>(grey.width) + static_cast<size_t>(x)] =
                premultiplied(lut[static_cast<size_t>(b < 256 ? 256 - b : 0)]);
        }
    }
    QxBlender::drawBitmapBlend32(rect.left - pad, rect.top - pad, p.dstBitmap, output.data(), grey.width, grey.height,
                                 grey.width, QXE_BLEND_DST_OVER);
}

}  // namespace QxFontEffect::test::reference
