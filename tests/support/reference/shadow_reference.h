#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "effect/ParamPostProcessing.h"
#include "effect/QxInnerShadowProperty.h"
#include "effect/QxOuterShadowProperty.h"
#include "pixel/QxBlender.h"
#include "support/reference/coverage_reference.h"
#include "support/reference/gauss_reference.h"

/// The outer and the inner shadow in their plainest loops: every plane whole, padded, and filled before it is read.
/// Settings are finite and small enough for the planes to fit.
namespace QxFontEffect::test::reference {

inline int shadowRound(float value) {
    return static_cast<int>(value > 0.0f ? value + 0.5f : value - 0.5f);
}
inline int shadowX(float angle, float distance) {
    return shadowRound(distance * -std::cos(angle * 3.14159f / 180.0f));
}
inline int shadowY(float angle, float distance) {
    return shadowRound(distance * std::sin(angle * 3.14159f / 180.0f));
}
inline int shadowRadiusOf(float size) {
    return std::max(static_cast<int>(static_cast<double>(size) + 0.5), 0);
}

inline void blendGrey(const ParamPostProcessing& p, int x, int y, Grey& plane, uint32_t color) {
    QxBlender::drawBitmapBlend8(x, y, p.dstBitmap, plane.samples.data(), plane.width, plane.height, plane.width, color,
                                QXE_BLEND_DST_OVER);
}

inline void outerShadow(const QxOuterShadowProperty& property, const ParamPostProcessing& p) {
    const QxRect& rect = *p.textRect;
    const int r = shadowRadiusOf(property.size), pad = 2 * r;
    Grey padded(rect.right - rect.left + 4 * r, rect.bottom - rect.top + 4 * r), output = padded;
    for (int y = pad; y < padded.height - pad; ++y)
        for (int x = pad; x < padded.width - pad; ++x)
            padded.at(x, y) = coverageAt(*p.srcBitmap, rect.left + x - pad, rect.top + y - pad);

    const Bell weights = bell(r, 100.0f);
    for (int y = r; y < padded.height - r; ++y) {
        const std::vector<int64_t> sums = blurredRowSums(padded, weights, y, 0);
        for (int x = r; x < padded.width - r; ++x)
            output.at(x, y) = static_cast<uint8_t>(sums[static_cast<size_t>(x)] / weights.sum);
    }
    blendGrey(p, rect.left - pad + shadowX(property.angle, property.distance),
              rect.top - pad + shadowY(property.angle, property.distance), output, property.color);
}

/// Blurs the complement along a row, everything left and right of the rectangle being dark.
inline int64_t complementAlongRow(const Grey& ink, const Bell& weights, int x, int y) {
    int64_t total = 255 * weights.sum;
    for (int i = -weights.radius; i <= weights.radius; ++i)
        if (x + i >= 0 && x + i < ink.width) total -= weights.at(i) * ink.at(x + i, y);
    return total / weights.sum;
}

inline void innerShadow(const QxInnerShadowProperty& property, const ParamPostProcessing& p) {
    const QxRect& rect = *p.textRect;
    const int dx = shadowX(property.angle, property.distance), dy = shadowY(property.angle, property.distance);
    const int r = shadowRadiusOf(property.size);
    Grey ink(rect.right - rect.left, rect.bottom - rect.top);
    for (int y = 0; y < ink.height; ++y)
        for (int x = 0; x < ink.width; ++x) ink.at(x, y) = coverageAt(*p.srcBitmap, rect.left + x, rect.top + y);

    Grey output = ink;
    const bool overlaps = rect.right + r + dx >= rect.left && rect.left - r + dx < rect.right &&
                          rect.top + dy < rect.bottom + r && rect.bottom + dy >= rect.top - r;
    const Bell weights = bell(r, 100.0f);
    for (int x = 0; overlaps && x < ink.width; ++x) {
        // Rows -r .. height + r - 1 of the shifted result, 255 where the shift brings in what lies outside.
        std::vector<int64_t> column(static_cast<size_t>(ink.height + 2 * r), 255);
        for (int y = -r; y < ink.height + r; ++y)
            if (y - dy >= 0 && y - dy < ink.height)
                column[static_cast<size_t>(y + r)] = complementAlongRow(ink, weights, x - dx, y - dy);
        for (int y = 0; y < ink.height; ++y) {
            int64_t total = 0;
            for (int i = -r; i <= r; ++i) total += weights.at(i) * column[static_cast<size_t>(y + r + i)];
            output.at(x, y) = ink.at(x, y) == 0 ? uint8_t{0} : static_cast<uint8_t>(total / weights.sum);
        }
    }
    blendGrey(p, rect.left, rect.top, output, property.color);
}

}  // namespace QxFontEffect::test::reference
