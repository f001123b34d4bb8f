#pragma once

#include <algorithm>
#include <cstdint>

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

/// The alpha byte of an opacity. NaN gives 0.
inline uint32_t alphaOf(float opacity) {
    return static_cast<uint32_t>(std::clamp(truncToInt(opacity * 255.0f + 0.5f), 0, 255));
}

/// `color` with `alpha` in place of its own.
inline uint32_t withAlpha(uint32_t color, uint32_t alpha) {
    return alpha << 24 | (color & 0x00FFFFFFu);
}

/// Red, green and blue of `color` multiplied by `alpha`, with `alpha` in place of its own.
inline uint32_t premultiplied(uint32_t color, uint32_t alpha) {
    uint32_t result = alpha << 24;
    for (int shift = 0; shift <= 16; shift += 8) result |= (alpha * ((color >> shift & 255u) + 1) >> 8) << shift;
    return result;
}

}  // namespace QxFontEffect
