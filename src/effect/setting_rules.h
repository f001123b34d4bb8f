#pragma once

#include "effect/safe_convert.h"

namespace QxFontEffect {

/// Limits a setting to low..high. NaN passes through: `std::clamp` on NaN is undefined by its contract, and what reads
/// the setting later tests it or converts it with `truncToInt`.
inline float clampSetting(float value, float low, float high) {
    if (value < low) return low;
    return value > high ? high : value;
}

inline float clamp01(float value) {
    return clampSetting(value, 0.0f, 1.0f);
}

/// Whole units, fractions dropped, less whole periods; keeps the sign, so -30 stays -30 and 400 becomes 40.
inline int32_t wholeRemainder(float value, int32_t period) {
    return truncToInt(value) % period;
}

/// The same, brought into 0..period - 1: -30 becomes 330.
inline int32_t wholeRemainderFromZero(float value, int32_t period) {
    const int32_t rest = wholeRemainder(value, period);
    return rest < 0 ? rest + period : rest;
}

}  // namespace QxFontEffect
