#include "effect/kernel/gauss_rows.h"

#include <cstring>

namespace QxFontEffect {
namespace {

static_assert(kNarrowRows == kGaussRows, "both take as many rows at a time");

bool isNarrow(const GaussJob& job) {
    return narrowBellOf(*job.bell) >= 0;
}

/// Bytes that a blur with the columns first keeps its rows in.
int64_t stripBytes(const GaussJob& job) {
    return isNarrow(job) || job.order == GaussOrder::RowsFirst ? 0 : int64_t{outputsOf(job)} * kGaussRows;
}

}  // namespace

BlurKernels blurKernels() {
    return {&narrowKernels(), &gaussKernels()};
}

int64_t GaussRows::scratchBytes(const GaussJob& job) {
    if (isNarrow(job)) return NarrowBlur::scratchBytes(job.bell->radius, outputsOf(job));
    if (job.order == GaussOrder::RowsFirst) return WideRowsBlur::scratchBytes(job);
    return stripBytes(job) + WideBlur::scratchBytes(job);
}

GaussRows::GaussRows(const GaussJob& job, uint8_t* scratch, const BlurKernels& kernels)
    : mWidth(outputsOf(job)), mStrip(scratch) {
    if (isNarrow(job))
        mNarrow.emplace(job, scratch, *kernels.narrow);
    else if (job.order == GaussOrder::RowsFirst)
        mWideRows.emplace(job, scratch, *kernels.wide);
    else
        mWide.emplace(job, scratch + stripBytes(job), *kernels.wide);
}

ConstPlane8 GaussRows::next() {
    if (mNarrow) return mNarrow->next();
    if (mWideRows) return mWideRows->next();
    return {mStrip, mWidth, mWide->next(mStrip, mWidth), mWidth};
}

int GaussRows::next(uint8_t* dst, ptrdiff_t stride) {
    if (mWide) return mWide->next(dst, stride);
    const ConstPlane8 rows = next();
    for (int y = 0; y < rows.height; ++y) std::memcpy(dst + y * stride, rows.row(y), static_cast<size_t>(mWidth));
    return rows.height;
}

}  // namespace QxFontEffect
