#pragma once

#include <cstdint>

namespace QxFontEffect::kernel {

/// The part of a placed source that lies inside its destination. Sizes below 1 mean there is none.
struct ClippedBox {
    int64_t srcX;  ///< first source column and row that is seen
    int64_t srcY;
    int64_t dstX;  ///< where it falls in the destination
    int64_t dstY;
    int64_t width;
    int64_t height;

    bool empty() const { return width <= 0 || height <= 0; }
};

/// Clips a source of `srcWidth` x `srcHeight` pixels, placed with its top-left pixel at (x, y), to a destination.
/// Exact for any 32-bit signed or unsigned arguments: the sums are taken in 64 bits.
ClippedBox clipToPlane(int64_t x, int64_t y, int64_t srcWidth, int64_t srcHeight, int64_t dstWidth, int64_t dstHeight);

}  // namespace QxFontEffect::kernel
