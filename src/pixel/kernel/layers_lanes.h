#pragma once

#include "pixel/kernel/lanes.h"

/// Layer composition and un-premultiplication of several pixels at a time.
namespace QxFontEffect::kernel {
namespace {

/// The sum cannot pass 255: the factors add up to 255. The coverage stands in the high bytes.
inline Words composite(Words layer, Words picture, Halves highCoverage) {
    return join(scaled(split(layer) + 1, 0xFF00 - highCoverage) + scaled(split(picture) + 1, highCoverage));
}

/// ((v + 1) * T) & 0xFF00 of a channel in the low byte of each word.
inline Words scaledBy(Words v, Words textAlpha) {
    return words(halves(v + 1) * halves(textAlpha)) & 0xFF00u;
}

/// min(trunc(scaled / alpha), 255) for scaled = 0, 256, ..., 65280 and alpha = 1..255, given 1 / alpha. Half a unit
/// outweighs every rounding error of the product and never carries a quotient over the next whole number.
inline Words quotient(Words scaled, Floats inverse) {
    const Floats q = (__builtin_convertvector(reinterpret_cast<Signed>(scaled), Floats) + 0.5f) * inverse;
    const Floats most = Floats{} + 255.0f;
    return reinterpret_cast<Words>(__builtin_convertvector(q < most ? q : most, Signed));
}

inline Words unpremultiplied(Words pixels, Words textAlpha) {
    const Words alpha = scaledBy(pixels >> 24, textAlpha) >> 8;
    const Words blank = reinterpret_cast<Words>(alpha == 0);
    // Blank pixels divide by 1; their colour is cleared below.
    const Floats inverse = 1.0f / __builtin_convertvector(reinterpret_cast<Signed>(alpha + (blank & 1)), Floats);
    const Words red = quotient(scaledBy(pixels & 255, textAlpha), inverse);
    const Words green = quotient(scaledBy(pixels >> 8 & 255, textAlpha), inverse);
    const Words blue = quotient(scaledBy(pixels >> 16 & 255, textAlpha), inverse);
    return ((red | green << 8 | blue << 16) & ~blank) | alpha << 24;
}

}  // namespace
}  // namespace QxFontEffect::kernel
