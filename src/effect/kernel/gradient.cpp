#include "effect/kernel/gradient.h"

#include <cmath>
#include <cstring>

#include "effect/kernel/vectors.h"

namespace QxFontEffect {
namespace {

// Pixels that are left out together where they have no ink. Their indices are computed before any is looked up: the
// first loop is arithmetic on whole vectors, the second cannot be, and the third clears what has no ink without a
// branch that edges would mislead.
constexpr int kChunk = 16;

// Comparisons in this order send NaN to the lower limit.
inline float limited(float value, float low, float high) {
    const float raised = value > low ? value : low;
    return raised < high ? raised : high;
}

inline bool isBlank(const uint8_t* coverage) {
    uint64_t first, second;
    std::memcpy(&first, coverage, sizeof first);
    std::memcpy(&second, coverage + sizeof first, sizeof second);
    return (first | second) == 0;
}

/// 128 + trunc(sum), limited before the conversion, which is undefined for what an int cannot hold.
struct LinearIndex {
    int32_t of(float sum) const { return static_cast<int32_t>(limited(sum, -128.0f, 127.0f)) + kGradientColors / 2; }

    // In vectors: a compiler unrolls so short a loop into branches.
    void ofChunk(float rowTerm, const float* terms, int32_t* indices) const {
        for (int i = 0; i < kChunk; i += kFloatLanes) {
            const F32s sums = rowTerm + loadVector<F32s>(terms + i);
            const F32s inTable = lesser(greater(sums, F32s{} - 128.0f), F32s{} + 127.0f);
            storeVector(indices + i, __builtin_convertvector(inTable, I32s) + kGradientColors / 2);
        }
    }
};

/// trunc(step * sqrt(sum)), limited in the same way.
struct RadialIndex {
    float step;

    int32_t of(float sum) const { return static_cast<int32_t>(limited(step * std::sqrt(sum), 0.0f, 255.0f)); }

    void ofChunk(float rowTerm, const float* terms, int32_t* indices) const {
        for (int i = 0; i < kChunk; ++i) indices[i] = of(rowTerm + terms[i]);
    }
};

template <typename Index>
inline void gradientChunk(const GradientRow& row, int x, const Index& index, const uint32_t* table, uint32_t* dst) {
    const uint8_t* coverage = row.coverage + x;
    int32_t indices[kChunk];
    uint32_t colors[kChunk];
    index.ofChunk(row.rowTerm, row.columnTerms + x, indices);
    for (int i = 0; i < kChunk; ++i) colors[i] = table[indices[i]];
    for (int i = 0; i < kChunk; ++i) dst[x + i] = colors[i] & (coverage[i] == 0 ? 0u : ~0u);
}

template <typename Index>
inline void gradientRow(const GradientRow& row, const Index& index, const uint32_t* table, uint32_t* dst) {
    int x = 0;
    for (; x + kChunk <= row.count; x += kChunk)
        if (isBlank(row.coverage + x))
            std::memset(dst + x, 0, kChunk * sizeof *dst);
        else
            gradientChunk(row, x, index, table, dst);
    for (; x < row.count; ++x) dst[x] = row.coverage[x] == 0 ? 0 : table[index.of(row.rowTerm + row.columnTerms[x])];
}

}  // namespace

void linearGradientRow(const GradientRow& row, const uint32_t* table, uint32_t* dst) {
    gradientRow(row, LinearIndex{}, table, dst);
}

void radialGradientRow(const GradientRow& row, float step, const uint32_t* table, uint32_t* dst) {
    gradientRow(row, RadialIndex{step}, table, dst);
}

}  // namespace QxFontEffect
