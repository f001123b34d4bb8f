#include "effect/kernel/ramp_blend.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "effect/kernel/color_ramp.h"
#include "pixel/QxBlender.h"
#include "support/planes.h"

namespace QxFontEffect {
namespace {

using test::Rng;

/// Pixels in stretches that are empty, opaque, or anything.
std::vector<uint32_t> randomPixels(Rng& rng, size_t count) {
    std::vector<uint32_t> pixels;
    while (pixels.size() < count) {
        const int kind = rng.between(0, 2);
        for (int left = rng.between(1, 40); left > 0; --left)
            pixels.push_back(kind == 0 ? 0 : kind == 1 ? rng.next32() | 0xFF000000u : rng.next32());
    }
    pixels.resize(count);
    return pixels;
}

TEST(RampBlend, EqualsLookedUpColoursDrawnBeneath) {
    std::vector<const RampBlendKernels*> kernels = {&rampBlendKernelsPortable()};
    if (rampBlendKernelsAvx2() != nullptr) kernels.push_back(rampBlendKernelsAvx2());
    Rng rng(91);
    uint32_t colors[256] = {}, pixels[256] = {};
    for (int i = 1; i < 256; ++i) {
        // Some of them invisible, some opaque.
        colors[i] = premultiplyColor(i % 9 == 0 ? 0x00FFFFFFu : i % 7 == 0 ? rng.next32() | 0xFF000000u : rng.next32());
        const uint8_t bytes[4] = {static_cast<uint8_t>(colors[i] >> 16), static_cast<uint8_t>(colors[i] >> 8),
                                  static_cast<uint8_t>(colors[i]), static_cast<uint8_t>(colors[i] >> 24)};
        std::memcpy(pixels + i, bytes, sizeof bytes);
    }
    for (unsigned width = 1; width <= 67; ++width)
        for (int offset = 0; offset < 16; ++offset) {
            const auto from = [&](auto& row) { return row.begin() + offset; };
            // Guard pixels stand on either side.
            const std::vector<uint32_t> before = randomPixels(rng, width + 32);
            std::vector<uint8_t> grey(width + 16);
            for (uint8_t& value : grey) value = rng.oneIn(3) ? uint8_t{0} : rng.byte();
            if (rng.oneIn(4)) std::fill(grey.begin(), grey.end(), uint8_t{0});

            std::vector<uint32_t> looked(width), want = before;
            for (unsigned i = 0; i < width; ++i) looked[i] = colors[*(from(grey) + i)];
            QxBitmap picture(width, 1, 4);
            std::memcpy(picture.pixels, &*from(want), 4 * width);
            QxBlender::drawBitmapBlend32(0, 0, &picture, looked.data(), static_cast<int>(width), 1,
                                         static_cast<int>(width), QXE_BLEND_DST_OVER);
            std::memcpy(&*from(want), picture.pixels, 4 * width);
            for (const RampBlendKernels* path : kernels) {
                std::vector<uint32_t> got = before;
                path->row(&*from(grey), pixels, reinterpret_cast<uint8_t*>(&*from(got)), static_cast<ptrdiff_t>(width));
                ASSERT_EQ(want, got) << width << " " << offset << " " << path->name;
            }
        }
}

}  // namespace
}  // namespace QxFontEffect
