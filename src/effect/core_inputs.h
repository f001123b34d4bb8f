#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

#include "effect/ParamPostProcessing.h"
#include "effect/QxProperty.h"
#include "pixel/plane.h"

namespace QxFontEffect {

/// Whether a bitmap has memory and the depth that a pass works on.
inline bool hasPixels(const QxBitmap* bitmap, uint32_t bytesPerPixel) {
    return bitmap != nullptr && bitmap->pixels != nullptr && bitmap->bytesPerPixel == bytesPerPixel;
}

/// Whether a core has its record, a colour destination and coverage.
inline bool paintable(const ParamPostProcessing* p, const QxProperty* property) {
    return p != nullptr && property != nullptr && hasPixels(p->dstBitmap, 4) && hasPixels(p->srcBitmap, 1);
}

/// The same for the cores that work on the text rectangle. The rectangle may be empty or lie outside the coverage; see
/// `inkRect`.
inline bool drawable(const ParamPostProcessing* p, const QxProperty* property) {
    return paintable(p, property) && p->textRect != nullptr;
}

/// A bitmap's columns or rows as a signed count.
inline int32_t sideOf(uint32_t pixels) {
    return static_cast<int32_t>(std::min<uint32_t>(pixels, std::numeric_limits<int32_t>::max()));
}

/// The coverage of a whole text. Its stride is its width; valid as long as the bitmap.
inline ConstPlane8 coverageOf(const QxBitmap& bitmap) {
    return {bitmap.pixels, sideOf(bitmap.width), sideOf(bitmap.height), static_cast<ptrdiff_t>(bitmap.width)};
}

/// The part of the text rectangle that the coverage has memory for, never inverted: 0 <= left <= right <= width,
/// 0 <= top <= bottom <= height. The stack hands in rectangles that this leaves as they are; a core called by
/// somebody else must not read outside the coverage either.
inline QxRect inkRect(const ParamPostProcessing& p) {
    const int32_t width = sideOf(p.srcBitmap->width);
    const int32_t height = sideOf(p.srcBitmap->height);
    const int32_t left = std::clamp(p.textRect->left, 0, width);
    const int32_t top = std::clamp(p.textRect->top, 0, height);
    return {left, top, std::clamp(p.textRect->right, left, width), std::clamp(p.textRect->bottom, top, height)};
}

}  // namespace QxFontEffect
