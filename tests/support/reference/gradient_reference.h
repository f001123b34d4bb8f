#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "effect/ParamPostProcessing.h"
#include "effect/QxGradientFillProperty.h"
#include "effect/kernel/pinned_math.h"
#include "pixel/QxBlender.h"
#include "support/reference/coverage_reference.h"

/// Both gradients in their plainest loops.
namespace QxFontEffect::test::reference {

/// Entries 0..256; `property` has stops.
inline std::vector<uint32_t> colorTable(const QxGradientFillProperty& property) {
    const QxGradient* stops = property.gradient;
    std::vector<uint32_t> table(257, stops[0].color);
    if (property.count == 1) return table;
    table[256] = stops[property.count - 1].color;
    int next = 1;
    for (int i = 1; i < 256; ++i) {
        const float t = static_cast<float>(i) * 0.00390625f;
        if (stops[next].position < t && next + 1 < property.count) ++next;
        const float from = stops[next - 1].position, span = stops[next].position - from;
        const uint32_t c0 = stops[next - 1].color, c1 = stops[next].color;
        const float f = (t - from) / span * 256.0f;
        // A segment of no length gives its end, and its start where 0 is divided by 0.
        table[static_cast<size_t>(i)] = f != f || f < 1.0f ? (span == 0.0f && t != from ? c1 : c0)
                                        : f >= 256.0f      ? c1
                                                           : mixed(c1, c0, static_cast<int>(f));
    }
    return table;
}

/// @param indexOf  int(float w, float h, int row, int column), not yet limited.
template <typename IndexOf>
void gradient(const QxGradientFillProperty& property, const ParamPostProcessing& p, IndexOf indexOf) {
    if (property.gradient == nullptr || property.count < 1 || !(property.scale >= 0.1f)) return;
    const QxRect& rect = *p.textRect;
    const int w = rect.right - rect.left, h = rect.bottom - rect.top;
    if (w < 1 || h < 1) return;
    const std::vector<uint32_t> table = colorTable(property);
    std::vector<uint32_t> buffer;
    for (int r = 0; r < h; ++r)
        for (int c = 0; c < w; ++c) {
            const int index = std::clamp(indexOf(static_cast<float>(w), static_cast<float>(h), r, c), 0, 255);
            const bool covered = coverageAt(*p.srcBitmap, rect.left + c, rect.top + r) != 0;
            buffer.push_back(covered ? premultiplied(table[static_cast<size_t>(index)]) : 0);
        }
    QxBlender::drawBitmapBlend32(rect.left, rect.top, p.dstBitmap, buffer.data(), w, h, w, QXE_BLEND_DST_OVER);
}

inline void linearGradient(const QxGradientFillProperty& property, const ParamPostProcessing& p) {
    gradient(property, p, [&](float w, float h, int r, int c) {
        const float x = property.angle * -0.01745328f;
        const float k = std::fabs(pinnedTan(x)), aspect = h / w;
        const float length = (k < aspect ? w : h) / std::fabs(k < aspect ? pinnedCos(x) : pinnedSin(x));
        const float step = 256.0f / property.scale / length;
        return static_cast<int>(pinnedSin(x) * step * (static_cast<float>(r) - h * 0.5f) +
                                pinnedCos(x) * step * (static_cast<float>(c) - w * 0.5f)) +
               128;
    });
}

inline void radialGradient(const QxGradientFillProperty& property, const ParamPostProcessing& p) {
    gradient(property, p, [&](float w, float h, int r, int c) {
        const float step = 2.0f * 256.0f / w / property.scale;
        const float dy = static_cast<float>(r) - h * 0.5f, dx = static_cast<float>(c) - w * 0.5f;
        return static_cast<int>(step * std::sqrt(dy * dy + dx * dx));
    });
}

}  // namespace QxFontEffect::test::reference
