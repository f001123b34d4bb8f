#pragma once

#include <cstddef>
#include <cstdint>

#include "effect/kernel/gauss_job.h"
#include "effect/kernel/narrow_kernels.h"
#include "effect/kernel/scratch_cutter.h"
#include "pixel/plane.h"

namespace QxFontEffect {

/// Both passes of a blur by a narrow bell, a strip of rows at a time, where there is ink.
///
/// Columns are counted on a grid whose second unit begins with the first output; the unit before it and the one behind
/// the last hold what of the source lies beside the outputs. The vertical pass reads from a window: the rows that the
/// bell reaches above the strip, then those that enter with it.
class NarrowBlur {
public:
    /// Bytes of scratch, in 64 bits because a job may want more than there is.
    /// @param outputs  a row.
    static int64_t scratchBytes(int radius, int outputs);

    /// @param job      its bell is one of the narrow ones.
    /// @param scratch  scratchBytes(...) bytes, used while the object lives, contents undefined before and after.
    NarrowBlur(const GaussJob& job, uint8_t* scratch, const NarrowKernels& kernels = narrowKernels());

    /// The next kNarrowRows rows of the wanted part, or what is left of it, valid until the next call; none at the end.
    ConstPlane8 next();

private:
    /// What it keeps in scratch. Units that are not marked are 0 in all of it.
    struct Memory {
        Memory(int radius, int outputs, ScratchCutter& cutter);

        ptrdiff_t columns() const { return ptrdiff_t{words} * kNarrowWordColumns; }

        int words;  ///< of marks, for all units of a row
        int windowRows;
        uint8_t* source;     ///< rows of the source on the grid
        uint8_t* out;        ///< rows of the result
        uint16_t* lines;     ///< rows of the horizontal pass
        uint16_t* window;    ///< of the vertical pass
        uint64_t* wanted;    ///< marks of the units that hold outputs
        uint64_t* marks;     ///< of what is being made
        uint64_t* inOut;     ///< of `out`
        uint64_t* inLines;   ///< of `lines`
        uint64_t* inWindow;  ///< of `window`
    };

    NarrowMarks marksOf(uint64_t* bits) const { return {bits, mMemory.words, kNarrowRows}; }
    NarrowMarks windowMarks() const { return {mMemory.inWindow, mMemory.words, mMemory.windowRows}; }
    NarrowLines lines() const { return {mMemory.lines, mMemory.columns()}; }
    NarrowWindow window() const { return {mMemory.window, ptrdiff_t{kNarrowUnit} * mMemory.windowRows}; }

    void clear();
    void moveWindow() const;
    void enterRows(int first, int rows);
    void readRows(int rows);
    void markSpread(int rows) const;
    void markColumns(int rows) const;
    void takeLines(int rows) const;
    void takeWindow(int first, int rows) const;
    void takeOut(int rows) const;

    ConstPlane8 mSrc;
    int mBell;
    int mRadius;
    GaussOrder mOrder;
    const NarrowKernels& mKernels;
    int32_t mEmptyColumn;
    int32_t mEmptyLine;
    int mCount;  // outputs a row
    Memory mMemory;
    int mFrom;          // first column of the source that is read
    int mTo;            // one past the last
    int mPlace;         // of the first one on the grid
    int64_t mEntering;  // row of the source that enters next
    int mLeft;          // rows of the part that are still to be made
    bool mHasWindow;    // of a strip before
};

}  // namespace QxFontEffect
