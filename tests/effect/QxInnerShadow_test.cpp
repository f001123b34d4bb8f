#include "effect/QxInnerShadow.h"

#include <gtest/gtest.h>

#include <limits>

#include "effect/core_picture.h"
#include "support/failing_alloc.h"
#include "support/planes.h"
#include "support/reference/shadow_reference.h"

namespace QxFontEffect {
namespace {

using test::CorePicture;
using test::Rng;

TEST(InnerShadow, WithoutShiftAndBlurEdgePixelsGetTheirComplement) {
    CorePicture picture(3, 1);
    picture.ink(0, 0) = 255;
    picture.ink(1, 0) = 64;
    QxInnerShadow core;
    QxInnerShadowProperty record(0, 0, 0, 0xFFFFFFFFu, 0);
    core.setProperty(&record);
    picture.runs(core);
    EXPECT_EQ(picture.out(0, 0, 3), 0);
    EXPECT_EQ(picture.out(1, 0, 3), 191);
    EXPECT_EQ(picture.out(2, 0, 3), 0);
    EXPECT_EQ(core.getLeftOffset(), 0);
}

TEST(InnerShadow, RectangleEdgesCountAsDark) {
    CorePicture picture(9, 9);
    for (int y = 0; y < 9; ++y)
        for (int x = 0; x < 9; ++x) picture.ink(x, y) = 255;
    QxInnerShadow core;
    QxInnerShadowProperty record(0, 0, 2, 0xFFFFFFFFu, 1);
    core.setProperty(&record);
    picture.runs(core);
    EXPECT_GT(picture.out(0, 4, 3), 0);
    EXPECT_EQ(picture.out(0, 4, 3), picture.out(8, 4, 3));
    EXPECT_EQ(picture.out(4, 4, 3), 0);
}

TEST(InnerShadow, EqualsThePlainLoops) {
    for (int number = 0; number < 500; ++number) {
        Rng rng(static_cast<uint64_t>(number) + 1000);
        CorePicture picture(rng.between(1, 80), rng.between(1, 60));
        const int width = picture.rect.right, height = picture.rect.bottom;
        picture.inkAtRandom(rng);
        if (rng.oneIn(2)) picture.paintAtRandom(rng);
        if (rng.oneIn(3)) picture.output = QxBitmap(rng.below(100) + 1u, rng.below(70) + 1u, 4);
        if (!rng.oneIn(4)) {
            picture.rect.left = rng.between(0, width);
            picture.rect.top = rng.between(0, height);
            picture.rect.right = rng.between(picture.rect.left, width);
            picture.rect.bottom = rng.between(picture.rect.top, height);
        }
        // Shifts inside the ink, across its edge, and all the way past it.
        const float distance = 20.0f * static_cast<float>(rng.below(7)) * rng.unit();
        const float size = number <= 100 ? static_cast<float>(number) : 9.0f * rng.unit();
        const QxInnerShadowProperty record(static_cast<float>(rng.between(-400, 400)), distance, size, rng.next32(), 1);
        QxInnerShadow core;
        QxInnerShadowProperty given = record;
        core.setProperty(&given);
        CorePicture wanted = picture;
        test::reference::innerShadow(record, wanted.params());
        picture.runs(core);
        EXPECT_SAME_PLANE(wanted.outputPlane(), picture.outputPlane(), "case", number, "angle", record.angle,
                          "distance", distance, "size", size, "rectangle", picture.rect.left, picture.rect.top,
                          picture.rect.right, picture.rect.bottom);
    }
}

TEST(InnerShadow, WildSettingsPutAllInShadowOrDrawNothing) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const struct {
        float angle, distance, size;
        int wanted;
    } rows[] = {{0, 100, 2, 128}, {180, 3e9f, 2, 128}, {0, 0, nan, 0},
                {0, 0, 3e9f, 0},  {0, 0, 46340, 254},  {nan, 0.3f, 0, 127}};
    for (const auto& row : rows) {
        CorePicture picture(4, 4);
        picture.ink(1, 1) = 128;
        QxInnerShadow core;
        QxInnerShadowProperty record(row.angle, row.distance, row.size, 0xFFFFFFFFu, 1);
        core.setProperty(&record);
        picture.runs(core);
        EXPECT_EQ(picture.out(1, 1, 3), row.wanted) << row.angle << " " << row.distance << " " << row.size;
        EXPECT_EQ(picture.out(0, 0, 3), 0);
    }
}

TEST(InnerShadow, WithoutMemoryDrawsNothing) {
    CorePicture untouched(40, 30);
    Rng rng(4);
    untouched.inkAtRandom(rng);
    untouched.paintAtRandom(rng);
    QxInnerShadow core;
    QxInnerShadowProperty record(45, 3, 6, 0xFF336699u, 1);
    core.setProperty(&record);
    for (int n = 0;; ++n) {
        CorePicture picture = untouched;
        test::FailingAlloc failing(n);
        picture.runs(core);
        if (!failing.refused()) break;
        test::AllocationPause pause;
        EXPECT_SAME_PLANE(untouched.outputPlane(), picture.outputPlane(), "request", n);
    }
}

}  // namespace
}  // namespace QxFontEffect
