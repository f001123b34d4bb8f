#pragma once

#include <cstdint>

namespace QxFontEffect {

/// Entries of `QX_INT_SQRT_TABLE`: squared integer distances up to 74 pixels and a little more.
constexpr int QX_INT_SQRT_TABLE_SIZE = 5490;

/// Entry i is the square root of i rounded to three decimals, as the nearest float. Set at compile time.
extern const float (&QX_INT_SQRT_TABLE)[QX_INT_SQRT_TABLE_SIZE];

/// The same rounding of the same root for any squared distance, 0 for a negative one: what the table would hold if it
/// went on.
float roundedIntSqrt(int32_t squared);

/// Fast square root: an estimate of 1 / sqrt(x) from the bits of x, one Newton step, times x. Within 0.2 per cent
/// for positive x; no special case for 0, negative or NaN input.
float fsqrt(float x);

}  // namespace QxFontEffect
