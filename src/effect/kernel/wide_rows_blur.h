#pragma once

#include <cstdint>

#include "effect/kernel/gauss_columns.h"
#include "effect/kernel/gauss_job.h"
#include "effect/kernel/gauss_kernels.h"
#include "effect/kernel/wide_blur.h"
#include "pixel/plane.h"

namespace QxFontEffect {

/// Runs a blur, rows first, by running sums that follow the bell. The vertical pass has to see all rows that the bell
/// reaches, so that what the horizontal pass makes is kept.
class WideRowsBlur {
public:
    /// Bytes of scratch, in 64 bits because a job may want more than there is.
    static int64_t scratchBytes(const GaussJob& job);

    /// @param scratch  scratchBytes(job) bytes, used while the object lives, contents undefined before and after.
    WideRowsBlur(const GaussJob& job, uint8_t* scratch, const GaussKernels& kernels = gaussKernels());
    WideRowsBlur(const WideRowsBlur&) = delete;
    WideRowsBlur& operator=(const WideRowsBlur&) = delete;

    /// The next rows of the wanted part, valid until the next call; none at the end.
    ConstPlane8 next();

private:
    /// What it keeps in scratch.
    struct Memory {
        Memory(const GaussJob& job, ScratchCutter& cutter);

        uint8_t* soft;   ///< what the horizontal pass makes
        uint8_t* strip;  ///< rows of the result, in whole blocks
        uint8_t* work;   ///< of one pass, then of the other
    };
    static Memory memoryFrom(const GaussJob& job, uint8_t* scratch);

    GaussColumns columnsOf(const GaussJob& job) const;

    GaussPlan mPlan;
    Memory mMemory;
    int mWidth;
    int mLeft;  // rows of the part that are still to be made
    GaussColumns mColumns;
};

}  // namespace QxFontEffect
