#include "effect/disc_dilation_small.h"

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

constexpr SmallSource kSources[] = {SmallSource::Ink, SmallSource::Complement, SmallSource::Both};

std::vector<uint8_t> wantedResult(const GuardedPlane8& ink, DilateArea area, float radius, SmallSource source) {
    area.complement = source == SmallSource::Complement;
    std::vector<uint8_t> result = test::wholeResult(ink, area, radius);
    if (source != SmallSource::Both) return result;
    area.complement = true;
    const std::vector<uint8_t> other = test::wholeResult(ink, area, radius);
    for (size_t i = 0; i < result.size(); ++i) result[i] = std::min(result[i], other[i]);
    return result;
}

GuardedPlane8 partOf(const std::vector<uint8_t>& whole, const DilateArea& area, int reach, const DilateRange& range) {
    GuardedPlane8 part(static_cast<int>(range.x1 - range.x0), static_cast<int>(range.y1 - range.y0));
    const int64_t stride = area.width + 2 * int64_t{reach};
    for (int y = 0; y < part.height(); ++y)
        for (int x = 0; x < part.width(); ++x)
            part.at(x, y) = whole[static_cast<size_t>((range.y0 + y + reach) * stride + range.x0 + x + reach)];
    return part;
}

GuardedPlane8 dilated(const DilateArea& area, float radius, SmallSource source, const DilateRange& range,
                      const DilateKernels& kernels) {
    GuardedPlane8 part(static_cast<int>(range.x1 - range.x0), static_cast<int>(range.y1 - range.y0), 1);
    const SmallDiscPlan plan(radius, area.width, area.height, range);
    SmallDiscDilation dilation(plan, area, source, kernels);
    EXPECT_TRUE(plan && dilation);
    if (!plan || !dilation) return part;
    GuardedPlane8 row(plan.tileWidth(), 1, 9);
    for (int64_t x = range.x0; x < range.x1; x += plan.tileWidth()) {
        const int64_t end = std::min(x + plan.tileWidth(), range.x1);
        dilation.start(x, end, range.y0);
        for (int64_t y = range.y0; y < range.y1; ++y) {
            const DilatedPart inked = dilation.nextRow(row.view().data);
            for (int i = 0; i < end - x; ++i) {
                part.at(static_cast<int>(x - range.x0) + i, static_cast<int>(y - range.y0)) = row.at(i, 0);
                EXPECT_TRUE(row.at(i, 0) == 0 || (i >= inked.begin && i < inked.end));
            }
        }
    }
    EXPECT_TRUE(row.guardsIntact());
    return part;
}

void compare(const GuardedPlane8& ink, const DilateArea& area, float radius, const DilateRange& range) {
    const int reach = discReach(radius);
    ASSERT_TRUE(SmallDiscPlan::suits(radius)) << radius;
    for (const SmallSource source : kSources) {
        const GuardedPlane8 want = partOf(wantedResult(ink, area, radius, source), area, reach, range);
        for (const DilateKernels* kernels : test::kernelsHere())
            ASSERT_TRUE(test::samePlane(want, dilated(area, radius, source, range, *kernels), kernels->name, "source",
                                        static_cast<int>(source), "radius", radius, "width", area.width));
    }
}

TEST(SmallDiscDilation, EveryPartOfEverySourceOnEveryPathEqualsThePlainLoops) {
    Rng rng(1);
    for (int width = 1; width <= 67; ++width)
        for (int round = 0; round < 6; ++round) {
            const float radius = round == 0 ? static_cast<float>(width % 11) : -0.5f + 10.9f * rng.unit();
            const int height = rng.between(1, 24);
            const GuardedPlane8 ink =
                rng.oneIn(3) ? test::randomPlane8(rng, width, height) : test::textLike(rng, width, height);
            const DilateArea area{
                ink.view(), rng.between(0, 3), rng.between(0, 3), width + rng.between(0, 200), height + 4, false};
            ASSERT_NO_FATAL_FAILURE(compare(ink, area, radius, test::randomRange(rng, area, discReach(radius))));
        }
}

// The cells that the loops take to be full, or to weigh nothing, are those of the widest and the narrowest disc.
TEST(SmallDiscDilation, TheNarrowestAndTheWidestDiscOfEveryReachEqualThePlainLoops) {
    Rng rng(2);
    for (int reach = 0; reach <= kMaxSmallReach; ++reach)
        for (const float radius :
             {static_cast<float>(reach) - 0.5f, std::nextafter(static_cast<float>(reach) + 0.5f, 0.0f)}) {
            const GuardedPlane8 ink = test::textLike(rng, 90, 30);
            const DilateArea area{ink.view(), 1, 1, 92, 32, false};
            ASSERT_NO_FATAL_FAILURE(compare(ink, area, radius, {-reach, -reach, 92 + reach, 32 + reach}));
        }
    EXPECT_FALSE(SmallDiscPlan::suits(static_cast<float>(kMaxSmallReach) + 0.5f));
    EXPECT_FALSE(SmallDiscPlan::suits(-1.5f));
}

TEST(SmallDiscDilation, TilesJoinWithoutASeam) {
    Rng rng(3);
    const GuardedPlane8 ink = test::textLike(rng, 2200, 9);
    const DilateArea area{ink.view(), 1, 1, 2202, 11, false};
    for (const float radius : {2.5f, 9.0f}) {
        const int reach = discReach(radius);
        ASSERT_LT(SmallDiscPlan(radius, 2202, 11, {0, 0, 2202, 11}).tileWidth(), 2202);
        ASSERT_NO_FATAL_FAILURE(compare(ink, area, radius, {-reach, -reach, 2202 + reach, 11 + reach}));
    }
}

}  // namespace
}  // namespace QxFontEffect
