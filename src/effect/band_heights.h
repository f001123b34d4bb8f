#pragma once

#include <cstdint>

#include "base/Scratch.h"
#include "effect/heights.h"
#include "effect/kernel/distance.h"
#include "effect/outline_index.h"

namespace QxFontEffect {

/// A slope that straddles the outline: the signed distance to it, negative inside, limited to `half` pixels on both
/// sides and counted from the inner end.
///
/// The outline is taken from coverage: through each of its pixels runs a straight piece, across the gradient of the
/// coverage around it and as far from the pixel's centre as a half-plane of that direction that covers as much of the
/// pixel. The distance to the nearest piece is continuous across the outline, so is the field, and slanted edges are
/// as straight as upright ones.
///
/// Source of the place within a pixel: Gustavson and Strand, Anti-aliased Euclidean distance transform.
class BandHeights : public HeightRows {
public:
    BandHeights(const PlacedInk& ink, float half, int width, int height,
                const DistanceKernels& kernels = distanceKernels());

    bool ready() const override { return mIndex && mLargest && mCoverage; }
    void next(float* dst) override;

private:
    bool spread(int y, int distance, float* dst);

    const DistanceKernels& mKernels;
    PlacedInk mInk;
    float mHalf;
    int mWidth;
    int mBlocks;
    int mY = 0;
    OutlineIndex<OutlinePiece> mIndex;
    int mMaxDy;
    Scratch<float> mLargest;
    Scratch<uint8_t> mCoverage;
};

}  // namespace QxFontEffect
