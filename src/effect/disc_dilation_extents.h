#pragma once

#include <cstdint>

#include "base/Scratch.h"
#include "effect/kernel/disc_dilate_solid.h"

namespace QxFontEffect {

/// Where the source rows in reach have ink, an array for each measure, so that many rows are looked at together.
///
/// A ring that holds every row twice: whichever is the first in reach, the others follow it without a break, and blank
/// ones follow these.
class InkExtents {
public:
    /// @param rows  in reach at a time, at most.
    explicit InkExtents(int rows)
        : mSlots(int64_t{rows} + kRowsTogether - 1), mStride(2 * mSlots), mValues(mStride, kMeasures + 1) {}

    explicit operator bool() const { return bool(mValues); }

    void clear() {
        for (int64_t slot = 0; slot < mSlots; ++slot) put(slot, kBlankExtent);
        mSolid = 0;
    }
    void enter(int row, const InkExtent& extent) {
        put(row % mSlots, extent);
        mSolid += extent.gap != kNeverSolid;
    }
    /// Adds edges that are covered.
    void cover(int row, int32_t edges) {
        int32_t* covers = mValues.data() + kMeasures * mStride + row % mSlots;
        covers[0] |= edges;
        covers[mSlots] |= edges;
    }
    void leave(int row) {
        mSolid -= mValues[static_cast<size_t>(kGap * mStride + row % mSlots)] != kNeverSolid;
        put(row % mSlots, kBlankExtent);
    }

    /// Gives the line the extents of the rows from `row` on.
    void show(int row, SolidLine& line) const {
        const int32_t* first = mValues.data() + row % mSlots;
        line.inkBegin = first;
        line.inkEnd = first + mStride;
        line.fullBegin = first + 2 * mStride;
        line.fullEnd = first + 3 * mStride;
        line.gap = first + kGap * mStride;
        line.anySolid = mSolid != 0;
        line.covers = first + kMeasures * mStride;
    }

private:
    static constexpr int kMeasures = 5, kGap = 4;

    void put(int64_t slot, const InkExtent& extent) {
        const int32_t measures[kMeasures] = {extent.inkBegin, extent.inkEnd, extent.fullBegin, extent.fullEnd,
                                             extent.gap};
        int32_t* to = mValues.data() + slot;
        for (int i = 0; i < kMeasures; ++i, to += mStride) to[0] = to[mSlots] = measures[i];
        to[0] = to[mSlots] = 0;
    }

    int64_t mSlots, mStride;
    Scratch<int32_t> mValues;
    int mSolid = 0;  // rows that can be solid
};

}  // namespace QxFontEffect
