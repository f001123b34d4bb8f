#include "effect/glow.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "effect/QxInnerGlow.h"
#include "effect/QxOuterGlow.h"
#include "effect/core_picture.h"
#include "support/failing_alloc.h"
#include "support/planes.h"
#include "support/reference/glow_reference.h"

namespace QxFontEffect {
namespace {

using test::CorePicture;
using test::Rng;

std::vector<QxGradient> randomStops(Rng& rng, int count) {
    std::vector<QxGradient> stops;
    for (int i = 0; i < count; ++i) {
        const float position = count == 1 ? rng.unit() : static_cast<float>(i) / static_cast<float>(count - 1);
        stops.push_back({rng.next32(), 1.0f, position});
    }
    return stops;
}

/// Runs one glow on a picture and the plain loops on a copy.
template <typename Core, typename Record>
void expectLikeReference(Rng& rng, float size, int number, bool inner) {
    CorePicture picture(rng.between(1, 60), rng.between(1, 40));
    const int width = picture.rect.right, height = picture.rect.bottom;
    picture.inkAtRandom(rng);
    if (rng.oneIn(2)) picture.paintAtRandom(rng);
    if (rng.oneIn(3)) picture.output = QxBitmap(rng.below(130) + 1u, rng.below(90) + 1u, 4);
    if (!rng.oneIn(3)) {
        picture.rect.left = rng.between(0, width);
        picture.rect.top = rng.between(0, height);
        picture.rect.right = rng.between(picture.rect.left, width);
        picture.rect.bottom = rng.between(picture.rect.top, height);
    }
    std::vector<QxGradient> stops = randomStops(rng, rng.between(0, 4));
    Record record(size, rng.next32(), 1, static_cast<int>(stops.size()), stops.data());
    Core core;
    core.setProperty(&record);
    CorePicture wanted = picture;
    test::reference::glow(record, wanted.params(), inner);
    picture.runs(core);
    EXPECT_SAME_PLANE(wanted.outputPlane(), picture.outputPlane(), "case", number, "inner", inner, "size", size,
                      "stops", stops.size(), "rectangle", picture.rect.left, picture.rect.top, picture.rect.right,
                      picture.rect.bottom);
}

TEST(Glow, EqualsThePlainLoops) {
    for (int number = 0; number < 160; ++number) {
        Rng rng(static_cast<uint64_t>(number) + 300);
        const float size = number < 40    ? 0.25f * static_cast<float>(number) - 0.75f
                           : number <= 48 ? static_cast<float>(number)
                                          : 30.0f * rng.unit();
        expectLikeReference<QxOuterGlow, QxOuterGlowProperty>(rng, size, number, false);
        expectLikeReference<QxInnerGlow, QxInnerGlowProperty>(rng, size, number, true);
    }
    Rng rng(2);
    expectLikeReference<QxOuterGlow, QxOuterGlowProperty>(rng, 100, -1, false);
    expectLikeReference<QxInnerGlow, QxInnerGlowProperty>(rng, 100, -2, true);
}

TEST(Glow, ColourTableFollowsTheStops) {
    Rng rng(3);
    for (int count = 0; count <= 5; ++count)
        for (const float range : {0.3f, 0.0f, 2.0f, 0.7f})
            for (int mode = 0; mode <= 3; ++mode) {
                std::vector<QxGradient> stops = randomStops(rng, count);
                QxOuterGlowProperty record(5, rng.next32(), 1, count, stops.data());
                QxOuterGlow core;
                core.setProperty(&record);
                std::vector<uint32_t> lut(257);
                core.makeColorLUT(lut.data(), range, mode);
                const auto curve = [mode](float t) { return mode == 1 ? std::sqrt(t) : mode == 2 ? t * t : t; };
                EXPECT_EQ(lut, test::reference::glowTable(record, range, curve))
                    << count << " " << range << " " << mode;
            }
}

TEST(Glow, OnlySizeZeroBlanksTheTable) {
    for (const float size : {0.0f, -0.0f, 0.001f, -0.5f}) {
        QxInnerGlow core;
        QxInnerGlowProperty record(size, 0xFF112233u, 1, 0, nullptr);
        core.setProperty(&record);
        std::vector<uint32_t> lut(257, 1);
        core.makeColorLUT(lut.data(), 0.3f, 0);
        EXPECT_EQ(lut[0], size == 0.0f ? 0u : 0xFF112233u) << size;
        EXPECT_EQ(lut[256], size == 0.0f ? 0u : 0x00112233u) << size;
    }
}

TEST(Glow, CoreOwnsItsStops) {
    QxGradient stops[2] = {{0xFF000001u, 1, 0}, {0xFF000002u, 1, 1}};
    QxOuterGlow core;
    QxOuterGlowProperty record(4.6f, 7, 1, 2, stops);
    core.setProperty(&record);
    stops[0].color = 0;
    EXPECT_EQ(core.property->gradient[0].color, 0xFF000001u);
    core.setProperty(core.property);  // its own record may be handed back
    EXPECT_EQ(core.property->gradient[1].color, 0xFF000002u);
    EXPECT_EQ(core.getRightOffset(), 5);
    core.setProperty(nullptr);
    EXPECT_NE(core.getProperty(), nullptr);
}

TEST(Glow, IncreaseByBoxFilterTakesAnyArguments) {
    QxOuterGlow core;
    core.increaseByBoxFilter(nullptr, 1, 4, 4);
    std::vector<uint8_t> buffer(9, 100);
    for (const int side : {0, -3}) core.increaseByBoxFilter(buffer.data(), 1, side, 3);
    EXPECT_EQ(buffer, std::vector<uint8_t>(9, 100));
    core.increaseByBoxFilter(buffer.data(), 1, 3, 3);
    EXPECT_EQ(buffer, (std::vector<uint8_t>{100, 100, 100, 0, 225, 0, 100, 100, 100}));
}

TEST(Glow, SizesOutOfRangeDrawNothing) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (const float size : {nan, -1.0f, -2.5f, -1e30f, 1e30f, std::numeric_limits<float>::infinity()}) {
        CorePicture picture(8, 8);
        picture.ink(4, 4) = 255;
        QxInnerGlow inner;
        QxInnerGlowProperty innerRecord(size, 0xFFFFFFFFu, 1, 0, nullptr);
        inner.setProperty(&innerRecord);
        picture.runs(inner);
        QxOuterGlow outer;
        QxOuterGlowProperty outerRecord(size, 0xFFFFFFFFu, 1, 2, nullptr);
        outer.setProperty(&outerRecord);
        picture.runs(outer);
        EXPECT_TRUE(picture.blank()) << size;
    }
}

TEST(Glow, WithoutMemoryDrawsNothing) {
    CorePicture untouched(40, 30);
    Rng rng(4);
    untouched.inkAtRandom(rng);
    untouched.paintAtRandom(rng);
    QxInnerGlow core;
    QxInnerGlowProperty record(4, 0xFF336699u, 1, 0, nullptr);
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
