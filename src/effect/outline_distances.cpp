#include "effect/outline_distances.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "effect/kernel/sqrt_table.h"

namespace QxFontEffect {
namespace {

/// A row length that is an odd number of cache lines: rows then lie at different places of a page, and a processor does
/// not take a store to one for a store to another.
ptrdiff_t oddLines(ptrdiff_t floats) {
    constexpr ptrdiff_t kLine = 16;
    return (roundedUp(floats, kLine) / kLine | 1) * kLine;
}

/// A row of outline distances before anything is spread. @param dst  the width, rounded up to blocks.
void startRow(const DistanceKernels& kernels, const PlacedInk& ink, bool inside, int y, int width, float far,
              float* dst) {
    std::fill_n(dst, distanceBlocks(width) * ptrdiff_t{kDistanceBlock}, inside ? 0.0f : far);
    const int row = y - ink.y;
    const int from = std::max(ink.x, 0), to = std::min(ink.x + ink.coverage.width, width);
    if (row < 0 || row >= ink.coverage.height || from >= to) return;
    kernels.startRow(ink.coverage.row(row) + (from - ink.x), inside, to - from, far, dst + from);
}

}  // namespace

OutlineOffsets::OutlineOffsets(const DistanceKernels& kernels, bool complement) {
    uint8_t values[256];
    for (int i = 0; i < 256; ++i) values[i] = static_cast<uint8_t>(i);
    kernels.startRow(values, complement, 256, 0.0f, ofCoverage);
}

RootTable::RootTable(int64_t maxDy, int64_t maxDx)
    : mMiddle(maxDx), mStride(2 * maxDx + 1), mRoots(maxDy + 1, 2 * maxDx + 1) {
    if (!mRoots) return;
    for (int64_t dy = 0; dy <= maxDy; ++dy) {
        float* middle = mRoots.data() + dy * mStride + mMiddle;
        for (int64_t dx = 0; dx <= maxDx; ++dx)
            middle[dx] = middle[-dx] =
                roundedIntSqrt(static_cast<int32_t>(std::min<int64_t>(dy * dy + dx * dx, INT32_MAX)));
    }
}

NearOutlineDistances::NearOutlineDistances(const PlacedInk& ink, bool inside, int radius, int width, int height,
                                           const DistanceKernels& kernels)
    : mKernels(kernels),
      mInk(ink),
      mInside(inside),
      mRadius(radius),
      mWidth(width),
      mHeight(height),
      mRegion(outlineRegion(ink, width, height, radius)),
      mScattered(mRegion.top),
      mRingRows(2 * radius + 1),
      mStride(oddLines((distanceBlocks(width) + 1) * ptrdiff_t{kDistanceBlock})),
      mOffsets(kernels, inside),
      mCoverage(ink, mRegion),
      mMarks(roundedUp(mRegion.width(), kOutlineBucket)),
      mRing(mRingRows, mStride),
      mSources(mRegion.width()),
      mRoots(radius, radius + kDistanceBlock) {
    if (ready()) std::memset(mMarks.data(), 0, mMarks.count());
}

int NearOutlineDistances::listSources(int y) {
    mCoverage.moveTo(y);
    mKernels.markOutline(mCoverage.above(), mCoverage.here(), mCoverage.below(), mRegion.width(), mInside,
                         OutlineRule::BesideLess, mMarks.data());
    int count = 0;
    for (int x = 0; x < mRegion.width(); x += kOutlineBucket) {
        uint64_t marks;
        std::memcpy(&marks, mMarks.data() + x, sizeof marks);
        for (int i = x; marks != 0; ++i, marks >>= 8)
            if ((marks & 255) != 0)
                mSources[static_cast<size_t>(count++)] = {mRegion.left + i, mOffsets.ofCoverage[mCoverage.here()[i]]};
    }
    return count;
}

void NearOutlineDistances::scatterFrom(int y) {
    const int count = listSources(y);
    if (count == 0) return;
    ScatterRow rows[2 * kMaxRadius + 1];
    int rowCount = 0;
    for (int row = std::max(y - mRadius, 0); row <= std::min(y + mRadius, mHeight - 1); ++row) {
        const int dy = std::abs(row - y);
        const int reach = static_cast<int>(std::sqrt(static_cast<double>(mRadius * mRadius - dy * dy)));
        rows[rowCount++] = {rowOf(row), mRoots.rowOf(dy), reach};
    }
    mKernels.scatterSources(mSources.data(), count, rows, rowCount, mWidth);
}

void NearOutlineDistances::next(float* dst) {
    // A row is done once the last row of sources within the radius has written to it.
    for (; mScattered < mRegion.bottom && mScattered <= mY + mRadius; ++mScattered) {
        startRows(mScattered + mRadius);
        scatterFrom(mScattered);
    }
    startRows(mY);
    std::copy_n(rowOf(mY), distanceBlocks(mWidth) * ptrdiff_t{kDistanceBlock}, dst);
    ++mY;
}

void NearOutlineDistances::startRows(int last) {
    const float far = static_cast<float>(mRadius);
    for (; mStarted <= std::min(last, mHeight - 1); ++mStarted)
        startRow(mKernels, mInk, mInside, mStarted, mWidth, far, rowOf(mStarted));
}

FarOutlineDistances::FarOutlineDistances(const PlacedInk& ink, bool inside, int radius, int width, int height,
                                         const DistanceKernels& kernels)
    : mKernels(kernels),
      mInk(ink),
      mInside(inside),
      mFar(static_cast<float>(radius)),
      mWidth(width),
      mBlocks(distanceBlocks(width)),
      mIndex(ink, outlineRegion(ink, width, height, radius), inside, OutlineRule::BesideLess, kernels,
             [offsets = OutlineOffsets(kernels, inside)](int x, int, const CoverageRows& rows, int column) {
                 return OutlineSource{x, offsets.ofCoverage[rows.here()[column]]};
             }),
      mMaxDy(std::min(radius, std::max(mIndex.region().bottom, height - mIndex.region().top))),
      // Blocks and buckets are looked at as a whole: a few columns more than the farthest that counts.
      mRoots(mMaxDy, std::min<int64_t>(radius, std::max(mIndex.region().right, width - mIndex.region().left)) +
                         int64_t{3} * kDistanceBlock),
      mLargest(mBlocks) {}

void FarOutlineDistances::next(float* dst) {
    startRow(mKernels, mInk, mInside, mY, mWidth, mFar, dst);
    for (int block = 0; block < mBlocks; ++block)
        mLargest[static_cast<size_t>(block)] = mKernels.largest(dst + int64_t{block} * kDistanceBlock);
    for (int distance = 0; distance <= mMaxDy; ++distance) {
        bool wanted = spread(mY - distance, distance, dst);
        if (distance != 0) wanted = spread(mY + distance, distance, dst) || wanted;
        if (!wanted) break;
    }
    ++mY;
}

/// Spreads from one row of sources. Returns false when no block has a distance left that sources this far away could
/// lower.
bool FarOutlineDistances::spread(int y, int distance, float* dst) {
    const float* roots = mRoots.rowOf(distance);
    const bool hasRow = mIndex.hasRow(y);
    bool wanted = false;
    for (int block = 0; block < mBlocks; ++block) {
        float& largest = mLargest[static_cast<size_t>(block)];
        if (!(largest > roots[0])) continue;
        wanted = true;
        if (!hasRow) continue;
        // Roots are off by half a thousandth at most.
        const double farthest = static_cast<double>(largest) + 0.001;
        const int64_t beside = columnsWithin(farthest * farthest - static_cast<double>(distance) * distance);
        const int64_t x = int64_t{block} * kDistanceBlock;
        int count;
        const OutlineSource* sources = mIndex.between(y, x - beside, x + kDistanceBlock - 1 + beside, count);
        if (count != 0) largest = mKernels.spreadSources(sources, count, roots, static_cast<int>(x), dst + x);
    }
    return wanted;
}

}  // namespace QxFontEffect
