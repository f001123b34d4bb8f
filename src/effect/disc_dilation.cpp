#include "effect/disc_dilation.h"

#include <algorithm>
#include <cstring>

namespace QxFontEffect {
namespace {

/// Whether `by` has no less than `row` in the columns of an edge.
bool covered(const uint8_t* row, const uint8_t* by, int column) {
    bool less = false;
    for (int i = 0; i <= kEdgeSamples; ++i) less |= by[column + i] < row[column + i];
    return !less;
}

/// The edges of a row that another one covers.
int coveredEdges(const InkExtent& extent, const uint8_t* row, const uint8_t* by) {
    if (extent.gap == kNeverSolid) return 0;
    return (covered(row, by, extent.fullBegin - kEdgeSamples) ? kLeftEdge : 0) |
           (covered(row, by, extent.fullEnd - 1) ? kRightEdge : 0);
}

}  // namespace

DiscDilation::DiscDilation(const DiscPlan& plan, const DilateArea& area, const DilateKernels& kernels)
    : mPlan(plan),
      mShape(plan.mShape),
      mArea(area),
      mKernels(kernels),
      mInkMargin(kUnitsInBlock * (2 * mShape.maxBlocks + 1)),
      mInkStride(kUnitsInBlock * mShape.spanBlocks + 2 * mInkMargin + 1),
      mRing(Scratch<uint8_t>::zeroed(mShape.ringRows, mShape.rowStride)),
      mInk(mShape.ringRows, mInkStride),
      mInkInReach(mInkStride),
      mInked(2 * int64_t{mShape.ringRows}),
      mRows(2 * int64_t{mShape.rows}),
      mExtents(mShape.ringRows),
      mOpen(int64_t{mShape.ringRows} + kRowsTogether - 1) {}

uint8_t* DiscDilation::samplesIn(int slot) {
    return mRing.data() + mShape.rowStride * slot + mShape.tableAt[0];
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
    mExtents.clear();
    mPivot = static_cast<int>(mSpan / 2);
}

void DiscDilation::fillSamples(int row, uint8_t* samples) const {
    const int left = static_cast<int>(std::max<int64_t>(-mSpanLeft, 0));
    std::memset(samples, 0, static_cast<size_t>(mSpan) + static_cast<size_t>(mShape.zerosBehind(0)));
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
    InkExtent extent = kBlankExtent;
    mKernels.measureInk(samples, mBlocks, 2 * mShape.maxDx, inkBefore, &extent);
    mExtents.enter(row, extent);
    noteCovers(row, extent);
    const int units = kUnitsInBlock * mBlocks;
    std::fill_n(inkBefore + units, mInkStride - mInkMargin - units, inkBefore[units]);
    if (inkBefore[units] == 0) return;
    addInked(row, {samples, inkBefore});
    countInk(slot, 1);

    for (int table = 1; table < mShape.tables; ++table) {
        const int step = mShape.covered[table - 1], covered = mShape.covered[table];
        const uint8_t* from = samples + mShape.tableFrom(table - 1);
        uint8_t* to = samples + mShape.tableFrom(table);
        mKernels.runMaxima(from - covered, step, covered / step, mSpan + covered, to - covered);
        std::memset(to + mSpan, 0, static_cast<size_t>(mShape.zerosBehind(table)));
    }
}

void DiscDilation::addInked(int row, const DilateSource& source) {
    if (static_cast<size_t>(mInkedEnd) == mInked.count()) {
        std::copy(mInked.data() + mInkedBegin, mInked.data() + mInkedEnd, mInked.data());
        mInkedEnd -= mInkedBegin;
        mInkedBelow = std::max(mInkedBelow - mInkedBegin, 0);
        mInkedBegin = 0;
    }
    mInked[static_cast<size_t>(mInkedEnd++)] = {source, row};
}

/// Compares the edges of a row that has just come with those of the row above it.
void DiscDilation::noteCovers(int row, const InkExtent& extent) {
    const InkExtent extentAbove = mLastEntered;
    mLastEntered = extent;
    if (row == mLeaving || (extent.gap == kNeverSolid && extentAbove.gap == kNeverSolid)) return;
    const uint8_t* samples = samplesIn(row % mShape.ringRows);
    const uint8_t* above = samplesIn((row - 1) % mShape.ringRows);
    mExtents.cover(row, coveredEdges(extent, samples, above) << kByAbove);
    mExtents.cover(row - 1, coveredEdges(extentAbove, above, samples) << kByBelow);
}

void DiscDilation::leaveRow(int row) {
    mExtents.leave(row);
    if (mInkedBegin == mInkedEnd || firstInked().row != row) return;
    ++mInkedBegin;
    countInk(row % mShape.ringRows, ~0u);
}

void DiscDilation::countInk(int slot, uint32_t sign) {
    const uint32_t* inkBefore = inkIn(slot) - mInkMargin;
    for (int i = 0; i < mInkStride; ++i) mInkInReach[static_cast<size_t>(i)] += sign * inkBefore[i];
}

SolidLine DiscDilation::solidLine(int64_t y) const {
    const int first = firstInked().row;
    SolidLine line{};
    mExtents.show(first, line);
    const int firstSide = static_cast<int>(first - y) + mShape.rows - 1;
    line.run = mPlan.mSides.data() + firstSide;
    line.reach = line.run + mPlan.sidesStride();
    line.rowCount = lastInked().row - first + 1;
    line.centre = static_cast<int>(y - first);
    line.discRows = mPlan.mRows.data();
    line.samples = mRing.data() + mShape.tableAt[0];
    line.sampleStride = mShape.rowStride;
    line.slots = mShape.ringRows;
    line.slot = first % mShape.ringRows;
    line.firstColumn = mFirstBlock * kDilateBlock;
    line.columns = static_cast<int>(wholeBlocks(mColumns));
    line.pivot = mPivot;
    return line;
}

/// Joins the open rows above and below the output row, nearest first.
void DiscDilation::listRows(int64_t row, bool openOnly, DilateLine& line) {
    const InkedRow* inked = mInked.data();
    while (mInkedBelow < mInkedEnd && inked[mInkedBelow].row <= row) ++mInkedBelow;
    // All of them are in reach.
    const int y = static_cast<int>(row);
    DilateRow* listed = mRows.data();
    int above = mInkedBelow - 1, below = mInkedBelow;
    while (true) {
        while (openOnly && above >= mInkedBegin && !isOpen(inked[above])) --above;
        while (openOnly && below < mInkedEnd && !isOpen(inked[below])) ++below;
        if (above < mInkedBegin && below >= mInkedEnd) break;
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
    const int64_t y = mY++;
    if (mInkedBegin == mInkedEnd) {
        std::memset(dst, 0, static_cast<size_t>(wholeBlocks(mColumns)));
        return {0, 0};
    }
    const SolidResult result = mKernels.joinSolid(solidLine(y), mOpen.data(), dst);
    mPivot = result.pivot;
    if (result.open) gatherOpen(y, result, limit, dst);
    if (limit != nullptr) mKernels.lower(limit, mColumns, dst);
    return {result.part.begin, std::min(result.part.end, mColumns)};
}

/// Raises the row by what the solid rows leave open.
void DiscDilation::gatherOpen(int64_t y, const SolidResult& joined, const uint8_t* limit, uint8_t* dst) {
    DilateLine line{};
    listRows(y, joined.solid, line);
    line.full = joined.full;
    line.inkBefore = mInkInReach.data() + mInkMargin;
    line.reach = mShape.maxDx;
    line.inkUnits = inkUnitsOf(mShape.maxDx);
    line.width = mSpan;
    line.firstBlock = mFirstBlock;
    line.blockCount = static_cast<int>(blocksOf(mColumns));
    line.limit = limit;
    mKernels.gather(line, dst);
}

}  // namespace QxFontEffect
