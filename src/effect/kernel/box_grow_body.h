// The loop of box_grow.h, included once per instruction set. Nothing inline from another header is called: a copy of it
// compiled for a newer processor could replace the one that all processors run.

#include "effect/kernel/box_grow.h"
#include "effect/kernel/vectors.h"

#if defined(__SSE2__)
#include <immintrin.h>
#endif

namespace QxFontEffect {
namespace {

constexpr int kGrowStep = 2 * kU16Lanes;
using Halves = uint8_t __attribute__((vector_size(kVectorBytes / 2)));

/// Words below 32768 as bytes, limited to 255.
inline U8s packed(U16s low, U16s high) {
#if defined(__AVX2__)
    return (U8s)_mm256_permute4x64_epi64(_mm256_packus_epi16((__m256i)low, (__m256i)high), 0xD8);
#elif defined(__SSE2__)
    return (U8s)_mm_packus_epi16((__m128i)low, (__m128i)high);
#else
    const Halves halves[2] = {__builtin_convertvector(lesser(low, U16s{} + 255), Halves),
                              __builtin_convertvector(lesser(high, U16s{} + 255), Halves)};
    return loadVector<U8s>(halves);
#endif
}

inline U16s grownAt(const uint16_t* column) {
    const U16s sum = loadVector<U16s>(column - 1) + loadVector<U16s>(column) + loadVector<U16s>(column + 1);
    // Divides by 4, not by 9: each pass is meant to swell the shape by a pixel, not to average it.
    return sum >> 2;
}

inline uint8_t grownOne(const uint16_t* column) {
    const int grown = (column[-1] + column[0] + column[1]) >> 2;
    return static_cast<uint8_t>(grown < 255 ? grown : 255);
}

/// Sums of three samples one below the other, for some columns.
inline void addColumns(uint16_t* pairs, uint16_t* last, uint16_t* columns, U16s below) {
    storeVector(columns, loadVector<U16s>(pairs) + below);
    storeVector(pairs, loadVector<U16s>(last) + below);
    storeVector(last, below);
}

void growRow(uint16_t* pairs, uint16_t* last, uint16_t* columns, const uint8_t* below, int width, uint8_t* out) {
    uint16_t* column = columns + 1;
    int x = 0, grown = 1;
    for (; x + kU16Lanes <= width; x += kU16Lanes) {
#if defined(__AVX2__)
        const U16s words = (U16s)_mm256_cvtepu8_epi16(loadVector<__m128i>(below + x));
#else
        const U16s words = __builtin_convertvector(loadVector<Halves>(below + x), U16s);
#endif
        addColumns(pairs + x, last + x, column + x, words);
        // Columns to the right of those that are grown now have been summed up.
        for (; grown + kGrowStep < x + kU16Lanes; grown += kGrowStep)
            storeVector(out + grown, packed(grownAt(column + grown), grownAt(column + grown + kU16Lanes)));
    }
    for (; x < width; ++x) {
        column[x] = static_cast<uint16_t>(pairs[x] + below[x]);
        pairs[x] = static_cast<uint16_t>(last[x] + below[x]);
        last[x] = below[x];
    }
    for (; grown < width - 1; ++grown) out[grown] = grownOne(column + grown);
    out[0] = 0;
    out[width - 1] = 0;
}

}  // namespace
}  // namespace QxFontEffect
