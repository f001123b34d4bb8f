#include "scene/blend_scene.h"

#include <cstring>

namespace qxbench {
namespace {

// Where the ground lies against the mask, so that blank, partial and nearly full pixels meet in every combination.
constexpr int kShiftX = 9, kShiftY = 5;

uint32_t scaled(uint32_t channel, uint32_t alpha) {
    return channel * alpha / 255;
}

}  // namespace

BlendScene::BlendScene(const Mask& from)
    : width(from.width),
      height(from.height),
      mask(from.coverage),
      output(static_cast<unsigned>(from.width), static_cast<unsigned>(from.height), 4) {
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const uint32_t c = from.plane().row(y)[x];
            const uint32_t red = static_cast<uint32_t>(255 * x / width);
            colors.push_back(c << 24 | scaled(red, c) << 16 | scaled(90, c) << 8 | scaled(200, c));
            if (y < kShiftY || x < kShiftX) continue;
            const uint32_t alpha = from.plane().row(y - kShiftY)[x - kShiftX] * 4u / 5u;
            uint8_t* pixel = output.pixels + 4 * (static_cast<size_t>(y) * output.width + static_cast<size_t>(x));
            const uint32_t channels[] = {scaled(60, alpha), scaled(220, alpha), scaled(red, alpha), alpha};
            for (int k = 0; k < 4; ++k) pixel[k] = static_cast<uint8_t>(channels[k]);
        }
    mBefore.assign(output.pixels, output.pixels + 4 * pixels());
}

void BlendScene::reset() {
    std::memcpy(output.pixels, mBefore.data(), mBefore.size());
}

}  // namespace qxbench
