#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <vector>

#include "effect/kernel/relief_kernels.h"
#include "support/planes.h"

namespace QxFontEffect {
namespace {

using test::GuardedPlane32;
using test::GuardedPlane8;
using test::GuardedPlaneF;
using test::Rng;

std::vector<const ReliefKernels*> kernelsHere() {
    std::vector<const ReliefKernels*> all{&reliefKernelsPortable()};
    if (reliefKernelsAvx2() != nullptr) all.push_back(reliefKernelsAvx2());
    return all;
}

ReliefLight randomLight(Rng& rng) {
    const float turn = 6.28f * rng.unit(), rise = 1.57f * rng.unit();
    return {0.24f + 24.0f * rng.unit() * rng.unit(),
            std::cos(turn) * std::cos(rise),
            std::sin(turn) * std::cos(rise),
            std::sin(rise),
            rng.between(0, 255),
            rng.oneIn(3) ? 255 : rng.between(0, 255)};
}

// Heights with flat stretches at both ends of the band, slopes, and single steps.
float randomHeight(Rng& rng, float before, float top) {
    switch (rng.below(8)) {
        case 0:
            return 0.0f;
        case 1:
            return top;
        case 2:
            return top * rng.unit();
        case 3:
            return std::clamp(before + 1.0f, 0.0f, top);
        default:
            return before;
    }
}

TEST(Relief, LightOfWholeBlocksEqualsThePlainRow) {
    Rng rng(1);
    for (int round = 0; round < 600; ++round) {
        const int blocks = rng.between(1, 4), count = blocks * kReliefBlock;
        const float top = rng.oneIn(4) ? 400.0f : static_cast<float>(rng.between(1, 40));
        const ReliefBand band{top, rng.oneIn(2) ? 1.0f : 255.0f, rng.oneIn(2), rng.oneIn(2)};
        const ReliefLight light = randomLight(rng);
        GuardedPlaneF heights(count + 2, 3);
        for (int y = 0; y < 3; ++y)
            for (int x = 0; x < count + 2; ++x)
                heights.at(x, y) = round % 5 == 0 ? 0.0f : randomHeight(rng, x == 0 ? 0.0f : heights.at(x - 1, y), top);
        const float* above = heights.view().row(0) + 1;
        const float* here = heights.view().row(1) + 1;
        const float* below = heights.view().row(2) + 1;
        const float nothing[3] = {};
        FlatLight flat;
        lightReliefRow(nothing + 1, nothing + 1, nothing + 1, 1, light, band, &flat.shadow, &flat.highlight);

        GuardedPlane8 wantShadow(count, 1), wantHighlight(count, 1);
        lightReliefRow(above, here, below, count, light, band, wantShadow.view().data, wantHighlight.view().data);
        for (const ReliefKernels* kernels : kernelsHere()) {
            GuardedPlane8 shadow(count, 1, 1), highlight(count, 1, 2);
            kernels->light(above, here, below, blocks, light, band, flat, shadow.view().data, highlight.view().data);
            ASSERT_TRUE(test::samePlane(wantShadow, shadow, kernels->name, "shadow, round", round));
            ASSERT_TRUE(test::samePlane(wantHighlight, highlight, kernels->name, "highlight, round", round));
        }
    }
}

TEST(Relief, ColoursEveryPairOfMapBytes) {
    for (const float gain : {1.0f, 1.83f}) {
        const ReliefColors colors{gain, 0x12FFC001u, 0x34017FFEu};
        for (const ReliefKernels* kernels : kernelsHere())
            for (int shadow = 0; shadow < 256; ++shadow) {
                GuardedPlane8 shadows(256, 1, static_cast<uint8_t>(shadow)), highlights(256, 1);
                for (int i = 0; i < 256; ++i) highlights.at(i, 0) = static_cast<uint8_t>(i);
                GuardedPlane32 pixels(256, 1, 9);
                const bool any = kernels->color(shadows.view().data, highlights.view().data, 256 / kReliefBlock, colors,
                                                pixels.view().data);
                EXPECT_TRUE(any);
                GuardedPlane32 want(256, 1);
                for (int i = 0; i < 256; ++i) {
                    const int a = static_cast<int>(gain * static_cast<float>(i));
                    const int b = static_cast<int>(gain * static_cast<float>(shadow));
                    const uint32_t d = static_cast<uint32_t>(std::min(std::abs(a - b), 255));
                    const uint32_t c = a > b ? colors.highlight : colors.shadow;
                    want.at(i, 0) = d << 24 | (((c >> 16 & 255) + 1) * d >> 8) << 16 |
                                    (((c >> 8 & 255) + 1) * d >> 8) << 8 | ((c & 255) + 1) * d >> 8;
                }
                ASSERT_TRUE(test::samePlane(want, pixels, kernels->name, "gain", gain, "shadow", shadow));
            }
    }
    GuardedPlane8 blank(64, 1);
    GuardedPlane32 pixels(64, 1, 9), want(64, 1);
    EXPECT_FALSE(reliefKernels().color(blank.view().data, blank.view().data, 2, {1.0f, ~0u, ~0u}, pixels.view().data));
    EXPECT_SAME_PLANE(want, pixels);
}

}  // namespace
}  // namespace QxFontEffect
