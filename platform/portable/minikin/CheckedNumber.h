#pragma once

#include <cmath>
#include <cstdint>

namespace minikin {

/// Cuts a float to an int, towards zero. NaN gives 0; what an int cannot hold gives the nearest limit it is safe to
/// add a few thousand to.
inline int32_t truncatedToInt(double value) {
    constexpr double kLimit = 1 << 30;
    if (std::isnan(value)) return 0;
    if (value >= kLimit) return static_cast<int32_t>(kLimit);
    if (value <= -kLimit) return static_cast<int32_t>(-kLimit);
    return static_cast<int32_t>(value);
}

}  // namespace minikin
