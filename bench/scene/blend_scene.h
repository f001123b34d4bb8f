#pragma once

#include <cstdint>
#include <vector>

#include "pixel/QxBitmap.h"
#include "scene/masks.h"

namespace qxbench {

/// A premultiplied colour that lets some of the ground through.
constexpr uint32_t kBlendColor = 0x99661A33u;

/// Two pictures of a mask's size and the mask itself, to be blended into one another.
struct BlendScene {
    explicit BlendScene(const Mask& mask);

    void reset();
    std::vector<float> result() const { return std::vector<float>(output.pixels, output.pixels + mBefore.size()); }

    unsigned char* maskBytes() { return mask.data(); }
    QxFontEffect::ConstPlane8 maskPlane() const { return {mask.data(), width, height, width}; }
    QxFontEffect::ConstPlane32 colorPlane() const { return {colors.data(), width, height, width}; }
    int64_t pixels() const { return int64_t{width} * height; }

    int width, height;
    std::vector<uint8_t> mask;
    std::vector<uint32_t> colors;   ///< A, R, G, B from the top bit down, premultiplied: the text in a row of colours
    QxFontEffect::QxBitmap output;  ///< R, G, B, A bytes: the text moved by a few pixels, four fifths opaque

private:
    std::vector<uint8_t> mBefore;
};

}  // namespace qxbench
