#include "effect/band_heights.h"

#include <algorithm>
#include <cmath>

namespace QxFontEffect {
namespace {

// A piece's middle is at most half a diagonal away from its pixel's centre, and its ends a little farther.
constexpr float kHalfLength = 0.35f;
constexpr double kPieceReach = 0.7072 + 0.35;

/// How far the centre of a pixel lies from the edge of a half-plane that covers the part `covered` of it, towards the
/// covered side; (nx, ny) is the unit normal.
float placeOfEdge(float nx, float ny, float covered) {
    const float longer = std::max(std::fabs(nx), std::fabs(ny)), shorter = std::min(std::fabs(nx), std::fabs(ny));
    const float corner = 0.5f * (longer + shorter);
    // Up to here the edge cuts off one corner of the pixel; beyond, it leaves through opposite sides.
    const float cornerPart = 0.5f * shorter / longer;
    if (covered < cornerPart) return corner - std::sqrt(2.0f * longer * shorter * covered);
    if (covered > 1.0f - cornerPart) return std::sqrt(2.0f * longer * shorter * (1.0f - covered)) - corner;
    return (0.5f - covered) * longer;
}

OutlinePiece makePiece(int x, int y, const CoverageRows& rows, int column) {
    const uint8_t* above = rows.above() + column;
    const uint8_t* here = rows.here() + column;
    const uint8_t* below = rows.below() + column;
    constexpr float kBeside = 1.41421356f;  // neighbours at the side count more than those at the corners
    const float gx = static_cast<float>(above[1] + below[1] - above[-1] - below[-1]) +
                     kBeside * static_cast<float>(here[1] - here[-1]);
    const float gy = static_cast<float>(below[-1] + below[1] - above[-1] - above[1]) +
                     kBeside * static_cast<float>(below[0] - above[0]);
    const float length = std::sqrt(gx * gx + gy * gy);
    if (length == 0.0f) return {x, y, 1.0f, 0.0f, 0.0f, 0.0f};
    const float nx = gx / length, ny = gy / length;
    const float place = placeOfEdge(nx, ny, static_cast<float>(*here) / 255.0f);
    // The outline of full pixels runs along their border: points there are exact, and pieces would round corners off.
    return {x, y, nx, ny, place, *here == 255 ? 0.0f : kHalfLength};
}

// Beyond the band by a little, so that its ends are flat to the last bit.
float farSquared(float half) {
    return (half + 0.01f) * (half + 0.01f);
}

int reachOf(float half) {
    return static_cast<int>(std::ceil(static_cast<double>(half) + 0.01 + kPieceReach));
}

}  // namespace

BandHeights::BandHeights(const PlacedInk& ink, float half, int width, int height, const DistanceKernels& kernels)
    : mKernels(kernels),
      mInk(ink),
      mHalf(half),
      mWidth(width),
      mBlocks(distanceBlocks(width)),
      mIndex(ink, outlineRegion(ink, width, height, reachOf(half)), false, OutlineRule::BesideNone, kernels, makePiece),
      mMaxDy(std::min(reachOf(half), std::max(mIndex.region().bottom, height - mIndex.region().top))),
      mLargest(mBlocks),
      mCoverage(mBlocks, kDistanceBlock) {}

bool BandHeights::spread(int y, int distance, float* dst) {
    const double nearest = std::max(distance - kPieceReach, 0.0);
    const bool hasRow = mIndex.hasRow(y);
    bool wanted = false;
    for (int block = 0; block < mBlocks; ++block) {
        float& largest = mLargest[static_cast<size_t>(block)];
        const double left = static_cast<double>(largest) - nearest * nearest;
        if (!(left > 0.0)) continue;
        wanted = true;
        if (!hasRow) continue;
        const int64_t beside = columnsWithin(left) + 1;
        const int64_t x = int64_t{block} * kDistanceBlock;
        int count;
        const OutlinePiece* pieces = mIndex.between(y, x - beside, x + kDistanceBlock - 1 + beside, count);
        if (count != 0) largest = mKernels.spreadPieces(pieces, count, static_cast<int>(x), mY, dst + x);
    }
    return wanted;
}

void BandHeights::next(float* dst) {
    std::fill_n(dst, int64_t{mBlocks} * kDistanceBlock, farSquared(mHalf));
    std::fill_n(mLargest.data(), mBlocks, farSquared(mHalf));
    for (int distance = 0; distance <= mMaxDy; ++distance) {
        bool wanted = spread(mY - distance, distance, dst);
        if (distance != 0) wanted = spread(mY + distance, distance, dst) || wanted;
        if (!wanted) break;
    }

    std::fill_n(mCoverage.data(), mCoverage.count(), uint8_t{0});
    const int row = mY - mInk.y;
    const int from = std::max(mInk.x, 0), to = std::min(mInk.x + mInk.coverage.width, mWidth);
    if (row >= 0 && row < mInk.coverage.height && from < to)
        std::copy_n(mInk.coverage.row(row) + (from - mInk.x), to - from, mCoverage.data() + from);
    mKernels.bandHeights(mCoverage.data(), mBlocks, mHalf, dst);
    ++mY;
}

}  // namespace QxFontEffect
