#include "effect/kernel/wide_blur.h"

#include <algorithm>

namespace QxFontEffect {
namespace {

GaussStripLayout layoutOf(const GaussJob& job) {
    return {*job.bell, job.src.width, job.out.xStart, outputsOf(job)};
}

/// The part of the source that a job reads, and the row of the job's first row in it.
struct NeededPart {
    NeededPart(const GaussJob& job, const GaussStripLayout& layout) {
        const int64_t reach = int64_t{job.bell->radius} + 3;
        const int from = static_cast<int>(std::clamp<int64_t>(job.out.yStart - reach, 0, job.src.height));
        const int to = static_cast<int>(std::clamp<int64_t>(job.out.yEnd + reach, from, job.src.height));
        plane = {job.src.row(from) + layout.from, layout.to - layout.from, to - from, job.src.stride};
        yStart = job.out.yStart - from;
    }
    ConstPlane8 plane;
    int yStart;
};

GaussColumns columnsOf(const GaussJob& job, const GaussPlan& plan, uint8_t* scratch) {
    const NeededPart part(job, layoutOf(job));
    return {part.plane, plan, job.columns, part.yStart, scratch};
}

}  // namespace

WideBlur::Memory::Memory(const GaussJob& job, ScratchCutter& cutter) {
    const GaussStripLayout layout = layoutOf(job);
    const ConstPlane8 plane = NeededPart(job, layout).plane;
    const int rows = std::clamp(job.out.yEnd - job.out.yStart, 0, GaussColumns::kStripRows);
    lines = cutter.take<uint8_t>(GaussStrip::scratchBytes(*job.bell, layout));
    columns = cutter.take<uint8_t>(GaussColumns::scratchBytes(*job.bell, plane.width, plane.height));
    strip = cutter.take<uint8_t>(int64_t{rows} * layout.blocks * kGaussBlock);
}

int64_t WideBlur::scratchBytes(const GaussJob& job) {
    return scratchBytesOf<Memory>(job);
}

WideBlur::WideBlur(const GaussJob& job, uint8_t* scratch, const GaussKernels& kernels)
    : mPlan(makeGaussPlan(*job.bell, kernels)),
      mMemory(cutFrom<Memory>(scratch, job)),
      mLeft(std::max(job.out.yEnd - job.out.yStart, 0)),
      mStripRows(0),
      mTaken(0),
      mStride(layoutOf(job).blocks * kGaussBlock),
      mLines(mPlan, job.rows, layoutOf(job), mMemory.lines),
      mColumns(columnsOf(job, mPlan, mMemory.columns)) {}

void WideBlur::makeStrip() {
    mStripRows = std::min(GaussColumns::kStripRows, mLeft);
    mTaken = 0;
    mLeft -= mStripRows;
    mColumns.beginStrip(mStripRows);
    for (int block = 0; block < mColumns.blockCount(); ++block)
        mColumns.makeBlock(block, mMemory.strip + block * kGaussBlock, mStride);
}

int WideBlur::next(uint8_t* dst, ptrdiff_t stride) {
    if (mTaken == mStripRows && mLeft > 0) makeStrip();
    const int rows = std::min(kGaussRows, mStripRows - mTaken);
    if (rows == 0) return 0;
    const uint8_t* strip = mMemory.strip + ptrdiff_t{mTaken} * mStride;
    const GaussStripLayout& layout = mLines.layout();
    for (int block = 0; block < layout.blocks; ++block) {
        const int column = block * kGaussBlock;
        mLines.setBlock(block, mColumns.isInked(block, mTaken, rows) ? strip + column : nullptr, mStride,
                        std::min(kGaussBlock, layout.to - layout.from - column), rows);
    }
    mLines.blur({dst, layout.count, rows, stride});
    mTaken += rows;
    return rows;
}

}  // namespace QxFontEffect
