// The loops of box_grow.h, included once per instruction set. Nothing inline from another header is called: a copy of
// it compiled for a newer processor could replace the one that all processors run.

#include "effect/kernel/box_grow.h"
#include "effect/kernel/vectors.h"

#if defined(__AVX2__)
#include <immintrin.h>
#endif

namespace QxFontEffect {
namespace {

using I16s = int16_t __attribute__((vector_size(kVectorBytes)));

/// Sums of kVectorBytes columns, those of the even and those of the odd ones.
struct ColumnSums {
    U16s even;
    U16s odd;

    ColumnSums operator+(const ColumnSums& other) const { return {even + other.even, odd + other.odd}; }
};

/// The sums of each column of a row and the two beside it. Neighbours are taken apart in words: that needs neither
/// wider samples nor moves between lanes.
inline ColumnSums threeAbreast(const uint8_t* at) {
    const U16s left = loadVector<U16s>(at - 1), right = loadVector<U16s>(at + 1);
    const U16s middle = (left >> 8) + (right & 255);
    return {(left & 255) + middle, middle + (right >> 8)};
}

/// A quarter of the sums, limited to 255. By 4, not by 9: each pass is meant to swell the shape by a pixel, not to
/// average it.
inline U8s quarters(const ColumnSums& sums) {
    const U16s even = sums.even >> 2, odd = sums.odd >> 2;
#if defined(__AVX2__)
    const U8s apart = (U8s)_mm256_packus_epi16((__m256i)even, (__m256i)odd);
    return __builtin_shufflevector(apart, apart, 0, 8, 1, 9, 2, 10, 3, 11, 4, 12, 5, 13, 6, 14, 7, 15, 16, 24, 17, 25,
                                   18, 26, 19, 27, 20, 28, 21, 29, 22, 30, 23, 31);
#else
    const I16s limit = I16s{} + 255;
    return (U8s)(U16s)(lesser((I16s)even, limit) | lesser((I16s)odd, limit) << 8);
#endif
}

bool growBlock(const uint8_t* above, ptrdiff_t stride, int rows, uint8_t* out) {
    U8s full = ~U8s{};
    for (int x = 0; x < BoxGrowKernels::kColumns; x += kVectorBytes) {
        const uint8_t* row = above + x;
        ColumnSums last = threeAbreast(row + stride);
        ColumnSums pair = threeAbreast(row) + last;
        row += 2 * stride;
        uint8_t* to = out + x;
        for (int y = 0; y < rows; ++y, row += stride, to += stride) {
            const ColumnSums below = threeAbreast(row);
            const U8s grown = quarters(pair + below);
            storeVector(to, grown);
            full &= grown;
            pair = last + below;
            last = below;
        }
    }
    return allBitsSet(full);
}

GrowState lookAtBlock(const uint8_t* block, ptrdiff_t stride, int rows) {
    U8s any = {}, all = ~U8s{};
    for (int y = 0; y < rows; ++y)
        for (int x = 0; x < BoxGrowKernels::kColumns; x += kVectorBytes) {
            const U8s samples = loadVector<U8s>(block + y * stride + x);
            any |= samples;
            all &= samples;
        }
    return static_cast<GrowState>((noBitsSet(any) ? kGrowBlank : 0) | (allBitsSet(all) ? kGrowFull : 0));
}

}  // namespace
}  // namespace QxFontEffect
