#include "effect/disc_dilation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "effect/dilation_cases.h"
#include "effect/kernel/disc_dilate.h"
#include "support/planes.h"

namespace QxFontEffect {
namespace {

using test::GuardedPlane8;
using test::Rng;

using test::kernelsHere;
using test::textLike;
using test::wholeResult;

// The part `range` of the result, worked out in as many tiles as the budget makes of it.
GuardedPlane8 dilated(const DilateArea& area, float radius, const DilateRange& range, int64_t budget,
                      const DilateKernels& kernels, int* tiles) {
    GuardedPlane8 part(static_cast<int>(range.x1 - range.x0), static_cast<int>(range.y1 - range.y0), 1);
    const DiscPlan plan(radius, area.width, area.height, range, budget);
    DiscDilation dilation(plan, area, kernels);
    EXPECT_TRUE(plan && dilation);
    if (!plan || !dilation) return part;
    GuardedPlane8 row(plan.tileWidth(), 1, 9);
    *tiles = 0;
    for (int64_t x = range.x0; x < range.x1; x += plan.tileWidth(), ++*tiles) {
        const int64_t end = std::min(x + plan.tileWidth(), range.x1);
        dilation.start(x, end, range.y0);
        for (int64_t y = range.y0; y < range.y1; ++y) {
            const DilatedPart inked = dilation.nextRow(nullptr, row.view().data);
            for (int i = 0; i < end - x; ++i) {
                part.at(static_cast<int>(x - range.x0) + i, static_cast<int>(y - range.y0)) = row.at(i, 0);
                EXPECT_TRUE(row.at(i, 0) == 0 || (i >= inked.begin && i < inked.end));
            }
        }
    }
    EXPECT_TRUE(row.guardsIntact());
    return part;
}

TEST(DiscDilation, EveryPartOnEveryPathEqualsThePlainLoops) {
    Rng rng(1);
    int mostTiles = 0;
    for (int width = 1; width <= 67; ++width)
        for (int round = 0; round < 4; ++round) {
            const float radius = round == 0 ? static_cast<float>(width % 13) : 30.0f * rng.unit() * rng.unit();
            const int reach = discReach(radius), height = rng.between(1, 24);
            const GuardedPlane8 ink =
                rng.oneIn(3) ? test::randomPlane8(rng, width, height) : textLike(rng, width, height);
            const DilateArea area{ink.view(), rng.between(0, 3), rng.between(0, 3), width + rng.between(0, 200),
                                  height + 4, rng.oneIn(2)};
            DilateRange range{-reach, -reach, area.width + reach, area.height + reach};
            const std::vector<uint8_t> whole = wholeResult(ink, area, radius);
            const int64_t stride = range.x1 - range.x0;
            if (rng.oneIn(2)) {
                range.x0 = rng.between(-reach, area.width - 1);
                range.x1 = rng.between(static_cast<int>(range.x0) + 1, area.width + reach);
                range.y0 = rng.between(-reach, area.height - 1);
                range.y1 = rng.between(static_cast<int>(range.y0) + 1, area.height + reach);
            }
            GuardedPlane8 want(static_cast<int>(range.x1 - range.x0), static_cast<int>(range.y1 - range.y0));
            for (int y = 0; y < want.height(); ++y)
                for (int x = 0; x < want.width(); ++x)
                    want.at(x, y) = whole[static_cast<size_t>((range.y0 + y + reach) * stride + range.x0 + x + reach)];

            for (const DilateKernels* kernels : kernelsHere())
                for (const int64_t budget : {int64_t{1000000}, int64_t{1}}) {
                    int tiles = 0;
                    const GuardedPlane8 got = dilated(area, radius, range, budget, *kernels, &tiles);
                    mostTiles = std::max(mostTiles, tiles);
                    ASSERT_TRUE(test::samePlane(want, got, kernels->name, "width", width, "round", round, "radius",
                                                radius, "budget", budget));
                }
        }
    EXPECT_GE(mostTiles, 2);
}

TEST(DiscDilation, LargeDiscsEqualThePlainLoops) {
    Rng rng(2);
    for (const float radius : {33.0f, 49.5f, 64.0f, 77.3f, 100.0f}) {
        const GuardedPlane8 ink = textLike(rng, 70, 40);
        const DilateArea area{ink.view(), 1, 1, 72, 42, false};
        const int reach = discReach(radius);
        const DilateRange range{-reach, -reach, 72 + reach, 42 + reach};
        const std::vector<uint8_t> whole = wholeResult(ink, area, radius);
        for (const DilateKernels* kernels : kernelsHere()) {
            int tiles = 0;
            const GuardedPlane8 got = dilated(area, radius, range, 1000000, *kernels, &tiles);
            const ConstPlane8 want{whole.data(), got.width(), got.height(), got.width()};
            ASSERT_TRUE(test::samePlane(want, got.view(), kernels->name, "radius", radius));
        }
    }
}

TEST(DiscDilation, LimitedRowsAreTheLesserOfLimitAndResult) {
    Rng rng(3);
    const GuardedPlane8 ink = textLike(rng, 150, 20), limits = textLike(rng, 192, 30);
    const DilateArea area{ink.view(), 0, 0, 150, 20, false};
    const DilateRange range{-5, -5, 155, 25};
    const DiscPlan plan(4.6f, 150, 20, range, 1000000);
    ASSERT_TRUE(plan);
    for (const DilateKernels* kernels : kernelsHere()) {
        DiscDilation free(plan, area, *kernels), limited(plan, area, *kernels);
        ASSERT_TRUE(free && limited);
        std::vector<uint8_t> want(static_cast<size_t>(plan.tileWidth())), got = want;
        free.start(range.x0, range.x1, range.y0);
        limited.start(range.x0, range.x1, range.y0);
        for (int y = 0; y < 30; ++y) {
            free.nextRow(nullptr, want.data());
            limited.nextRow(limits.view().row(y), got.data());
            for (int x = 0; x < 160; ++x)
                ASSERT_EQ(std::min(want[static_cast<size_t>(x)], limits.at(x, y)), got[static_cast<size_t>(x)])
                    << kernels->name << " at " << x << ", " << y;
        }
    }
}

TEST(DiscDilation, DiscsFarLargerThanThePictureTakeNoMemoryOfTheirOwn) {
    GuardedPlane8 ink(20, 10);
    ink.at(3, 4) = 200;
    const DilateArea area{static_cast<const GuardedPlane8&>(ink).view(), 1, 1, 22, 12, false};
    for (const float radius : {1000.0f, 1e6f, 1e9f}) {
        const DiscPlan plan(radius, 22, 12, {-300, -100, 300, 100}, 1 << 20);
        DiscDilation dilation(plan, area);
        ASSERT_TRUE(plan && dilation) << radius;
        std::vector<uint8_t> row(static_cast<size_t>(plan.tileWidth()));
        dilation.start(-300, 300, -100);
        for (int y = -100; y < 100; ++y) {
            dilation.nextRow(nullptr, row.data());
            EXPECT_EQ(600, std::count(row.begin(), row.begin() + 600, uint8_t{200})) << radius << " row " << y;
        }
    }
}

}  // namespace
}  // namespace QxFontEffect
