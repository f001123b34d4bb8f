#include "effect/QxOuterShadow.h"

#include <gtest/gtest.h>

#include <limits>

#include "effect/core_picture.h"
#include "effect/shadow_geometry.h"
#include "support/failing_alloc.h"
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
        QxOuterShadow core;
        QxOuterShadowProperty record(180, 1, size, 0xFF102030u, 0);
        core.setProperty(&record);
        picture.runs(core);
        for (int y = 0; y < 3; ++y)
            for (int x = 0; x < 4; ++x) EXPECT_EQ(picture.out(x, y, 3), x == 2 && y == 1 ? 200 : 0) << size;
    }
}

void expectLikeReference(const QxOuterShadowProperty& record, CorePicture& picture, int number) {
    QxOuterShadow core;
    QxOuterShadowProperty given = record;
    core.setProperty(&given);
    CorePicture wanted = picture;
    test::reference::outerShadow(record, wanted.params());
    picture.runs(core);
    EXPECT_SAME_PLANE(wanted.outputPlane(), picture.outputPlane(), "case", number, "angle", record.angle, "distance",
                      record.distance, "size", record.size, "rectangle", picture.rect.left, picture.rect.top,
                      picture.rect.right, picture.rect.bottom);
}

TEST(OuterShadow, EqualsThePlainLoops) {
    for (int number = 0; number < 400; ++number) {
        Rng rng(static_cast<uint64_t>(number));
        CorePicture picture(rng.between(1, 90), rng.between(1, 60));
        const int width = picture.rect.right, height = picture.rect.bottom;
        picture.inkAtRandom(rng);
        if (rng.oneIn(2)) picture.paintAtRandom(rng);
        if (rng.oneIn(3)) picture.output = QxBitmap(rng.below(100) + 1u, rng.below(70) + 1u, 4);
        picture.rect.left = rng.between(0, width);
        picture.rect.top = rng.between(0, height);
        picture.rect.right = rng.between(picture.rect.left, width);
        picture.rect.bottom = rng.between(picture.rect.top, height);
        if (rng.oneIn(4)) picture.rect = QxRect(0, 0, width, height);
        const float size = number <= 100 ? static_cast<float>(number) : 12.0f * rng.unit();
        const QxOuterShadowProperty record(static_cast<float>(rng.between(-400, 400)), 30.0f * rng.unit(), size,
                                           rng.next32(), 1);
        expectLikeReference(record, picture, number);
    }
}

TEST(OuterShadow, SizesFarBeyondTheUsual) {
    Rng rng(9);
    CorePicture picture(50, 20);
    picture.inkAtRandom(rng);
    picture.rect = QxRect(20, 8, 24, 12);
    expectLikeReference(QxOuterShadowProperty(0, 0, 251, 0xFF0000FFu, 1), picture, 0);

    for (const float size : {5000.0f, 46340.0f, 46341.0f, 1e9f, kInfinity, kNan}) {
        CorePicture large(3, 3);
        large.ink(1, 1) = 255;
        QxOuterShadow core;
        QxOuterShadowProperty record(45, 1e9f, size, 0xFFFFFFFFu, 1);
        core.setProperty(&record);
        core.dx = core.dy = 0;
        large.runs(core);
        EXPECT_TRUE(large.blank()) << size;  // one pixel thinned to nothing, or not drawn
    }
}

TEST(OuterShadow, MissingPartsAndMissesDrawNothing) {
    CorePicture picture(6, 6);
    picture.ink(2, 2) = 255;
    QxOuterShadow core;
    picture.runs(core);
    EXPECT_EQ(core.getLeftOffset(), 0);
    core.setProperty(nullptr);
    EXPECT_EQ(core.getProperty(), nullptr);
    for (const float angle : {0.0f, 90.0f, 180.0f, 270.0f})
        for (const float distance : {20.0f, 3e9f}) {
            QxOuterShadowProperty record(angle, distance, 2, 0xFFFFFFFFu, 1);
            core.setProperty(&record);
            picture.runs(core);
        }
    QxOuterShadowProperty record(0, 0, 2, 0xFFFFFFFFu, 1);
    core.setProperty(&record);
    ParamPostProcessing broken[] = {picture.params(), picture.params(), picture.params()};
    broken[0].dstBitmap = nullptr;
    broken[1].srcBitmap = nullptr;
    broken[2].textRect = nullptr;
    for (ParamPostProcessing& params : broken) core.doPostProcessing(&params);
    core.doPostProcessing(nullptr);
    EXPECT_TRUE(picture.blank());
}

TEST(OuterShadow, WithoutMemoryDrawsNothing) {
    CorePicture untouched(40, 30);
    Rng rng(4);
    untouched.inkAtRandom(rng);
    untouched.paintAtRandom(rng);
    QxOuterShadow core;
    QxOuterShadowProperty record(45, 3, 6, 0xFF336699u, 1);
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
