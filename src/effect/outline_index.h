#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "base/Scratch.h"
#include "effect/kernel/distance.h"
#include "effect/kernel/distance_kernels.h"

namespace QxFontEffect {

/// Columns that share an entry of the index: eight marks are one word.
constexpr int kOutlineBucket = 8;

/// Columns and rows of a map that may lie outside it; the far edges lie outside the region.
struct MapRegion {
    int left, top, right, bottom;

    int width() const { return right - left; }
    int height() const { return bottom - top; }
};

/// Where distances on `reach` pixels around a map of this size can come from: the ink and the pixels beside it.
inline MapRegion outlineRegion(const PlacedInk& ink, int width, int height, int reach) {
    const auto limited = [](int64_t value, int64_t low, int64_t high) {
        return static_cast<int>(std::clamp(value, low, std::max(low, high)));
    };
    const int64_t beyond = reach;
    const int left = limited(int64_t{ink.x} - 1, -beyond, width + beyond);
    const int top = limited(int64_t{ink.y} - 1, -beyond, height + beyond);
    return {left, top, limited(int64_t{ink.x} + ink.coverage.width + 1, left, width + beyond),
            limited(int64_t{ink.y} + ink.coverage.height + 1, top, height + beyond)};
}

/// Three rows of coverage around one, with a blank pixel at both ends.
class CoverageRows {
public:
    CoverageRows(const PlacedInk& ink, const MapRegion& region)
        : mInk(ink), mRegion(region), mStride(region.width() + 2), mRows(3, mStride) {}

    explicit operator bool() const { return static_cast<bool>(mRows); }

    /// Moves to row `y`, one below the row before it or the region's first.
    void moveTo(int y) {
        if (y == mRegion.top) {
            fill(y - 1);
            fill(y);
        }
        fill(y + 1);
        mHere = y;
    }

    const uint8_t* above() const { return row(mHere - 1) + 1; }
    const uint8_t* here() const { return row(mHere) + 1; }
    const uint8_t* below() const { return row(mHere + 1) + 1; }

private:
    const uint8_t* row(int y) const { return mRows.data() + slot(y); }
    ptrdiff_t slot(int y) const { return ptrdiff_t{((y - mRegion.top + 1) % 3)} * mStride; }

    void fill(int y) {
        uint8_t* samples = mRows.data() + slot(y);
        std::memset(samples, 0, static_cast<size_t>(mStride));
        const int inkRow = y - mInk.y;
        if (inkRow < 0 || inkRow >= mInk.coverage.height) return;
        const int from = std::max(mInk.x, mRegion.left - 1);
        const int to = std::min(mInk.x + mInk.coverage.width, mRegion.right + 1);
        if (from < to)
            std::memcpy(samples + (from - mRegion.left + 1), mInk.coverage.row(inkRow) + (from - mInk.x),
                        static_cast<size_t>(to - from));
    }

    PlacedInk mInk;
    MapRegion mRegion;
    int mStride;
    int mHere = 0;
    Scratch<uint8_t> mRows;
};

/// The outline's pixels as sources of distance, row by row, with an index by columns.
template <typename Source>
class OutlineIndex {
public:
    /// @param makeSource  Source(int x, int y, const CoverageRows&, int column): column counts from the region's left.
    template <typename MakeSource>
    OutlineIndex(const PlacedInk& ink, const MapRegion& region, bool complement, OutlineRule rule,
                 const DistanceKernels& kernels, MakeSource makeSource)
        : mRegion(region),
          mBuckets((region.width() + kOutlineBucket - 1) / kOutlineBucket),
          mBefore(region.height(), int64_t{mBuckets} + 1),
          mRows(ink, region),
          mMarks(int64_t{mBuckets} * kOutlineBucket),
          mSources(count(complement, rule, kernels)) {
        if (*this) fill(complement, rule, kernels, makeSource);
    }

    explicit operator bool() const { return mBefore && mRows && mMarks && mSources; }

    const MapRegion& region() const { return mRegion; }

    bool hasRow(int y) const {
        if (y < mRegion.top || y >= mRegion.bottom) return false;
        const uint32_t* before = beforeOf(y);
        return before[mBuckets] != before[0];
    }

    /// The sources of row `y` in columns `left`..`right`, and perhaps a few beside them.
    const Source* between(int y, int64_t left, int64_t right, int& count) const {
        count = 0;
        const int64_t first = std::max<int64_t>(left - mRegion.left, 0), last = right - mRegion.left;
        if (last < 0 || first >= mRegion.width()) return nullptr;
        const uint32_t* before = beforeOf(y);
        const uint32_t begin = before[first / kOutlineBucket];
        const uint32_t end = before[std::min<int64_t>(last / kOutlineBucket + 1, mBuckets)];
        count = static_cast<int>(end - begin);
        return mSources.data() + begin;
    }

private:
    const uint32_t* beforeOf(int y) const { return mBefore.data() + int64_t{y - mRegion.top} * (mBuckets + 1); }

    void mark(int y, bool complement, OutlineRule rule, const DistanceKernels& kernels) {
        mRows.moveTo(y);
        kernels.markOutline(mRows.above(), mRows.here(), mRows.below(), mRegion.width(), complement, rule,
                            mMarks.data());
    }

    int64_t count(bool complement, OutlineRule rule, const DistanceKernels& kernels) {
        if (!mBefore || !mRows || !mMarks) return -1;
        std::memset(mMarks.data(), 0, mMarks.count());
        int64_t total = 0;
        for (int y = mRegion.top; y < mRegion.bottom; ++y) {
            mark(y, complement, rule, kernels);
            for (int x = 0; x < mRegion.width(); ++x) total += mMarks[static_cast<size_t>(x)];
        }
        return total;
    }

    template <typename MakeSource>
    void fill(bool complement, OutlineRule rule, const DistanceKernels& kernels, MakeSource makeSource) {
        uint32_t found = 0;
        for (int y = mRegion.top; y < mRegion.bottom; ++y) {
            mark(y, complement, rule, kernels);
            uint32_t* before = mBefore.data() + int64_t{y - mRegion.top} * (mBuckets + 1);
            for (int bucket = 0; bucket < mBuckets; ++bucket) {
                before[bucket] = found;
                found = fillBucket(y, bucket * kOutlineBucket, found, makeSource);
            }
            before[mBuckets] = found;
        }
    }

    template <typename MakeSource>
    uint32_t fillBucket(int y, int column, uint32_t found, MakeSource makeSource) {
        uint64_t marks;
        static_assert(sizeof marks == kOutlineBucket, "a bucket is a word");
        std::memcpy(&marks, mMarks.data() + column, sizeof marks);
        for (int i = 0; marks != 0; ++i, marks >>= 8)
            if ((marks & 255) != 0) mSources[found++] = makeSource(mRegion.left + column + i, y, mRows, column + i);
        return found;
    }

    MapRegion mRegion;
    int mBuckets;
    Scratch<uint32_t> mBefore;
    CoverageRows mRows;
    Scratch<uint8_t> mMarks;
    Scratch<Source> mSources;
};

}  // namespace QxFontEffect
