#include "effect/disc_dilation.h"

#include <algorithm>
#include <cstring>

#include "effect/kernel/disc_dilate.h"

namespace QxFontEffect {
namespace {

constexpr int64_t kLeastTile = int64_t{2} * kDilateBlock;

// Sides beyond any bitmap; sums of a few of them fit 32 bits.
constexpr int64_t kFarthest = int64_t{1} << 28;

int64_t blocksOf(int64_t columns) {
    return (columns + kDilateBlock - 1) / kDilateBlock;
}

int64_t roundedUp(int64_t columns) {
    return blocksOf(columns) * kDilateBlock;
}

}  // namespace

bool canDilate(int areaWidth, int areaHeight, const DilateRange& out) {
    return out.x0 < out.x1 && out.y0 < out.y1 && areaWidth <= kFarthest && areaHeight <= kFarthest &&
           out.x0 >= -kFarthest && out.y0 >= -kFarthest && out.x1 <= kFarthest && out.y1 <= kFarthest;
}

DiscPlan::DiscPlan(float radius, int areaWidth, int areaHeight, const DilateRange& out, int64_t budget)
    : mShape(shapeOf(radius, areaWidth, areaHeight, out, budget)), mRows(mShape.rows), mTaps(findRuns(radius)) {
    if (*this) makeRows(radius);
}

void DiscPlan::layOut(Shape& shape, int areaWidth, int64_t tileWidth) {
    shape.margin = kDilateBlock + shape.covered[shape.tables - 1];
    shape.tileWidth = static_cast<int>(tileWidth);
    // One block more than the area has, because blocks are counted from the tile on.
    const int64_t seen = tileWidth / kDilateBlock + 2 * int64_t{shape.maxBlocks};
    shape.spanBlocks = static_cast<int>(std::min(blocksOf(areaWidth) + 1, seen));
    shape.tableStride = int64_t{shape.spanBlocks} * kDilateBlock + 2 * int64_t{shape.margin};
}

/// Maxima over the largest power of two within the widest run cover the disc's wide rows with two loads each. A quarter
/// of that takes up to four for the narrower rows; the few that are narrower still are put together from samples.
void DiscPlan::chooseTables(Shape& shape) {
    int widest = 1;
    while (2 * widest <= 2 * shape.maxDx + 1) widest *= 2;
    shape.tables = 0;
    for (const int covered : {1, widest / 4, widest})
        if (shape.tables == 0 || covered > shape.covered[shape.tables - 1]) shape.covered[shape.tables++] = covered;
}

DiscPlan::Shape DiscPlan::shapeOf(float radius, int areaWidth, int areaHeight, const DilateRange& out, int64_t budget) {
    Shape shape{};
    shape.rows = -1;
    const int64_t reach = discReach(radius);
    if (reach < 0 || !canDilate(areaWidth, areaHeight, out)) return shape;
    shape.maxDx = static_cast<int>(std::min(reach, std::max(out.x1 - 1, areaWidth - 1 - out.x0)));
    shape.maxBlocks = static_cast<int>(blocksOf(shape.maxDx));
    shape.rows = static_cast<int>(std::min(reach, std::max(out.y1 - 1, areaHeight - 1 - out.y0))) + 1;
    shape.ringRows = std::min(2 * shape.rows - 1, areaHeight);

    chooseTables(shape);

    const int64_t width = roundedUp(out.x1 - out.x0);
    layOut(shape, areaWidth, width);
    if (shape.ringBytes() <= budget) return shape;
    const int64_t perRow =
        budget / (int64_t{shape.ringRows} * shape.tables) - 2 * int64_t{shape.margin} - 2 * int64_t{shape.maxDx};
    layOut(shape, areaWidth, std::clamp(perRow / kDilateBlock * kDilateBlock, std::min(kLeastTile, width), width));
    return shape;
}

int DiscPlan::tableFor(int length) const {
    int table = mShape.tables - 1;
    while (mShape.covered[table] > length) --table;
    return table;
}

/// Measures the disc's rows and returns the number of rim cells. Weights fall along a row and from row to row, but for
/// the centre cell of a disc narrower than a pixel, which has no run at all.
int64_t DiscPlan::findRuns(float radius) {
    if (!mRows) return -1;
    int64_t taps = 0;
    int run = mShape.maxDx + 1, end = run;
    for (int row = 0; row < mShape.rows; ++row) {
        while (run > 0 && discCell(radius, row, run - 1) != 255) --run;
        while (end > 0 && discCell(radius, row, end - 1) == 0) --end;
        mRows[static_cast<size_t>(row)] = {1 - run,
                                           run,
                                           0,
                                           0,
                                           nullptr,
                                           end - run,
                                           static_cast<int32_t>(blocksOf(run - 1)),
                                           static_cast<int32_t>(blocksOf(end - 1))};
        taps += end - run;
    }
    return taps;
}

void DiscPlan::makeRows(float radius) {
    DiscTap* tap = mTaps.data();
    for (int row = 0; row < mShape.rows; ++row) {
        DiscRow& disc = mRows[static_cast<size_t>(row)];
        const int run = disc.last;
        if (run > 0) {
            const int table = tableFor(2 * run - 1);
            disc.covered = mShape.covered[table];
            disc.last = run - disc.covered;
            disc.table = table * mShape.tableStride;
        }
        disc.taps = tap;
        for (int i = 0; i < disc.tapCount; ++i) *tap++ = {run + i, 255 - discCell(radius, row, run + i)};
    }
}

DiscDilation::DiscDilation(const DiscPlan& plan, const DilateArea& area, const DilateKernels& kernels)
    : mPlan(plan),
      mShape(plan.mShape),
      mArea(area),
      mKernels(kernels),
      mInkMargin(2 * mShape.maxBlocks + 1),
      mInkStride(mShape.spanBlocks + 2 * mInkMargin + 1),
      mRing(Scratch<uint8_t>::zeroed(mShape.ringRows, mShape.tables * mShape.tableStride)),
      mInk(mShape.ringRows, mInkStride),
      mInkInReach(mInkStride),
      mInked(2 * int64_t{mShape.ringRows}),
      mRows(2 * int64_t{mShape.rows}) {}

uint8_t* DiscDilation::samplesIn(int slot) {
    return mRing.data() + mShape.tableStride * mShape.tables * slot + mShape.margin;
}

uint32_t* DiscDilation::inkIn(int slot) {
    return mInk.data() + int64_t{slot} * mInkStride + mInkMargin;
}

void DiscDilation::start(int64_t x0, int64_t x1, int64_t y0) {
    mColumns = static_cast<int>(x1 - x0);
    mY = y0;
    // The span begins as far left as the disc reaches, or in the block before the area's first column.
    const int64_t blocksToArea = x0 > 0 ? blocksOf(x0) : -(-x0 / kDilateBlock);
    mFirstBlock = static_cast<int>(std::min<int64_t>(mShape.maxBlocks, blocksToArea));
    mSpanLeft = x0 - int64_t{mFirstBlock} * kDilateBlock;
    const int64_t right = std::clamp<int64_t>(x1 + mShape.maxDx, 0, mArea.width);
    mSpan = static_cast<int>(std::max<int64_t>(right - mSpanLeft, 0));
    mBlocks = static_cast<int>(blocksOf(mSpan));
    mEntered = mLeaving = static_cast<int>(std::clamp<int64_t>(y0 - mShape.rows + 1, 0, mArea.height));
    mInkedBegin = mInkedEnd = mInkedBelow = 0;
    std::fill_n(mInkInReach.data(), mInkInReach.count(), 0u);
}

void DiscDilation::fillSamples(int row, uint8_t* samples) const {
    const int left = static_cast<int>(std::max<int64_t>(-mSpanLeft, 0));
    std::memset(samples, 0, static_cast<size_t>(mSpan) + static_cast<size_t>(mShape.margin));
    if (mArea.complement && left < mSpan) std::memset(samples + left, 255, static_cast<size_t>(mSpan - left));
    const int inkRow = row - mArea.inkY;
    if (inkRow < 0 || inkRow >= mArea.ink.height) return;
    const int64_t from = std::max<int64_t>(mArea.inkX, mSpanLeft);
    const int64_t to = std::min<int64_t>(int64_t{mArea.inkX} + mArea.ink.width, mSpanLeft + mSpan);
    if (from < to)
        mKernels.copy(mArea.ink.row(inkRow) + (from - mArea.inkX), static_cast<int>(to - from), mArea.complement,
                      samples + (from - mSpanLeft));
}

void DiscDilation::enterRow(int row) {
    const int slot = row % mShape.ringRows;
    uint8_t* samples = samplesIn(slot);
    fillSamples(row, samples);

    uint32_t* inkBefore = inkIn(slot);
    std::fill_n(inkBefore - mInkMargin, mInkMargin, 0u);
    mKernels.countInk(samples, mBlocks, inkBefore);
    std::fill_n(inkBefore + mBlocks, mInkStride - mInkMargin - mBlocks, inkBefore[mBlocks]);
    if (inkBefore[mBlocks] == 0) return;
    addInked(row, {samples, inkBefore});
    countInk(slot, 1);

    for (int table = 1; table < mShape.tables; ++table) {
        const int step = mShape.covered[table - 1], covered = mShape.covered[table];
        uint8_t* from = samples + (table - 1) * mShape.tableStride;
        uint8_t* to = from + mShape.tableStride;
        mKernels.runMaxima(from - covered, step, covered / step, mSpan + covered, to - covered);
        std::memset(to + mSpan, 0, static_cast<size_t>(mShape.margin));
    }
}

void DiscDilation::addInked(int row, const DilateSource& source) {
    if (static_cast<size_t>(mInkedEnd) == mInked.count()) {
        std::copy(mInked.data() + mInkedBegin, mInked.data() + mInkedEnd, mInked.data());
        mInkedEnd -= mInkedBegin;
        mInkedBelow -= mInkedBegin;
        mInkedBegin = 0;
    }
    mInked[static_cast<size_t>(mInkedEnd++)] = {source, row};
}

void DiscDilation::leaveRow(int row) {
    if (mInkedBegin == mInkedEnd || mInked[static_cast<size_t>(mInkedBegin)].row != row) return;
    ++mInkedBegin;
    countInk(row % mShape.ringRows, ~0u);
}

void DiscDilation::countInk(int slot, uint32_t sign) {
    const uint32_t* inkBefore = inkIn(slot) - mInkMargin;
    for (int i = 0; i < mInkStride; ++i) mInkInReach[static_cast<size_t>(i)] += sign * inkBefore[i];
}

/// Joins the inked rows above and below the output row, nearest first.
void DiscDilation::listRows(DilateLine& line) {
    const InkedRow* inked = mInked.data();
    while (mInkedBelow < mInkedEnd && inked[mInkedBelow].row <= mY) ++mInkedBelow;
    // All of them are in reach.
    const int y = static_cast<int>(mY);
    DilateRow* listed = mRows.data();
    int above = mInkedBelow - 1, below = mInkedBelow;
    while (above >= mInkedBegin || below < mInkedEnd) {
        const int up = above >= mInkedBegin ? y - inked[above].row : INT32_MAX;
        const int down = below < mInkedEnd ? inked[below].row - y : INT32_MAX;
        *listed++ = {up <= down ? &inked[above].source : nullptr, down <= up ? &inked[below].source : nullptr,
                     &mPlan.mRows[static_cast<size_t>(std::min(up, down))]};
        above -= up <= down;
        below += down <= up;
    }
    line.rows = mRows.data();
    line.rowCount = static_cast<int>(listed - mRows.data());
}

DilatedPart DiscDilation::nextRow(const uint8_t* limit, uint8_t* dst) {
    const int64_t reach = mShape.rows - 1;
    // Rows go before others come: the ring has room for those in reach only.
    for (; mLeaving < mEntered && mLeaving < mY - reach; ++mLeaving) leaveRow(mLeaving);
    for (; mEntered < mArea.height && mEntered <= mY + reach; ++mEntered) enterRow(mEntered);
    DilateLine line{};
    listRows(line);
    line.inkBefore = mInkInReach.data() + mInkMargin;
    line.reach = mShape.maxDx;
    line.inkBlocks = mShape.maxBlocks;
    line.width = mSpan;
    line.firstBlock = mFirstBlock;
    line.blockCount = static_cast<int>(blocksOf(mColumns));
    line.limit = limit;
    ++mY;
    const DilatedPart part = mKernels.gather(line, dst);
    return {part.begin, std::min(part.end, mColumns)};
}

}  // namespace QxFontEffect
