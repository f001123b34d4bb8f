#include "effect/kernel/box_grow.h"

#include <gtest/gtest.h>

#include <vector>

#include "effect/kernel/pad.h"
#include "support/planes.h"
#include "support/reference/glow_reference.h"

namespace QxFontEffect {
namespace {

using test::GuardedPlane8;

TEST(BoxGrow, EqualsThePlainSumsAtEverySize) {
    std::vector<const BoxGrowKernels*> kernels = {&boxGrowKernelsPortable()};
    if (boxGrowKernelsAvx2() != nullptr) kernels.push_back(boxGrowKernelsAvx2());
    test::Rng rng(77);
    for (int width = 1; width <= 67; ++width)
        for (const int height : {1, 2, 3, 4, 5, 17}) {
            GuardedPlane8 plane = test::randomCoverage(rng, width, height, 4, width & 15);
            const int passes = rng.oneIn(8) ? rng.between(60, 140) : rng.between(-1, 9);
            test::reference::Grey wanted(width, height);
            for (int y = 0; y < height; ++y)
                for (int x = 0; x < width; ++x) {
                    if (rng.oneIn(2)) plane.at(x, y) = static_cast<uint8_t>(plane.at(x, y) / 9);  // below saturation
                    wanted.at(x, y) = plane.at(x, y);
                }
            test::reference::growByBox(wanted, passes);
            const ConstPlane8 want = {wanted.samples.data(), width, height, width};
            for (const BoxGrowKernels* path : kernels) {
                GuardedPlane8 got = plane;
                std::vector<uint8_t> scratch(static_cast<size_t>(boxGrowScratchBytes(width, passes)), 0xEE);
                growByBoxPlane8(got.view(), passes, scratch.data(), *path);
                EXPECT_SAME_PLANE(want, got, "width", width, "height", height, "passes", passes, path->name);
            }
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
