#pragma once

#include <cstddef>
#include <cstdint>

#include "effect/kernel/gauss_kernels.h"
#include "effect/kernel/scratch_cutter.h"
#include "pixel/plane.h"

namespace QxFontEffect {

/// The vertical pass of a blur, a strip of rows at a time from top to bottom and a block of columns at a time, in time
/// that does not depend on how much of the plane is blank.
class GaussColumns {
public:
    /// Rows that a strip has at most.
    static constexpr int kStripRows = 64;

    /// Bytes of scratch for a plane, in 64 bits because a job may want more than there is.
    static int64_t scratchBytes(const GaussBell& bell, int width, int height);

    /// @param src      samples above and below it count as 0.
    /// @param plan     used while the object lives, like src and scratch.
    /// @param yStart   first row to be made; may lie outside the plane.
    /// @param scratch  scratchBytes(...) bytes, contents undefined before and after.
    GaussColumns(ConstPlane8 src, const GaussPlan& plan, GaussRounding rounding, int yStart, uint8_t* scratch);

    /// Blocks of kGaussBlock columns; the last one may reach past the plane.
    int blockCount() const { return mBlocks; }

    /// Begins the next `rows` rows, at most kStripRows.
    void beginStrip(int rows);

    /// Makes a block of the strip; every block has to be made once.
    /// @param out     rows of kGaussBlock samples; what lies past the plane is undefined.
    /// @param stride  samples from one row to the next.
    /// @return false, with `out` left as it was, when all of them would be 0.
    bool makeBlock(int block, uint8_t* out, ptrdiff_t stride);

    /// Whether some of `rows` rows of a block from the strip's row `row` on may be other than 0.
    bool isInked(int block, int row, int rows) const;

private:
    /// What it keeps in scratch.
    struct Memory {
        Memory(const GaussBell& bell, int width, int height, ScratchCutter& cutter);

        GaussRowProgram* programs;  ///< of the strip's rows
        int32_t* inkedBefore;       ///< per block: how many of its rows above row 0, 1, ... height have ink
        int32_t* sums;              ///< per block, of the row before the strip until the block is made
        int32_t* innerProgram;      ///< of the rows whose taps all lie in the window
        int32_t* edgePrograms;      ///< of the others
        uint16_t* window;           ///< a row of zeros, then rows of the source
    };

    bool mayBeInked(int block, int64_t firstRow, int64_t lastRow) const;
    void startSums(int block);
    void fillWindow(int block, int from, int to);

    ConstPlane8 mSrc;
    const GaussPlan& mPlan;
    int mBlocks;
    int mRow;   // first row of the strip
    int mRows;  // in the strip
    int32_t mEmptySum;
    int mTop;        // first row of the source in the window
    int mBottom;     // one past the last
    int mRowsBelow;  // rows of zeros in the window below it
    Memory mMemory;
};

}  // namespace QxFontEffect
