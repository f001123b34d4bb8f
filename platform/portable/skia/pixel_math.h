#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "SkRect.h"

namespace portable {

/// Pixel coordinates are kept within this of 0, which leaves room to add two of them.
constexpr int kFarthestPixel = 1 << 29;

/// Rounds down, to at most kFarthestPixel either way. NaN becomes 0.
inline int saturatedFloor(double value) {
    if (std::isnan(value)) return 0;
    return static_cast<int>(std::floor(std::clamp(value, -1.0 * kFarthestPixel, 1.0 * kFarthestPixel)));
}

/// The pixel edge that an edge falls on: half up.
inline int roundedEdge(double value) {
    return saturatedFloor(value + 0.5);
}

inline SkIRect intersected(const SkIRect& a, const SkIRect& b) {
    return SkIRect::MakeLTRB(std::max(a.fLeft, b.fLeft), std::max(a.fTop, b.fTop), std::min(a.fRight, b.fRight),
                             std::min(a.fBottom, b.fBottom));
}

inline SkIRect moved(const SkIRect& box, int dx, int dy) {
    return SkIRect::MakeLTRB(box.fLeft + dx, box.fTop + dy, box.fRight + dx, box.fBottom + dy);
}

}  // namespace portable
