#include "effect/kernel/wide_blur.h"

#include <algorithm>

namespace QxFontEffect {
namespace {

GaussStripLayout layoutOf(const GaussJob& job) {
    return {*job.bell, job.src.width, job.out.xStart, std::max(job.out.xEnd - job.out.xStart, 0)};
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

// Ink is counted in many blocks at once: their rows are read as they lie in memory.
constexpr int kCountedBlocks = 32;

/// Puts rows of a plane into the blocks of a strip from `first` on, kCountedBlocks of them or what there is.
void setBlocks(ConstPlane8 src, int y, int rows, int first, const GaussPlan& plan, GaussStrip& strip) {
    const GaussStripLayout& layout = strip.layout();
    const int column = layout.from + first * kGaussBlock;
    const int columns = std::min(kCountedBlocks * kGaussBlock, layout.to - column);
    const uint8_t* samples = src.row(y) + column;
    int32_t inkedBefore[kCountedBlocks * (kGaussRows + 1)];
    plan.kernels->countInk(samples, src.stride, columns, rows, inkedBefore);
    const int32_t* inked = inkedBefore + rows;
    for (int x = 0; x < columns; x += kGaussBlock, inked += rows + 1)
        strip.setBlock(first + x / kGaussBlock, *inked != 0 ? samples + x : nullptr, src.stride,
                       std::min(kGaussBlock, columns - x), rows);
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

WideBlur::Memory WideBlur::memoryFrom(const GaussJob& job, uint8_t* scratch) {
    ScratchCutter cutter(scratch);
    return Memory(job, cutter);
}

int64_t WideBlur::scratchBytes(const GaussJob& job) {
    ScratchCutter counter;
    Memory(job, counter);
    return counter.bytes();
}

WideBlur::WideBlur(const GaussJob& job, uint8_t* scratch, const GaussKernels& kernels)
    : mPlan(makeGaussPlan(*job.bell, kernels)),
      mMemory(memoryFrom(job, scratch)),
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

int64_t gaussLinesScratchBytes(const GaussBell& bell, int width, int xStart, int count) {
    return GaussStrip::scratchBytes(bell, GaussStripLayout(bell, width, xStart, count));
}

void gaussLinesPlane8(ConstPlane8 src, const GaussPlan& plan, GaussRounding rounding, int xStart, uint8_t* scratch,
                      Plane8 dst) {
    GaussStrip strip(plan, rounding, GaussStripLayout(plan.bell, src.width, xStart, dst.width), scratch);
    const GaussStripLayout& layout = strip.layout();
    for (int y = 0; y < src.height; y += kGaussRows) {
        const int rows = std::min(kGaussRows, src.height - y);
        for (int block = 0; block < layout.blocks; block += kCountedBlocks) setBlocks(src, y, rows, block, plan, strip);
        strip.blur({dst.row(y), dst.width, rows, dst.stride});
    }
}

}  // namespace QxFontEffect
