#pragma once

#include <algorithm>
#include <cstdint>

#include "effect/core_inputs.h"
#include "effect/kernel/gauss.h"

namespace QxFontEffect {

/// Longest side of a picture that the blurring effects work on; the padded sides then fit 32 bits with room to spare.
constexpr int32_t kMaxPictureSide = 1 << 30;

/// The part of a box that a destination shows, in pixels from the box's top-left corner.
///
/// @param x, y           place of the box in the destination, anywhere.
/// @param width, height  sides of the box, 0..2 * kMaxPictureSide - 1.
inline GaussRange visiblePart(int64_t x, int64_t y, int64_t width, int64_t height, const QxBitmap& dst) {
    const auto cut = [](int64_t value, int64_t limit) {
        return static_cast<int>(std::clamp<int64_t>(value, 0, limit));
    };
    return {cut(-x, width), cut(sideOf(dst.width) - x, width), cut(-y, height), cut(sideOf(dst.height) - y, height)};
}

inline bool isEmpty(const GaussRange& range) {
    return range.xStart >= range.xEnd || range.yStart >= range.yEnd;
}

inline GaussRange common(const GaussRange& a, const GaussRange& b) {
    return {std::max(a.xStart, b.xStart), std::min(a.xEnd, b.xEnd), std::max(a.yStart, b.yStart),
            std::min(a.yEnd, b.yEnd)};
}

inline GaussRange moved(const GaussRange& range, int dx, int dy) {
    return {range.xStart + dx, range.xEnd + dx, range.yStart + dy, range.yEnd + dy};
}

/// The coverage inside the text rectangle.
inline ConstPlane8 inkOf(const QxBitmap& coverage, const QxRect& ink) {
    const ConstPlane8 whole = coverageOf(coverage);
    return {whole.row(ink.top) + ink.left, ink.right - ink.left, ink.bottom - ink.top, whole.stride};
}

}  // namespace QxFontEffect
