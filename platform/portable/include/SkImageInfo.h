#pragma once

#include <utility>

#include "SkColorSpace.h"
#include "SkTypes.h"

enum SkColorType : int {
    kUnknown_SkColorType = 0,
    kAlpha_8_SkColorType = 1,
    /// Bytes in memory: R, G, B, A.
    kRGBA_8888_SkColorType = 4,
};

enum SkAlphaType : int {
    kUnknown_SkAlphaType = 0,
    kOpaque_SkAlphaType = 1,
    kPremul_SkAlphaType = 2,
    kUnpremul_SkAlphaType = 3,
};

/// What a block of pixels is: size, format, meaning of its colours.
class SkImageInfo {
public:
    SkImageInfo() = default;

    static SkImageInfo Make(int width, int height, SkColorType colorType, SkAlphaType alphaType,
                            sk_sp<SkColorSpace> colorSpace = nullptr) {
        SkImageInfo info;
        info.mWidth = width;
        info.mHeight = height;
        info.mColorType = colorType;
        info.mAlphaType = alphaType;
        info.mColorSpace = std::move(colorSpace);
        return info;
    }

    int width() const { return mWidth; }
    int height() const { return mHeight; }
    SkColorType colorType() const { return mColorType; }
    SkAlphaType alphaType() const { return mAlphaType; }
    SkColorSpace* colorSpace() const { return mColorSpace.get(); }

    /// 0 for the unknown type.
    int bytesPerPixel() const {
        return mColorType == kRGBA_8888_SkColorType ? 4 : mColorType == kAlpha_8_SkColorType ? 1 : 0;
    }

private:
    int mWidth = 0;
    int mHeight = 0;
    SkColorType mColorType = kUnknown_SkColorType;
    SkAlphaType mAlphaType = kUnknown_SkAlphaType;
    sk_sp<SkColorSpace> mColorSpace;
};
