#include "effect/kernel/wide_rows_blur.h"

#include <algorithm>
#include <cstring>

namespace QxFontEffect {
namespace {

int widthOf(const GaussJob& job) {
    return std::max(job.out.xEnd - job.out.xStart, 0);
}

ptrdiff_t stripStride(int width) {
    return ptrdiff_t{(width + kGaussBlock - 1) / kGaussBlock} * kGaussBlock;
}

/// The rows that the vertical pass reads.
struct SoftRows {
    explicit SoftRows(const GaussJob& job) {
        const int64_t radius = job.bell->radius;
        top = static_cast<int>(std::clamp<int64_t>(job.out.yStart - radius - 3, 0, job.src.height));
        count = static_cast<int>(std::clamp<int64_t>(job.out.yEnd + radius, top, job.src.height)) - top;
    }
    int top;
    int count;
};

}  // namespace

WideRowsBlur::Memory::Memory(const GaussJob& job, ScratchCutter& cutter) {
    const int width = widthOf(job), rows = SoftRows(job).count;
    soft = cutter.take<uint8_t>(int64_t{width} * rows);
    strip = cutter.take<uint8_t>(stripStride(width) * GaussColumns::kStripRows);
    work = cutter.take<uint8_t>(std::max(gaussLinesScratchBytes(*job.bell, job.src.width, job.out.xStart, width),
                                         GaussColumns::scratchBytes(*job.bell, width, rows)));
}

WideRowsBlur::Memory WideRowsBlur::memoryFrom(const GaussJob& job, uint8_t* scratch) {
    ScratchCutter cutter(scratch);
    return Memory(job, cutter);
}

int64_t WideRowsBlur::scratchBytes(const GaussJob& job) {
    ScratchCutter counter;
    Memory(job, counter);
    return counter.bytes();
}

/// Runs the horizontal pass before the vertical one takes its scratch.
GaussColumns WideRowsBlur::columnsOf(const GaussJob& job) const {
    const SoftRows rows(job);
    const Plane8 soft = {mMemory.soft, mWidth, rows.count, mWidth};
    gaussLinesPlane8({job.src.row(rows.top), job.src.width, rows.count, job.src.stride}, mPlan, job.rows,
                     job.out.xStart, mMemory.work, soft);
    return {
        {soft.data, soft.width, soft.height, soft.stride}, mPlan, job.columns, job.out.yStart - rows.top, mMemory.work};
}

WideRowsBlur::WideRowsBlur(const GaussJob& job, uint8_t* scratch, const GaussKernels& kernels)
    : mPlan(makeGaussPlan(*job.bell, kernels)),
      mMemory(memoryFrom(job, scratch)),
      mWidth(widthOf(job)),
      mLeft(std::max(job.out.yEnd - job.out.yStart, 0)),
      mColumns(columnsOf(job)) {}

ConstPlane8 WideRowsBlur::next() {
    const int rows = std::min(mLeft, GaussColumns::kStripRows);
    const ptrdiff_t stride = stripStride(mWidth);
    mLeft -= rows;
    if (rows == 0) return {mMemory.strip, mWidth, 0, stride};
    mColumns.beginStrip(rows);
    for (int block = 0; block < mColumns.blockCount(); ++block) {
        uint8_t* part = mMemory.strip + ptrdiff_t{block} * kGaussBlock;
        if (mColumns.makeBlock(block, part, stride)) continue;
        for (int y = 0; y < rows; ++y) std::memset(part + y * stride, 0, kGaussBlock);
    }
    return {mMemory.strip, mWidth, rows, stride};
}

}  // namespace QxFontEffect
