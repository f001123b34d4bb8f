#pragma once

#include "SkImageInfo.h"

/// A description laid over pixels that somebody else owns. Copies look at the same pixels.
class SkBitmap {
public:
    /// Looks at `pixels`, which must outlive the bitmap and every canvas on it.
    ///
    /// @param rowBytes  distance of two rows in bytes, at least a row of pixels.
    /// @return false, with the bitmap then empty, for a negative side, an unknown format, rows that overlap or a
    ///         picture whose bytes cannot be counted. A side of 0 is fine; drawing then does nothing.
    bool installPixels(const SkImageInfo& info, void* pixels, size_t rowBytes);

    const SkImageInfo& info() const { return mInfo; }
    int width() const { return mInfo.width(); }
    int height() const { return mInfo.height(); }
    SkColorType colorType() const { return mInfo.colorType(); }
    SkAlphaType alphaType() const { return mInfo.alphaType(); }
    size_t rowBytes() const { return mRowBytes; }
    void* getPixels() const { return mPixels; }
    bool drawsNothing() const { return mPixels == nullptr || width() <= 0 || height() <= 0; }

    /// First byte of a row; only for a bitmap that draws something and 0 <= y < height().
    uint8_t* row(int y) const { return static_cast<uint8_t*>(mPixels) + static_cast<size_t>(y) * mRowBytes; }

private:
    SkImageInfo mInfo;
    void* mPixels = nullptr;
    size_t mRowBytes = 0;
};
