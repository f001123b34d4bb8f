#include "effect/exact_distances.h"

#include <algorithm>
#include <cstring>

namespace QxFontEffect {
namespace {

/// The columns of the ink that a search of `radius` on the map can see, and all rows that their runs depend on.
MapRegion inkRegion(const PlacedInk& ink, int width, int height, int radius) {
    const MapRegion beside = outlineRegion(ink, width, height, radius);
    const int left = std::max(beside.left, ink.x), right = std::min(beside.right, ink.x + ink.coverage.width);
    const int top = std::max(beside.top, ink.y), bottom = std::min(beside.bottom, ink.y + ink.coverage.height);
    return {left, top, std::max(left, right), std::max(top, bottom)};
}

}  // namespace

ExactDistances::ExactDistances(const PlacedInk& ink, bool inside, int radius, int width, int height,
                               const DistanceKernels& kernels)
    : mKernels(kernels),
      mRadius(radius),
      mHeight(height),
      mColumns(inkRegion(ink, width, height, radius)),
      mReach(distanceBlocks(radius)),
      mBlocks(distanceBlocks(width)),
      mRuns(mColumns.width(), height),
      mSpare(2, mColumns.width()),
      mSquares(int64_t{mBlocks} + 2 * int64_t{mReach}, kDistanceBlock),
      mLeast(int64_t{mBlocks} + 2 * int64_t{mReach}) {
    if (!ready()) return;
    makeRuns(ink, inside);
    // What is not ink, left and right of it, is all seeds or none.
    const uint16_t beside = static_cast<uint16_t>(inside ? 0 : radius * radius + 1);
    std::fill_n(mSquares.data(), mSquares.count(), beside);
}

void ExactDistances::makeRuns(const PlacedInk& ink, bool inside) {
    const int count = mColumns.width();
    const auto coverageOf = [&](int y) -> const uint8_t* {
        const int row = y - ink.y;
        if (row < 0 || row >= ink.coverage.height) return nullptr;
        return ink.coverage.row(row) + (mColumns.left - ink.x);
    };
    const auto grow = [&](int y, const uint8_t* before, uint8_t* runs) {
        const uint8_t* coverage = coverageOf(y);
        if (coverage == nullptr && inside)
            std::memset(runs, 0, static_cast<size_t>(count));
        else
            mKernels.growRuns(coverage, inside, count, before, runs);
    };

    // Rows outside the map count as far as a run can be told from a longer one.
    uint8_t* spare[2] = {mSpare.data(), mSpare.data() + count};
    std::memset(spare[0], inside ? 0 : 255, static_cast<size_t>(count));
    for (int y = mColumns.top; y < std::min(mColumns.bottom, 0); ++y, std::swap(spare[0], spare[1]))
        grow(y, spare[0], spare[1]);
    for (int y = std::max(mColumns.bottom, -mRadius); y < 0; ++y, std::swap(spare[0], spare[1]))
        grow(y, spare[0], spare[1]);
    const uint8_t* before = spare[0];
    for (int y = 0; y < mHeight; before = runsOf(y++)) grow(y, before, runsOf(y));

    std::memset(spare[0], inside ? 0 : 255, static_cast<size_t>(count));
    for (int y = std::min(std::max(mColumns.bottom, mHeight), mHeight + mRadius) - 1; y >= mHeight;
         --y, std::swap(spare[0], spare[1]))
        grow(y, spare[0], spare[1]);
    const uint8_t* after = spare[0];
    for (int y = mHeight - 1; y >= 0; after = runsOf(y--)) mKernels.joinRuns(after, count, runsOf(y));
}

void ExactDistances::next(float* dst) {
    uint16_t* squares = mSquares.data() + int64_t{mReach} * kDistanceBlock;
    mKernels.squareRuns(runsOf(mY), mColumns.width(), mRadius, squares + mColumns.left);
    mKernels.leastOfBlocks(mSquares.data(), mBlocks + 2 * mReach, mLeast.data());
    mKernels.searchRow(squares, mLeast.data() + mReach, mBlocks, mRadius, dst);
    ++mY;
}

PlainDistances::PlainDistances(const PlacedInk& ink, bool inside, int radius, int width, int height)
    : mWidth(width), mMap(width, height), mScratch(exactDistanceScratchBytes(width, height)) {
    if (ready()) exactDistances(ink, inside, radius, mScratch.data(), {mMap.data(), width, height, width});
}

void PlainDistances::next(float* dst) {
    std::copy_n(mMap.data() + int64_t{mY++} * mWidth, mWidth, dst);
}

}  // namespace QxFontEffect
