#include "effect/kernel/wide_rows_blur.h"

#include <algorithm>
#include <cstring>

#include "effect/kernel/gauss_strip.h"

namespace QxFontEffect {
namespace {

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

WideRowsBlur::Memory::Memory(const GaussJob& job, ScratchCutter& cutter) {
    const int width = outputsOf(job), rows = SoftRows(job).count;
    soft = cutter.take<uint8_t>(int64_t{width} * rows);
    strip = cutter.take<uint8_t>(stripStride(width) * GaussColumns::kStripRows);
    work = cutter.take<uint8_t>(std::max(gaussLinesScratchBytes(*job.bell, job.src.width, job.out.xStart, width),
                                         GaussColumns::scratchBytes(*job.bell, width, rows)));
}

int64_t WideRowsBlur::scratchBytes(const GaussJob& job) {
    return scratchBytesOf<Memory>(job);
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
      mMemory(cutFrom<Memory>(scratch, job)),
      mWidth(outputsOf(job)),
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
