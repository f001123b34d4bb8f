#pragma once

#include <cstddef>
#include <cstdint>

#include "effect/kernel/gauss_kernels.h"
#include "effect/kernel/scratch_cutter.h"
#include "pixel/plane.h"

namespace QxFontEffect {

/// Where the columns of a strip lie in memory so that the horizontal pass can read past both ends of them.
///
/// The wanted outputs are the columns xStart .. xStart + outputs - 1 of rows of `width` samples, any of them outside
/// the rows. Of the samples only those under the bell are needed.
struct GaussStripLayout {
    GaussStripLayout(const GaussBell& bell, int width, int xStart, int outputs);

    /// Runs of outputs that may be other than 0 are whole blocks with a blank block between them.
    int maxRuns() const { return count / (2 * kGaussBlock) + 1; }

    int from;        ///< first needed column
    int to;          ///< one past the last needed column; `from` when none is
    int blocks;      ///< blocks of kGaussBlock columns that the needed ones fill, the last one perhaps in part
    int count;       ///< outputs
    int64_t length;  ///< columns of memory, 0 wherever no needed column lies
    int64_t origin;  ///< place of column `from` in them
    int64_t start;   ///< place of column xStart in them
};

/// The horizontal pass of kGaussRows rows at once: the needed columns are put in block by block, then blurred.
class GaussStrip {
public:
    /// Bytes of scratch, in 64 bits because a job may want more than there is.
    static int64_t scratchBytes(const GaussBell& bell, const GaussStripLayout& layout);

    /// @param plan     used while the object lives, like scratch.
    /// @param scratch  scratchBytes(...) bytes, contents undefined before and after.
    GaussStrip(const GaussPlan& plan, GaussRounding rounding, const GaussStripLayout& layout, uint8_t* scratch);

    const GaussStripLayout& layout() const { return mLayout; }

    /// Puts in the kGaussBlock columns from layout.from + block * kGaussBlock on.
    ///
    /// @param src      first sample; null when all of them are 0.
    /// @param columns  that are needed, kGaussBlock at most.
    /// @param rows     kGaussRows at most.
    void setBlock(int block, const uint8_t* src, ptrdiff_t stride, int columns, int rows);

    /// Blurs the columns that were put in.
    /// @param dst  as many rows of layout.count samples.
    void blur(Plane8 dst);

private:
    struct Run {
        int32_t start;  ///< first output that may have ink under its bell
        int32_t end;    ///< one past the last
    };
    /// What it keeps in scratch.
    struct Memory {
        Memory(const GaussBell& bell, const GaussStripLayout& layout, ScratchCutter& cutter);

        uint16_t* samples;  ///< layout.length columns
        int32_t* program;
        Run* runs;
        uint8_t* inked;  ///< a flag per block
    };

    uint16_t* sampleAt(int64_t column) const;
    int findRuns();

    const GaussPlan& mPlan;
    int32_t mEmptySum;
    GaussStripLayout mLayout;
    Memory mMemory;
};

}  // namespace QxFontEffect
