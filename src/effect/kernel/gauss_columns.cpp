#include "effect/kernel/gauss_columns.h"

#include <algorithm>

namespace QxFontEffect {
namespace {

int blocksOf(int width) {
    return (width + kGaussBlock - 1) / kGaussBlock;
}

int columnsOf(ConstPlane8 src, int block) {
    return std::min(kGaussBlock, src.width - block * kGaussBlock);
}

/// Rows of a window: a row of zeros, then those under the taps of a strip, from the radius and three above its first
/// row on. Second totals go on growing below the plane, so that all of them are there.
int64_t windowRows(const GaussBell& bell, int height) {
    const int64_t rows = int64_t{2} * bell.radius + 3 + GaussColumns::kStripRows;
    return 1 + (bell.radius <= GaussTaps::kMaxSecondRadius ? rows : std::min<int64_t>(height, rows));
}

/// What the programs of a block's rows read. Blocks with second totals have no samples.
GaussPlaces placesIn(const GaussPlan& plan, int64_t first, int64_t last, int64_t zero) {
    if (plan.taps.highest == GaussTaps::kSecondTotals) return {kGaussBlockRow, {0, 0, kGaussBlock}, first, last, zero};
    return {kGaussBlockRow, {0, kGaussBlock, 0}, first, last, zero};
}

}  // namespace

GaussColumns::Memory::Memory(const GaussBell& bell, int width, int height, ScratchCutter& cutter)
    : programs(cutter.take<GaussRowProgram>(kStripRows)),
      inkedBefore(cutter.take<int32_t>(blocksOf(width) * (int64_t{height} + 1))),
      sums(cutter.take<int32_t>(int64_t{blocksOf(width)} * kGaussBlock)),
      innerProgram(cutter.take<int32_t>(GaussProgram::maxWords(bell))),
      edgePrograms(cutter.take<int32_t>(int64_t{kStripRows} * GaussProgram::maxWords(bell))),
      window(cutter.take<uint16_t>(windowRows(bell, height) * kGaussBlockRow)) {}

int64_t GaussColumns::scratchBytes(const GaussBell& bell, int width, int height) {
    return scratchBytesOf<Memory>(bell, width, height);
}

GaussColumns::GaussColumns(ConstPlane8 src, const GaussPlan& plan, GaussRounding rounding, int yStart, uint8_t* scratch)
    : mSrc(src),
      mPlan(plan),
      mBlocks(blocksOf(src.width)),
      mRow(yStart),
      mRows(0),
      mEmptySum(plan.emptySum(rounding)),
      mTop(0),
      mBottom(0),
      mRowsBelow(0),
      mMemory(cutFrom<Memory>(scratch, plan.bell, src.width, src.height)) {
    const int64_t reach = int64_t{plan.bell.radius} + 3;
    writeGaussProgram(plan.taps, placesIn(plan, -reach, reach, kNoPlace), mMemory.innerProgram);
    std::fill_n(mMemory.window, kGaussBlockRow, uint16_t{0});
    plan.kernels->countInk(src.data, src.stride, src.width, src.height, mMemory.inkedBefore);
    for (int block = 0; block < mBlocks; ++block) startSums(block);
}

/// Whether ink lies under the bell of one of these rows.
bool GaussColumns::mayBeInked(int block, int64_t firstRow, int64_t lastRow) const {
    const int64_t height = mSrc.height;
    const int32_t* before = mMemory.inkedBefore + block * (height + 1);
    const int64_t first = std::clamp<int64_t>(firstRow - mPlan.bell.radius, 0, height);
    const int64_t end = std::clamp<int64_t>(lastRow + mPlan.bell.radius + 1, first, height);
    return before[first] != before[end];
}

/// Brings the sums of a block to the row above the first one, by growing each box out of the one inside it.
void GaussColumns::startSums(int block) {
    int32_t* sums = mMemory.sums + block * kGaussBlock;
    int32_t values[kGaussBlock];
    std::fill_n(values, kGaussBlock, mEmptySum);
    const int64_t y = int64_t{mRow} - 1;
    if (!mayBeInked(block, y, y)) {
        mPlan.kernels->startSums(mPlan, values, sums);
        return;
    }

    const int columns = columnsOf(mSrc, block);
    int32_t box[kGaussBlock] = {}, total[kGaussBlock] = {};
    const auto add = [&](int64_t row) {
        if (row < 0 || row >= mSrc.height) return;
        const uint8_t* samples = mSrc.row(static_cast<int>(row)) + block * kGaussBlock;
        for (int x = 0; x < columns; ++x) box[x] += samples[x];
    };
    int reach = 0;
    add(y);
    for (int b = 0; b < mPlan.bell.boxCount; ++b) {
        while (reach < mPlan.bell.boxes[b].reach) {
            ++reach;
            add(y - reach);
            add(y + reach);
        }
        for (int x = 0; x < columns; ++x) total[x] += mPlan.bell.boxes[b].height * box[x];
    }
    for (int x = 0; x < columns; ++x) values[x] += total[x];
    mPlan.kernels->startSums(mPlan, values, sums);
}

void GaussColumns::beginStrip(int rows) {
    mRow += mRows;
    mRows = rows;
    const int64_t radius = mPlan.bell.radius;
    mTop = static_cast<int>(std::clamp<int64_t>(mRow - 3 - radius, 0, mSrc.height));
    mBottom = static_cast<int>(std::clamp<int64_t>(int64_t{mRow} + rows + radius, mTop, mSrc.height));
    mRowsBelow = mPlan.taps.highest == GaussTaps::kSecondTotals
                     ? static_cast<int>(std::max<int64_t>(int64_t{mRow} + rows + radius - mBottom, 0))
                     : 0;
    int32_t* next = mMemory.edgePrograms;
    for (int row = 0; row < rows; ++row) {
        const int64_t y = int64_t{mRow} + row, first = mTop - y, last = int64_t{mBottom} + mRowsBelow - 1 - y;
        const bool isInner = first <= -3 - radius && last >= radius;
        const int64_t base = kGaussBlockRow * (1 - first);
        mMemory.programs[row] = {isInner ? mMemory.innerProgram : next, base};
        if (!isInner) next += writeGaussProgram(mPlan.taps, placesIn(mPlan, first, last, -base), next);
    }
}

/// Whether some of the strip's rows may be other than 0. The row before them counts too: its sums have to be brought
/// down to those of an empty plane.
bool GaussColumns::isInked(int block, int row, int rows) const {
    return mayBeInked(block, int64_t{mRow} + row - 1, int64_t{mRow} + row + rows - 1);
}

/// Fills the window with what lies under the taps of the strip's rows from .. to - 1.
void GaussColumns::fillWindow(int block, int from, int to) {
    const int64_t radius = mPlan.bell.radius;
    const int top = static_cast<int>(std::max<int64_t>(int64_t{mRow} + from - 3 - radius, mTop));
    const int64_t end = int64_t{mRow} + to + radius;
    const int bottom = static_cast<int>(std::clamp<int64_t>(end, top, mBottom));
    mPlan.kernels->widen(mSrc.row(top) + block * kGaussBlock, mSrc.stride, columnsOf(mSrc, block), bottom - top,
                         end > mBottom ? mRowsBelow : 0, mPlan.taps.highest,
                         mMemory.window + (1 + ptrdiff_t{top} - mTop) * kGaussBlockRow);
}

bool GaussColumns::makeBlock(int block, uint8_t* out, ptrdiff_t stride) {
    int from = 0, to = mRows;
    while (from < mRows && !isInked(block, from, std::min(kGaussRows, mRows - from))) from += kGaussRows;
    if (from >= mRows) return false;
    for (int last = (to - 1) / kGaussRows * kGaussRows; !isInked(block, last, to - last); last -= kGaussRows) to = last;
    fillWindow(block, from, to);
    for (int row = 0; row < mRows; row += kGaussRows) {
        const int rows = std::min(kGaussRows, mRows - row);
        uint8_t* part = out + row * stride;
        if (isInked(block, row, rows))
            mPlan.kernels->columns(mPlan, {mMemory.window, mMemory.programs + row, rows, columnsOf(mSrc, block),
                                           mEmptySum, mMemory.sums + block * kGaussBlock, part, stride});
        else
            for (int y = 0; y < rows; ++y) std::fill_n(part + y * stride, kGaussBlock, uint8_t{0});
    }
    return true;
}

}  // namespace QxFontEffect
