#include "effect/disc_dilation_small.h"

#include <algorithm>
#include <cstring>

#include "effect/kernel/disc_dilate.h"

namespace QxFontEffect {
namespace {

// What a row of this many columns of output needs stays within the nearest cache.
constexpr int64_t kTileColumns = 1024;

/// Columns of equal tiles about as wide as that: a narrow one at the end would cost as many rows as the others.
int64_t tileColumns(int64_t columns) {
    const int64_t tiles = std::max<int64_t>((columns + kTileColumns / 2) / kTileColumns, 1);
    return (columns + tiles - 1) / tiles;
}

SmallDisc smallDisc(float radius) {
    SmallDisc disc;
    disc.reach = discReach(radius);
    for (int column = 0; column <= disc.reach; ++column)
        for (int row = 0; row <= disc.reach; ++row)
            std::memset(disc.loss[column][row], 255 - discCell(radius, row, column), kSmallUnit);
    return disc;
}

}  // namespace

bool SmallDiscPlan::suits(float radius) {
    const int reach = discReach(radius);
    return reach >= 0 && reach <= kMaxSmallReach;
}

SmallDiscPlan::SmallDiscPlan(float radius, int areaWidth, int areaHeight, const DilateRange& out)
    : mDisc(smallDisc(radius)), mRingRows(std::min(2 * mDisc.reach + 1, areaHeight)) {
    if (!canDilate(areaWidth, areaHeight, out)) return;
    const int64_t units = (tileColumns(out.x1 - out.x0) + kSmallUnit - 1) / kSmallUnit;
    mTileWidth = static_cast<int>(units * kSmallUnit);
}

SmallDiscDilation::SmallDiscDilation(const SmallDiscPlan& plan, const DilateArea& area, SmallSource source,
                                     const DilateKernels& kernels)
    : mPlan(plan),
      mArea(area),
      mSource(source),
      mKernels(kernels),
      mSourceUnits(plan.mTileWidth / kSmallUnit + kUnitsBefore + kUnitsBehind),
      mStride(mSourceUnits * kSmallUnit),
      mMarkStride(mSourceUnits + kMarkSlack),
      mRing(Scratch<uint8_t>::zeroed(plan.mRingRows + 1, mStride)),
      mClosedRow(mStride),
      mInside(mStride),
      mMarks(Scratch<uint8_t>::zeroed(plan.mRingRows + 1, mMarkStride)),
      mWork(2, mMarkStride),
      mColumnRows(int64_t{source == SmallSource::Both ? 2 : 1} * (plan.mDisc.reach + 1), mStride) {
    if (mClosedRow) std::memset(mClosedRow.data(), 255, mClosedRow.count());
}

/// The place of an area column in the source rows of the tile, or of the nearest that they have.
size_t SmallDiscDilation::inSource(int64_t column) const {
    return static_cast<size_t>(std::clamp<int64_t>(column - mLeft, 0, mStride));
}

void SmallDiscDilation::start(int64_t x0, int64_t x1, int64_t y0) {
    mColumns = static_cast<int>(x1 - x0);
    mLeft = x0 - int64_t{kUnitsBefore} * kSmallUnit;
    mY = y0;
    mEntered = mLeaving = static_cast<int>(std::clamp<int64_t>(y0 - mPlan.mDisc.reach, 0, mArea.height));
    std::memset(mInside.data(), 0, mInside.count());
    std::memset(mInside.data() + inSource(0), 255, inSource(mArea.width) - inSource(0));
}

void SmallDiscDilation::enterRow(int row) {
    const int slot = row % mPlan.mRingRows;
    uint8_t* samples = samplesIn(slot);
    const int inkRow = row - mArea.inkY;
    const bool inked = inkRow >= 0 && inkRow < mArea.ink.height;
    const size_t from = inked ? inSource(mArea.inkX) : 0;
    const size_t to = inked ? inSource(int64_t{mArea.inkX} + mArea.ink.width) : 0;
    std::memset(samples, 0, from);
    if (from < to)
        std::memcpy(samples + from, mArea.ink.row(inkRow) + (mLeft + static_cast<int64_t>(from) - mArea.inkX),
                    to - from);
    std::memset(samples + to, 0, static_cast<size_t>(mStride) - to);
    mKernels.markSmall(mSource, samples, mInside.data(), mSourceUnits, mPlan.mDisc.reach, marksIn(slot));
}

DilatedPart SmallDiscDilation::nextRow(uint8_t* dst) {
    const int reach = mPlan.mDisc.reach, ring = mPlan.mRingRows;
    while (mEntered < mArea.height && mEntered <= mY + reach) enterRow(mEntered++);
    while (mLeaving < mEntered && mLeaving < mY - reach) ++mLeaving;

    const uint8_t *rows[2 * kMaxSmallReach + 1], *closed[2 * kMaxSmallReach + 1], *marks[2 * kMaxSmallReach + 1];
    std::fill_n(rows, 2 * reach + 1, samplesIn(ring));
    std::fill_n(closed, 2 * reach + 1, mClosedRow.data());
    std::fill_n(marks, 2 * reach + 1, marksIn(ring));
    int slot = mLeaving % ring;
    for (int row = mLeaving; row < mEntered; ++row) {
        const int64_t i = row - mY + reach;
        rows[i] = closed[i] = samplesIn(slot);
        marks[i] = marksIn(slot);
        if (++slot == ring) slot = 0;
    }
    ++mY;
    const SmallLine line{&mPlan.mDisc,
                         mSource,
                         rows + reach,
                         closed + reach,
                         marks + reach,
                         mInside.data(),
                         (mColumns + kSmallUnit - 1) / kSmallUnit,
                         mColumnRows.data(),
                         mStride,
                         mWork.data(),
                         mWork.data() + mMarkStride};
    const DilatedPart part = mKernels.gatherSmall(line, dst);
    return {part.begin, std::min(part.end, mColumns)};
}

}  // namespace QxFontEffect
