#pragma once

#include <cstdint>

#include "effect/kernel/gauss_columns.h"
#include "effect/kernel/gauss_job.h"
#include "effect/kernel/gauss_kernels.h"
#include "effect/kernel/gauss_strip.h"
#include "pixel/plane.h"

namespace QxFontEffect {

/// Runs a blur, columns first, by running sums that follow the bell: for bells of any width.
class WideBlur {
public:
    /// Bytes of scratch, in 64 bits because a job may want more than there is.
    static int64_t scratchBytes(const GaussJob& job);

    /// @param scratch  scratchBytes(job) bytes, used while the object lives, contents undefined before and after.
    WideBlur(const GaussJob& job, uint8_t* scratch, const GaussKernels& kernels = gaussKernels());
    WideBlur(const WideBlur&) = delete;
    WideBlur& operator=(const WideBlur&) = delete;

    /// Writes the next kGaussRows rows of the wanted part, or what is left of it, and returns their number: 0 at the
    /// end.
    /// @param dst  as wide as the part, must not overlap source or scratch.
    int next(uint8_t* dst, ptrdiff_t stride);

private:
    /// What it keeps in scratch.
    struct Memory {
        Memory(const GaussJob& job, ScratchCutter& cutter);

        uint8_t* lines;    ///< of mLines
        uint8_t* columns;  ///< of mColumns
        uint8_t* strip;    ///< of the vertical pass
    };

    void makeStrip();

    GaussPlan mPlan;
    Memory mMemory;
    int mLeft;       // rows of the part that are not in the strip yet
    int mStripRows;  // rows in the strip of the vertical pass ...
    int mTaken;      // ... and how many of them have been blurred
    int mStride;     // of the strip
    GaussStrip mLines;
    GaussColumns mColumns;
};

}  // namespace QxFontEffect
