#include "effect/gradient_fill.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "effect/QxLinearGradient.h"
#include "effect/QxRadialGradient.h"
#include "effect/core_picture.h"
#include "support/planes.h"
#include "support/reference/gradient_reference.h"

namespace QxFontEffect {
namespace {

using test::CorePicture;
using test::Rng;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

std::vector<QxGradient> randomStops(Rng& rng, int count) {
    std::vector<QxGradient> stops;
    for (int i = 0; i < count; ++i) {
        const uint32_t alpha = rng.oneIn(2) ? 255 : rng.byte();
        const float position = rng.oneIn(4)   ? static_cast<float>(rng.below(3)) * 0.5f
                               : rng.oneIn(3) ? static_cast<float>(i) / static_cast<float>(count)
                                              : static_cast<float>(rng.below(101)) / 100.0f;
        stops.push_back({alpha << 24 | (rng.next32() & 0xFFFFFFu), 1.0f, position});
    }
    return stops;
}

TEST(Gradients, EqualThePlainLoopsOnRandomPictures) {
    const float scales[] = {0.1f, 0.15f, 0.5f, 0.99f, 1.0f, 1.5f, 2.0f};
    const int counts[] = {1, 2, 3, 5, 17, 256, 300};
    for (uint32_t seed = 0; seed < 1500; ++seed) {
        Rng rng(seed);
        CorePicture picture = CorePicture::random(rng, 140, 40);
        picture.rectAtRandom(rng, 3);
        // Unsorted and repeated positions, and last stops below 1, among them.
        std::vector<QxGradient> stops = randomStops(rng, counts[rng.below(7)]);
        const float angle =
            rng.oneIn(2) ? static_cast<float>(rng.between(-8, 8) * 45) : static_cast<float>(rng.between(-359, 359));
        const float scale = scales[rng.below(7)];
        const int count = static_cast<int>(stops.size());

        const QxLinearGradientProperty linear(angle, scale, 1.0f, count, stops.data());
        const QxRadialGradientProperty radial(angle, scale, 1.0f, count, stops.data());
        const ::testing::AssertionResult same =
            rng.oneIn(2) ? test::drawsLike<QxLinearGradient>(test::reference::linearGradient, picture, linear, 0)
                         : test::drawsLike<QxRadialGradient>(test::reference::radialGradient, picture, radial, 0);
        ASSERT_TRUE(same) << "seed " << seed << " angle " << angle << " scale " << scale << " stops " << count;
    }
}

TEST(Gradients, NothingIsPaintedWithoutStopsOrBelowATenthOfScale) {
    QxGradient stop[] = {{0xFFFFFFFFu, 1.0f, 0.0f}};
    const struct {
        float scale;
        int count;
        QxGradient* stops;
        bool blank;
    } cases[] = {{0.1f, 1, stop, false}, {0.0999f, 1, stop, true}, {0.0f, 1, stop, true},   {kNaN, 1, stop, true},
                 {1.0f, 0, stop, true},  {1.0f, -5, stop, true},   {1.0f, 1, nullptr, true}};
    for (const auto& c : cases) {
        CorePicture linear(8, 8), radial(8, 8);
        linear.inkAll(255);
        radial.inkAll(255);
        test::drawWith<QxLinearGradient>(linear, QxLinearGradientProperty(0.0f, c.scale, 1.0f, c.count, c.stops));
        test::drawWith<QxRadialGradient>(radial, QxRadialGradientProperty(0.0f, c.scale, 1.0f, c.count, c.stops));
        EXPECT_EQ(c.blank, linear.blank()) << c.scale << " with " << c.count;
        EXPECT_EQ(c.blank, radial.blank()) << c.scale << " with " << c.count;
    }
}

TEST(Gradients, KeepStopsOfTheirOwn) {
    QxGradient stops[] = {{0xFF112233u, 1.0f, 0.0f}, {0xFF445566u, 1.0f, 0.5f}};
    QxLinearGradient core;
    QxLinearGradientProperty record(0.0f, 1.0f, 1.0f, 2, stops);
    core.setProperty(&record);
    stops[1].color = 0;
    EXPECT_EQ(0xFF445566u, core.property->gradient[1].color);
}

}  // namespace
}  // namespace QxFontEffect
