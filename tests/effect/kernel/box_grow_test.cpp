#include "effect/kernel/box_grow.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "effect/kernel/pad.h"
#include "support/planes.h"
#include "support/reference/glow_reference.h"

namespace QxFontEffect {
namespace {

using test::GuardedPlane8;

/// Grows a plane with every table of loops that this machine can run, and with the plain loops.
void expectGrownLikePlain(const GuardedPlane8& plane, int passes) {
    test::reference::Grey wanted(plane.width(), plane.height());
    for (int y = 0; y < wanted.height; ++y)
        for (int x = 0; x < wanted.width; ++x) wanted.at(x, y) = plane.at(x, y);
    test::reference::growByBox(wanted, passes);
    const ConstPlane8 want = {wanted.samples.data(), wanted.width, wanted.height, wanted.width};
    std::vector<const BoxGrowKernels*> kernels = {&boxGrowKernelsPortable()};
    if (boxGrowKernelsAvx2() != nullptr) kernels.push_back(boxGrowKernelsAvx2());
    for (const BoxGrowKernels* path : kernels) {
        GuardedPlane8 got = plane;
        const int64_t bytes = BoxGrowth::scratchBytes(plane.width(), plane.height(), passes);
        std::vector<uint8_t> scratch(static_cast<size_t>(bytes), 0xEE);
        growByBoxPlane8(got.view(), passes, scratch.data(), *path);
        EXPECT_SAME_PLANE(want, got, "width", wanted.width, "height", wanted.height, "passes", passes, path->name);
    }
}

TEST(BoxGrow, EqualsThePlainSumsAtEverySize) {
    test::Rng rng(77);
    for (int width = 1; width <= 67; ++width)
        for (const int height : {1, 2, 3, 4, 5, 17}) {
            GuardedPlane8 plane = test::randomCoverage(rng, width, height, 4, width & 15);
            for (int y = 0; y < height; ++y)
                for (int x = 0; x < width; ++x)
                    if (rng.oneIn(2)) plane.at(x, y) = static_cast<uint8_t>(plane.at(x, y) / 9);  // below saturation
            expectGrownLikePlain(plane, rng.oneIn(8) ? rng.between(60, 140) : rng.between(-1, 9));
        }
}

TEST(BoxGrow, SpotsThatFillBlankPlanesAndHolesThatCloseInFullOnes) {
    // Wide enough for blocks that are not computed, some of them up to the last pass.
    test::Rng rng(79);
    for (int i = 0; i < 60; ++i) {
        const int width = rng.between(100, 400), height = rng.between(3, 150);
        const uint8_t ground = rng.oneIn(2) ? 255 : 0;
        GuardedPlane8 plane(width, height, ground);
        for (int spot = rng.between(1, 3); spot > 0; --spot) {
            const int left = rng.between(0, width - 1), top = rng.between(0, height - 1);
            const int right = std::min(left + rng.between(1, 30), width),
                      bottom = std::min(top + rng.between(1, 30), height);
            const uint8_t value = rng.oneIn(2) ? rng.byte() : static_cast<uint8_t>(~ground);
            for (int y = top; y < bottom; ++y)
                for (int x = left; x < right; ++x) plane.at(x, y) = value;
        }
        expectGrownLikePlain(plane, rng.oneIn(4) ? rng.between(60, 140) : rng.between(1, 25));
    }
}

TEST(Pad, FramesAndComplements) {
    test::Rng rng(78);
    for (const int pad : {0, 1, 5}) {
        const GuardedPlane8 inside = test::randomPlane8(rng, 13, 4);
        GuardedPlane8 want(13 + 2 * pad, 4 + 2 * pad, 9), got(13 + 2 * pad, 4 + 2 * pad);
        for (int y = 0; y < 4; ++y)
            for (int x = 0; x < 13; ++x) want.at(x + pad, y + pad) = inside.at(x, y);
        padPlane8(inside.view(), pad, 9, got.view());
        EXPECT_SAME_PLANE(want, got, "pad", pad);

        for (int y = 0; y < want.height(); ++y)
            for (int x = 0; x < want.width(); ++x) want.at(x, y) = static_cast<uint8_t>(255 - want.at(x, y));
        complementPlane8(got.view());
        EXPECT_SAME_PLANE(want, got, "pad", pad);
    }
}

}  // namespace
}  // namespace QxFontEffect
