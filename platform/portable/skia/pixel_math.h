#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "SkRect.h"

namespace portable {

/// Rounds down into the range +-2^24 that boxes and positions are kept in, so that their sums fit an int. NaN
/// becomes 0.
inline int saturatedFloor(double value) {
    constexpr double kFar = 1 << 24;
    if (std::isnan(value)) return 0;
    return static_cast<int>(std::floor(std::clamp(value, -kFar, kFar)));
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
