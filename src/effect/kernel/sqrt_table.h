#pragma once

namespace QxFontEffect {

/// Entries of `QX_INT_SQRT_TABLE`: squared integer distances up to 74 pixels and a little more.
constexpr int QX_INT_SQRT_TABLE_SIZE = 5490;

/// Entry i is the square root of i rounded to three decimals.
extern const float QX_INT_SQRT_TABLE[QX_INT_SQRT_TABLE_SIZE];

/// Fast square root: an estimate of 1 / sqrt(x) from the bits of x, one Newton step, times x. Within 0.2 per cent
/// for positive x; no special case for 0, negative or NaN input.
float fsqrt(float x);

}  // namespace QxFontEffect
