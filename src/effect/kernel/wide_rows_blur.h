#pragma once

#include <cstdint>

#include "effect/kernel/gauss_columns.h"
#include "effect/kernel/gauss_job.h"
#include "effect/kernel/gauss_kernels.h"
#include "effect/kernel/scratch_cutter.h"
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

    GaussColumns columnsOf(const GaussJob& job) const;

    GaussPlan mPlan;
    Memory mMemory;
    int mWidth;
    int mLeft;  // rows of the part that are still to be made
    GaussColumns mColumns;
};

/// The horizontal pass alone, of a whole plane of rows.
///
/// @param src       rows of src.width samples; those left and right of them count as 0.
/// @param xStart    column of the first sample of dst; it and any other may lie outside the rows.
/// @param scratch   gaussLinesScratchBytes(...) bytes, as above.
/// @param dst       as many rows as src, must not overlap it.
void gaussLinesPlane8(ConstPlane8 src, const GaussPlan& plan, GaussRounding rounding, int xStart, uint8_t* scratch,
                      Plane8 dst);
int64_t gaussLinesScratchBytes(const GaussBell& bell, int width, int xStart, int count);

}  // namespace QxFontEffect
