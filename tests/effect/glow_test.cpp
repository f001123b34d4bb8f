#include "effect/glow.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "effect/QxInnerGlow.h"
#include "effect/QxOuterGlow.h"
#include "effect/core_picture.h"
#include "support/planes.h"
#include "support/reference/glow_reference.h"

namespace QxFontEffect {
namespace {

using test::CorePicture;
using test::Rng;

/// Stops in order, the first and the last anywhere.
std::vector<QxGradient> randomStops(Rng& rng, int count) {
    std::vector<QxGradient> stops;
    for (int i = 0; i < count; ++i)
        stops.push_back({rng.next32(), 1.0f, (static_cast<float>(i) + rng.unit()) / static_cast<float>(count)});
    return stops;
}

/// Draws both glows of a size, with random stops, on a picture and compares them with the plain loops.
void expectLikeReference(Rng& rng, float size, int number) {
    CorePicture picture = CorePicture::random(rng, 60, 40);
    picture.rectAtRandom(rng);
    std::vector<QxGradient> stops = randomStops(rng, rng.between(0, 4));
    const int count = static_cast<int>(stops.size());
    const uint32_t color = rng.next32();
    for (const bool inner : {false, true}) {
        const auto reference = [inner](const QxGlowProperty& record, const ParamPostProcessing& p) {
            test::reference::glow(record, p, inner);
        };
        const ::testing::AssertionResult same =
            inner ? test::drawsLike<QxInnerGlow>(reference, picture,
                                                 QxInnerGlowProperty(size, color, 1, count, stops.data()), 0, "inner")
                  : test::drawsLike<QxOuterGlow>(reference, picture,
                                                 QxOuterGlowProperty(size, color, 1, count, stops.data()), 0, "outer");
        EXPECT_TRUE(same) << "case " << number << " size " << size << " stops " << count;
    }
}

TEST(Glow, EqualsThePlainLoops) {
    for (int number = 0; number < 160; ++number) {
        Rng rng(static_cast<uint64_t>(number) + 300);
        // Size 39 makes a step of 40, which takes a growth less than in double precision.
        const float size = number < 40    ? 0.25f * static_cast<float>(number) - 0.75f
                           : number <= 48 ? static_cast<float>(number - 5)
                                          : 30.0f * rng.unit();
        expectLikeReference(rng, size, number);
    }
    Rng rng(2);
    expectLikeReference(rng, 100, -1);
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

TEST(Glow, StopsAreCopiedAndTheMarginIsTheRoundedSize) {
    QxGradient stops[2] = {{0xFF000001u, 1, 0}, {0xFF000002u, 1, 1}};
    QxOuterGlow core;
    QxOuterGlowProperty record(4.6f, 7, 1, 2, stops);
    core.setProperty(&record);
    stops[0].color = 0;
    EXPECT_EQ(core.property->gradient[0].color, 0xFF000001u);
    EXPECT_EQ(core.getRightOffset(), 5);
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

}  // namespace
}  // namespace QxFontEffect
