#include "effect/kernel/gradient.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace QxFontEffect {
namespace {

// Pixels whose indices are computed before any is looked up: the first loop is arithmetic on whole vectors, the
// second cannot be.
constexpr int kChunk = 64;

// Comparisons in this order send NaN to the lower limit.
inline float limited(float value, float low, float high) {
    const float raised = value > low ? value : low;
    return raised < high ? raised : high;
}

inline bool anyInk(const uint8_t* coverage, int count) {
    uint8_t seen = 0;
    for (int i = 0; i < count; ++i) seen = static_cast<uint8_t>(seen | coverage[i]);
    return seen != 0;
}

template <typename Index>
inline void gradientRow(const GradientRow& row, const uint32_t* table, uint32_t* dst, Index indexOf) {
    int32_t indices[kChunk];
    for (int x = 0; x < row.count; x += kChunk) {
        const int count = std::min(kChunk, row.count - x);
        const uint8_t* coverage = row.coverage + x;
        const float* terms = row.columnTerms + x;
        if (!anyInk(coverage, count)) {
            std::memset(dst + x, 0, sizeof *dst * static_cast<size_t>(count));
            continue;
        }
        for (int i = 0; i < count; ++i) indices[i] = indexOf(row.rowTerm + terms[i]);
        for (int i = 0; i < count; ++i) dst[x + i] = coverage[i] == 0 ? 0 : table[indices[i]];
    }
}

}  // namespace

void linearGradientRow(const GradientRow& row, const uint32_t* table, uint32_t* dst) {
    // Limited before the conversion, which is undefined for what an int cannot hold; half the table on each side.
    gradientRow(row, table, dst,
                [](float sum) { return static_cast<int32_t>(limited(sum, -128.0f, 127.0f)) + kGradientColors / 2; });
}

void radialGradientRow(const GradientRow& row, float step, const uint32_t* table, uint32_t* dst) {
    gradientRow(row, table, dst,
                [step](float sum) { return static_cast<int32_t>(limited(step * std::sqrt(sum), 0.0f, 255.0f)); });
}

}  // namespace QxFontEffect
