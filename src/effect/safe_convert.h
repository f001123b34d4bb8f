#pragma once

#include <cstdint>
#include <limits>

namespace QxFontEffect {

/// Truncates toward zero like a cast, for every value: what lies outside 32 bits gives the nearest limit, NaN gives
/// 0. A bare cast is undefined for those, and settings come from callers.
inline int32_t truncToInt(double value) {
    if (!(value > -2147483649.0)) return value != value ? 0 : std::numeric_limits<int32_t>::min();
    if (value >= 2147483648.0) return std::numeric_limits<int32_t>::max();
    return static_cast<int32_t>(value);
}

/// The same; every float is exactly a double.
inline int32_t truncToInt(float value) {
    return truncToInt(static_cast<double>(value));
}

/// The nearest 32-bit value of a sum or product that was computed in 64 bits.
inline int32_t saturateToInt(int64_t value) {
    if (value > std::numeric_limits<int32_t>::max()) return std::numeric_limits<int32_t>::max();
    if (value < std::numeric_limits<int32_t>::min()) return std::numeric_limits<int32_t>::min();
    return static_cast<int32_t>(value);
}

}  // namespace QxFontEffect
