#pragma once

#include <cstdint>

#include "base/Scratch.h"
#include "effect/heights.h"
#include "effect/kernel/distance.h"
#include "effect/outline_index.h"

namespace QxFontEffect {

/// Rounded roots of squared distances: of dy^2 + dx^2 for whole dy and dx.
class RootTable {
public:
    RootTable(int64_t maxDy, int64_t maxDx);

    explicit operator bool() const { return static_cast<bool>(mRoots); }

    /// The row of dy, at dx = 0; readable for maxDx to either side.
    const float* rowOf(int dy) const { return mRoots.data() + dy * mStride + mMiddle; }

private:
    int64_t mMiddle, mStride;
    Scratch<float> mRoots;
};

/// The offset of a pixel's centre from the outline for each value of coverage, or of its complement.
struct OutlineOffsets {
    OutlineOffsets(const DistanceKernels& kernels, bool complement);
    float ofCoverage[256];
};

/// Distances from the outline as the coverage tells where inside a pixel it lies, up to `radius`: 0 where coverage is
/// full, 1 - coverage where it is partial, and from there on the rounded distance to the pixels without any. With
/// `inside` from the complement of the coverage.
///
/// What a pixel gets is the least over all pixels below 1, but only those on the outline can be the least: a full pixel
/// among full pixels has one beside it that is nearer to whatever lies beyond. There are two ways to find it.
/// `NearOutlineDistances` lets every pixel of the outline write to all pixels within the radius, which is cheap as long
/// as these are few; `FarOutlineDistances` lets every pixel ask, nearest rows first, as long as there can be nearer
/// ones.
class NearOutlineDistances final : public HeightRows {
public:
    /// From here on the other way is faster.
    static constexpr int kMaxRadius = 32;

    NearOutlineDistances(const PlacedInk& ink, bool inside, int radius, int width, int height,
                         const DistanceKernels& kernels = distanceKernels());

    bool ready() const override { return mCoverage && mMarks && mRing && mSources && mRoots; }
    void next(float* dst) override;

private:
    void startRows(int last);
    void scatterFrom(int y);
    int listSources(int y);
    float* rowOf(int y) { return mRing.data() + (y % mRingRows) * mStride; }

    const DistanceKernels& mKernels;
    PlacedInk mInk;
    bool mInside;
    int mRadius;
    int mWidth, mHeight;
    MapRegion mRegion;
    int mY = 0;
    int mStarted = 0;  // rows of the map that are in the ring or were
    int mScattered;    // next row to scatter from
    int mRingRows;
    ptrdiff_t mStride;
    OutlineOffsets mOffsets;
    CoverageRows mCoverage;
    Scratch<uint8_t> mMarks;
    Scratch<float> mRing;
    Scratch<OutlineSource> mSources;  // of one row
    RootTable mRoots;
};

/// See NearOutlineDistances.
class FarOutlineDistances final : public HeightRows {
public:
    FarOutlineDistances(const PlacedInk& ink, bool inside, int radius, int width, int height,
                        const DistanceKernels& kernels = distanceKernels());

    bool ready() const override { return mIndex && mRoots && mLargest; }
    void next(float* dst) override;

private:
    bool spread(int y, int distance, float* dst);

    const DistanceKernels& mKernels;
    PlacedInk mInk;
    bool mInside;
    float mFar;
    int mWidth;
    int mBlocks;
    int mY = 0;
    OutlineIndex<OutlineSource> mIndex;
    int mMaxDy;
    RootTable mRoots;
    Scratch<float> mLargest;
};

}  // namespace QxFontEffect
