#include "effect/disc_dilation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
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

/// The part `range` of a whole result.
GuardedPlane8 partOf(const std::vector<uint8_t>& whole, const DilateArea& area, int reach, const DilateRange& range) {
    GuardedPlane8 part(static_cast<int>(range.x1 - range.x0), static_cast<int>(range.y1 - range.y0));
    const int64_t stride = area.width + 2 * reach;
    for (int y = 0; y < part.height(); ++y)
        for (int x = 0; x < part.width(); ++x)
            part.at(x, y) = whole[static_cast<size_t>((range.y0 + y + reach) * stride + range.x0 + x + reach)];
    return part;
}

DilateRange wholeRange(const DilateArea& area, int reach) {
    return {-reach, -reach, area.width + reach, area.height + reach};
}

/// Compares a random part with the plain loops, on every path, in one tile and in narrow ones. Returns the most tiles.
int comparePart(Rng& rng, const GuardedPlane8& ink, const DilateArea& area, float radius, int number) {
    const int reach = discReach(radius);
    const DilateRange range = test::randomRange(rng, area, reach);
    const GuardedPlane8 want = partOf(wholeResult(ink, area, radius), area, reach, range);
    int mostTiles = 0;
    for (const DilateKernels* kernels : kernelsHere())
        for (const int64_t budget : {int64_t{1000000}, int64_t{1}}) {
            int tiles = 0;
            const GuardedPlane8 got = dilated(area, radius, range, budget, *kernels, &tiles);
            mostTiles = std::max(mostTiles, tiles);
            EXPECT_TRUE(test::samePlane(want, got, kernels->name, "number", number, "radius", radius, "budget", budget,
                                        "complement", area.complement));
        }
    return mostTiles;
}

TEST(DiscDilation, EveryPartOnEveryPathEqualsThePlainLoops) {
    Rng rng(1);
    int mostTiles = 0;
    for (int width = 1; width <= 67; ++width)
        for (int round = 0; round < 4; ++round) {
            const float radius = round == 0 ? static_cast<float>(width % 13) : 30.0f * rng.unit() * rng.unit();
            const int height = rng.between(1, 24);
            const GuardedPlane8 ink =
                rng.oneIn(3) ? test::randomPlane8(rng, width, height) : textLike(rng, width, height);
            const DilateArea area{ink.view(), rng.between(0, 3), rng.between(0, 3), width + rng.between(0, 200),
                                  height + 4, rng.oneIn(2)};
            mostTiles = std::max(mostTiles, comparePart(rng, ink, area, radius, 4 * width + round));
            ASSERT_FALSE(HasFailure());
        }
    EXPECT_GE(mostTiles, 2);
}

/// Stems and bowls with soft edges: rows that resemble their neighbours, with gaps and edges of all widths.
GuardedPlane8 lettersLike(Rng& rng, int width, int height) {
    GuardedPlane8 plane(width, height);
    for (int shapes = rng.between(1, 6); shapes > 0; --shapes) {
        const float halfWidth = 1.0f + 12.0f * rng.unit(), halfHeight = 1.0f + 15.0f * rng.unit();
        const float x0 = static_cast<float>(width) * rng.unit(), y0 = static_cast<float>(height) * rng.unit();
        const float soft = rng.oneIn(3) ? 10.0f * rng.unit() : 1.0f;
        const bool round = rng.oneIn(2);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                const float u = std::abs(static_cast<float>(x) - x0) / halfWidth;
                const float v = std::abs(static_cast<float>(y) - y0) / halfHeight;
                const float outside = ((round ? std::hypot(u, v) : std::max(u, v)) - 1.0f) * halfWidth;
                const float cover = std::clamp(1.0f - outside / std::max(soft, 0.1f), 0.0f, 1.0f);
                plane.at(x, y) = std::max(plane.at(x, y), static_cast<uint8_t>(255.0f * cover));
            }
    }
    return plane;
}

TEST(DiscDilation, RowsThatWideDiscsFillEqualThePlainLoops) {
    Rng rng(4);
    for (int number = 0; number < 60; ++number) {
        const int width = rng.between(20, 110), height = rng.between(2, 40);
        const GuardedPlane8 ink = lettersLike(rng, width, height);
        const DilateArea area{ink.view(), rng.between(0, 3), rng.between(0, 3), width + rng.between(4, 60),
                              height + 4, rng.oneIn(4)};
        comparePart(rng, ink, area, 8.0f + 32.0f * rng.unit(), number);
        ASSERT_FALSE(HasFailure());
    }
}

/// Compares all of a result.
void compareWhole(const GuardedPlane8& ink, float radius) {
    const DilateArea area{ink.view(), 1, 1, ink.width() + 2, ink.height() + 2, false};
    const int reach = discReach(radius);
    const DilateRange range = wholeRange(area, reach);
    const GuardedPlane8 want = partOf(wholeResult(ink, area, radius), area, reach, range);
    for (const DilateKernels* kernels : kernelsHere())
        for (const int64_t budget : {int64_t{1000000}, int64_t{1}}) {
            int tiles = 0;
            const GuardedPlane8 got = dilated(area, radius, range, budget, *kernels, &tiles);
            ASSERT_TRUE(test::samePlane(want, got, kernels->name, "radius", radius, "budget", budget));
        }
}

TEST(DiscDilation, RowsWithUnevenEndsEqualThePlainLoops) {
    for (const bool right : {false, true}) {
        GuardedPlane8 ink(90, 1);
        for (int x = 5; x < 85; ++x) ink.at(x, 0) = 255;
        // The further sample is the higher one: it counts as far as it reaches, and no further.
        ink.at(right ? 85 : 4, 0) = 10;
        ink.at(right ? 87 : 2, 0) = 200;
        for (const float radius : {7.0f, 8.0f, 12.3f}) compareWhole(ink, radius);
    }
}

TEST(DiscDilation, RowsThatFillDifferentPartsLeaveTheGapBetweenThem) {
    GuardedPlane8 ink(300, 8);
    for (int x = 0; x < 60; ++x) ink.at(x, 0) = ink.at(x + 110, 3) = ink.at(x + 220, 5) = 255;
    for (const float radius : {12.0f, 24.5f}) compareWhole(ink, radius);
}

TEST(DiscDilation, LargeDiscsEqualThePlainLoops) {
    Rng rng(2);
    for (const float radius : {33.0f, 49.5f, 64.0f, 77.3f, 100.0f}) compareWhole(textLike(rng, 70, 40), radius);
    // Spans that take all the room there is, and maxima over more samples than the area has columns.
    compareWhole(textLike(rng, 300, 9), 64.0f);
    for (const float radius : {127.0f, 256.0f}) {
        GuardedPlane8 dots(radius < 200.0f ? 126 : 20, 3);
        dots.at(3, 1) = dots.at(18, 2) = 200;
        compareWhole(dots, radius);
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
