#include <gtest/gtest.h>

#include <limits>

#include "effect/QxInnerShadow.h"
#include "effect/QxOuterShadow.h"
#include "effect/core_picture.h"
#include "effect/shadow_geometry.h"
#include "support/planes.h"
#include "support/reference/shadow_reference.h"

namespace QxFontEffect {
namespace {

using test::CorePicture;
using test::Rng;

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

TEST(ShadowGeometry, ShiftFallsOppositeToTheLight) {
    const struct {
        float angle, distance;
        int dx, dy;
    } rows[] = {
        {0, 10, -10, 0},
        {90, 10, 0, 10},
        {45, 1, -1, 1},
        {180, 10, 10, 0},
        {270, 4, 0, -4},
        {30, 1, -1, 0},  // the short pi puts sin 30 just below a half
        {0, 0, 0, 0},
        {0, 0.49f, 0, 0},
        {0, 0.5f, -1, 0},
        {-90, 2.5f, 0, -3},
        {405, 10, -7, 7},
        {kNan, 10, 0, 0},
        {45, kNan, 0, 0},
        {kInfinity, 5, 0, 0},
        {180, 1e30f, std::numeric_limits<int32_t>::max(), std::numeric_limits<int32_t>::max()},
    };
    for (const auto& row : rows) {
        const ShadowShift shift = shadowShift(row.angle, row.distance);
        EXPECT_EQ(shift.dx, row.dx) << row.angle << " " << row.distance;
        EXPECT_EQ(shift.dy, row.dy) << row.angle << " " << row.distance;
    }
    for (int angle = -720; angle <= 720; ++angle)
        for (float distance = 0; distance <= 100; distance += 0.5f) {
            const float degrees = static_cast<float>(angle);
            const ShadowShift shift = shadowShift(degrees, distance);
            ASSERT_EQ(shift.dx, test::reference::shadowX(degrees, distance)) << angle << " " << distance;
            ASSERT_EQ(shift.dy, test::reference::shadowY(degrees, distance)) << angle << " " << distance;
        }
}

TEST(OuterShadow, MarginsFollowTheShift) {
    const struct {
        float size;
        int dx, dy;
        int left, right, top, bottom;
    } rows[] = {
        {4, -3, 2, 7, 1, 2, 6},
        {4, 9, -9, 0, 13, 13, 0},
        {0, 0, 0, 0, 0, 0, 0},
        {0.49999997f, 0, 0, 1, 1, 1, 1},  // the margin rounds in single precision, the drawing does not
        {3e9f, 1, -1, 2147483646, 2147483647, 2147483647, 2147483646},
    };
    for (const auto& row : rows) {
        QxOuterShadow core;
        QxOuterShadowProperty record(0, 0, row.size, 0, 1);
        core.setProperty(&record);
        core.dx = row.dx;
        core.dy = row.dy;
        EXPECT_EQ(core.getLeftOffset(), row.left) << row.size;
        EXPECT_EQ(core.getRightOffset(), row.right) << row.size;
        EXPECT_EQ(core.getTopOffset(), row.top) << row.size;
        EXPECT_EQ(core.getBottomOffset(), row.bottom) << row.size;
        EXPECT_EQ(core.getOffset(), 0);
    }
}

TEST(OuterShadow, SizeJustBelowHalfIsAHardCopy) {
    for (const float size : {-3.0f, 0.0f, 0.49999997f}) {
        CorePicture picture(4, 3);
        picture.ink(1, 1) = 200;
        test::drawWith<QxOuterShadow>(picture, QxOuterShadowProperty(180, 1, size, 0xFF102030u, 0));
        for (int y = 0; y < 3; ++y)
            for (int x = 0; x < 4; ++x) EXPECT_EQ(picture.out(x, y, 3), x == 2 && y == 1 ? 200 : 0) << size;
    }
}

TEST(Shadows, EqualThePlainLoops) {
    for (uint32_t number = 0; number < 500; ++number) {
        Rng rng(number);
        CorePicture picture = CorePicture::random(rng, 90, 60);
        picture.rectAtRandom(rng);
        const float size = number <= 100 ? static_cast<float>(number) : 12.0f * rng.unit();
        const float angle = static_cast<float>(rng.between(-400, 400));
        // Shifts inside the ink, across its edge, and all the way past it.
        const float distance = 20.0f * static_cast<float>(rng.below(7)) * rng.unit();
        const uint32_t color = rng.next32();
        EXPECT_TRUE(test::drawsLike<QxOuterShadow>(
            test::reference::outerShadow, picture, QxOuterShadowProperty(angle, distance * 0.4f, size, color, 1), 0,
            "outer", number, "angle", angle, "distance", distance * 0.4f, "size", size));
        EXPECT_TRUE(test::drawsLike<QxInnerShadow>(test::reference::innerShadow, picture,
                                                   QxInnerShadowProperty(angle, distance, size, color, 1), 0, "inner",
                                                   number, "angle", angle, "distance", distance, "size", size));
    }
    Rng rng(9);
    CorePicture wide(50, 20);
    wide.inkAtRandom(rng);
    wide.rect = QxRect(20, 8, 24, 12);
    EXPECT_TRUE(test::drawsLike<QxOuterShadow>(test::reference::outerShadow, wide,
                                               QxOuterShadowProperty(0, 0, 251, 0xFF0000FFu, 1), 0));
}

TEST(OuterShadow, OnePixelIsThinnedToNothingOrFallsBesideThePicture) {
    CorePicture picture(6, 6);
    picture.ink(2, 2) = 255;
    for (const float size : {5000.0f, 46340.0f, 46341.0f})
        test::drawWith<QxOuterShadow>(picture, QxOuterShadowProperty(45, 0, size, ~0u, 1));
    for (const float angle : {0.0f, 90.0f, 180.0f, 270.0f})
        for (const float distance : {20.0f, 3e9f})
            test::drawWith<QxOuterShadow>(picture, QxOuterShadowProperty(angle, distance, 2, ~0u, 1));
    EXPECT_TRUE(picture.blank());
}

TEST(InnerShadow, WildSettingsPutAllInShadowOrDrawNothing) {
    const struct {
        float angle, distance, size;
        int wanted;
    } rows[] = {{0, 100, 2, 128}, {180, 3e9f, 2, 128}, {0, 0, 46340, 254}, {kNan, 0.3f, 0, 127}};
    for (const auto& row : rows) {
        CorePicture picture(4, 4);
        picture.ink(1, 1) = 128;
        test::drawWith<QxInnerShadow>(picture,
                                      QxInnerShadowProperty(row.angle, row.distance, row.size, 0xFFFFFFFFu, 1));
        EXPECT_EQ(picture.out(1, 1, 3), row.wanted) << row.angle << " " << row.distance << " " << row.size;
        EXPECT_EQ(picture.out(0, 0, 3), 0);
    }
}

}  // namespace
}  // namespace QxFontEffect
