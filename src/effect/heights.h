#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>

#include "effect/kernel/distance_kernels.h"

namespace QxFontEffect {

/// A height field that is given out row by row, from top to bottom, so that nobody keeps all of it.
class HeightRows {
public:
    virtual ~HeightRows() = default;

    /// False without memory; there are no rows then.
    virtual bool ready() const = 0;

    /// Writes the next row. @param dst  the field's width, rounded up to kDistanceBlock.
    virtual void next(float* dst) = 0;
};

inline int64_t roundedUp(int64_t columns, int64_t step) {
    return (columns + step - 1) / step * step;
}

/// Blocks of kDistanceBlock that a row of columns takes.
inline int distanceBlocks(int64_t columns) {
    return static_cast<int>(roundedUp(columns, kDistanceBlock) / kDistanceBlock);
}

/// Whole columns up to the root of `squared`, and one more for what roots lose.
inline int64_t columnsWithin(double squared) {
    return squared > 0.0 ? static_cast<int64_t>(std::sqrt(squared)) + 1 : 0;
}

}  // namespace QxFontEffect
