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
    test::Rng rng(77);
    for (int width = 1; width <= 67; ++width)
        for (const int height : {1, 2, 3, 4, 17}) {
            GuardedPlane8 plane = test::randomCoverage(rng, width, height, 4, width & 15);
            const int passes = rng.between(-1, 9);
            test::reference::Grey wanted(width, height);
            for (int y = 0; y < height; ++y)
                for (int x = 0; x < width; ++x) {
                    if (rng.oneIn(2)) plane.at(x, y) = static_cast<uint8_t>(plane.at(x, y) / 9);  // below saturation
                    wanted.at(x, y) = plane.at(x, y);
                }
            test::reference::growByBox(wanted, passes);
            std::vector<uint8_t> scratch(static_cast<size_t>(boxGrowScratchBytes(width)), 0xEE);
            growByBoxPlane8(plane.view(), passes, scratch.data());
            const ConstPlane8 want = {wanted.samples.data(), width, height, width};
            EXPECT_SAME_PLANE(want, plane, "width", width, "height", height, "passes", passes);
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
