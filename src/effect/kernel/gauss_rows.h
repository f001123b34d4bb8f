#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "effect/kernel/gauss_job.h"
#include "effect/kernel/narrow_blur.h"
#include "effect/kernel/wide_blur.h"
#include "effect/kernel/wide_rows_blur.h"

namespace QxFontEffect {

/// The loops of the blurs for one instruction set.
struct BlurKernels {
    const NarrowKernels* narrow;
    const GaussKernels* wide;
};

/// The fastest of them here.
BlurKernels blurKernels();

/// Runs a job, a few rows at a time, so that nobody needs memory for the whole result.
class GaussRows {
public:
    /// Bytes of scratch, in 64 bits because a job may want more than there is.
    static int64_t scratchBytes(const GaussJob& job);

    /// @param scratch  scratchBytes(job) bytes, used while the object lives, contents undefined before and after.
    GaussRows(const GaussJob& job, uint8_t* scratch, const BlurKernels& kernels = blurKernels());
    GaussRows(const GaussRows&) = delete;
    GaussRows& operator=(const GaussRows&) = delete;

    /// The next rows of the wanted part, valid until the next call; none at the end.
    ConstPlane8 next();

    /// Writes the next rows of the wanted part, columns first: kGaussRows of them, or what is left. Returns their
    /// number, 0 at the end.
    /// @param dst  as wide as the part, must not overlap source or scratch.
    int next(uint8_t* dst, ptrdiff_t stride);

private:
    int mWidth;
    uint8_t* mStrip;
    std::optional<NarrowBlur> mNarrow;
    std::optional<WideBlur> mWide;
    std::optional<WideRowsBlur> mWideRows;
};

}  // namespace QxFontEffect
