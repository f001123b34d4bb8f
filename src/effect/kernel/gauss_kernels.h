#pragma once

#include <cstddef>
#include <cstdint>

#include "effect/kernel/gauss_job.h"
#include "effect/kernel/gauss_taps.h"
#include "effect/kernel/gauss_weights.h"

namespace QxFontEffect {

/// The inner loops of the integer bell blur, once per instruction set, behind one table. Both passes keep running sums
/// and change them by the programs of gauss_taps.h. Samples are 16-bit words here, each with the running total of the
/// samples up to it where the taps need it, and nothing allocates.

/// The vertical pass works on blocks of this many columns. A row of a block has two parts: its samples and their
/// totals, or, where second totals are needed and samples are not, the totals and the second totals.
constexpr int kGaussBlock = 64;
constexpr int kGaussBlockRow = 2 * kGaussBlock;

/// The horizontal pass works on this many rows at once. They are turned so that the samples of one column are
/// neighbours: one vector operation then serves the same tap of many rows, reads are aligned, and sums need not be
/// added up along a vector. A column of a strip is its samples, their totals and, where they are needed, the second
/// totals.
constexpr int kGaussRows = 16;

/// Division of a running sum by the weight sum.
///
/// trunc((S + 0.5f) * (1.0f / sum)) is S / sum as long as the product is off by less than 0.5 / sum: it is off by at
/// most 256 * 2^-23, and S + 0.5 is exact below 2^23. Larger weight sums take the product as an estimate and correct
/// it by its remainder.
struct GaussQuotient {
    int32_t sum;
    float inverse;
    bool isSmall;  ///< sum < 16384: radii to 198 with peak 100, to 154 with peak 128
};

struct GaussKernels;

/// A bell made ready for the loops.
struct GaussPlan {
    GaussBell bell;
    GaussTaps taps;
    GaussQuotient quotient;
    const GaussKernels* kernels;

    int32_t emptySum(GaussRounding rounding) const { return emptySumOf(rounding, bell.sum); }
    /// Words from one column of a turned strip to the next.
    int columnWords() const { return (taps.highest == GaussTaps::kSecondTotals ? 3 : 2) * kGaussRows; }
};

/// How one row of the vertical pass is made.
struct GaussRowProgram {
    const int32_t* program;
    int64_t base;  ///< of its places, in samples from the start of the window
};

/// A block of the vertical pass.
struct GaussColumnsBlock {
    const uint16_t* window;       ///< rows of kGaussBlockRow words
    const GaussRowProgram* rows;  ///< of the rows to be made
    int rowCount;
    int columns;       ///< that are wanted; at least as many are written
    int32_t emptySum;  ///< sum of nothing but zeros
    int32_t* sums;     ///< kGaussBlock running sums of the row before, as `startSums` sets them; updated
    uint8_t* out;      ///< rows of kGaussBlock samples
    ptrdiff_t outStride;
};

/// Neighbouring outputs of the horizontal pass, in kGaussRows rows at once.
struct GaussLinesRun {
    const int32_t* program;
    uint16_t* samples;  ///< sample under the first output of the first row. There are `radius + 3` columns before it
                        ///< and `radius` after the last output, rounded up to whole blocks
    int count;          ///< outputs a row
    int rows;           ///< rows to write, kGaussRows at most
    int32_t emptySum;   ///< sum of nothing but zeros
    bool isFirst;       ///< false: all samples under the bell of the output before the first are 0
    uint8_t* out;
    ptrdiff_t outStride;
};

struct GaussKernels {
    const char* name;
    void (*columns)(const GaussPlan& plan, const GaussColumnsBlock& block);
    void (*lines)(const GaussPlan& plan, const GaussLinesRun& run);
    /// Turns kGaussBlock running sums, in the order of the columns, into the form that `columns` works on.
    void (*startSums)(const GaussPlan& plan, const int32_t* values, int32_t* sums);
    /// How many of the rows above row y of a block hold a sample other than 0, for y in 0..rows, block by block.
    void (*countInk)(const uint8_t* src, ptrdiff_t stride, int columns, int rows, int32_t* before);
    /// Fills rows of a block out of `columns` columns, kGaussBlock at most; the others become 0. With second totals
    /// `moreRows` rows of zeros follow.
    void (*widen)(const uint8_t* src, ptrdiff_t stride, int columns, int rows, int moreRows, GaussTaps::Source highest,
                  uint16_t* dst);
    /// Fills the samples of kGaussBlock columns of a strip out of `rows` rows, kGaussRows at most; the others become 0.
    void (*turn)(const uint8_t* src, ptrdiff_t stride, int columns, int rows, uint16_t* strip, int columnWords);
};

/// What every processor runs.
const GaussKernels& gaussKernelsPortable();
/// Null where the program was not built for AVX2 or the processor has none.
const GaussKernels* gaussKernelsAvx2();
/// The fastest of them here.
const GaussKernels& gaussKernels();

GaussPlan makeGaussPlan(const GaussBell& bell, const GaussKernels& kernels = gaussKernels());

}  // namespace QxFontEffect
