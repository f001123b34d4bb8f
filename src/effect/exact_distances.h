#pragma once

#include <cstdint>

#include "base/Scratch.h"
#include "effect/heights.h"
#include "effect/kernel/distance.h"
#include "effect/outline_index.h"

namespace QxFontEffect {

/// Exact distances from the pixels that have any coverage, or from those that have none: 0 there, and elsewhere the
/// fast square root of the squared distance, up to `radius`.
class ExactDistances final : public HeightRows {
public:
    /// @param radius  up to kMaxSearchRadius.
    ExactDistances(const PlacedInk& ink, bool inside, int radius, int width, int height,
                   const DistanceKernels& kernels = distanceKernels());

    bool ready() const override { return mRuns && mSpare && mSquares && mLeast; }
    void next(float* dst) override;

private:
    void makeRuns(const PlacedInk& ink, bool inside);
    uint8_t* runsOf(int y) { return mRuns.data() + int64_t{y} * mColumns.width(); }

    const DistanceKernels& mKernels;
    int mRadius;
    int mHeight;
    MapRegion mColumns;  // whose runs are kept: those of the ink
    int mReach;          // of the search, in blocks
    int mBlocks;         // of a row
    int mY = 0;
    Scratch<uint8_t> mRuns;
    Scratch<uint8_t> mSpare;  // two rows of runs outside the map
    Scratch<uint16_t> mSquares;
    Scratch<uint16_t> mLeast;  // square of each block
};

/// The same distances for bands and maps that are too large for it: the plain transform, which rounds where numbers
/// no longer fit a float.
class PlainDistances final : public HeightRows {
public:
    PlainDistances(const PlacedInk& ink, bool inside, int radius, int width, int height);

    bool ready() const override { return mMap && mScratch; }
    void next(float* dst) override;

private:
    int mWidth;
    int mY = 0;
    Scratch<float> mMap;
    Scratch<uint8_t> mScratch;
};

}  // namespace QxFontEffect
