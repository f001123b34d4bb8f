#include "effect/gradient_fill.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "effect/QxLinearGradient.h"
#include "effect/QxRadialGradient.h"
#include "effect/core_picture.h"
#include "support/failing_alloc.h"
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

template <typename Core, typename Record>
void paint(CorePicture& picture, Record record) {
    Core core;
    core.setProperty(&record);
    picture.runs(core);
}

TEST(Gradients, EqualThePlainLoopsOnRandomPictures) {
    const float scales[] = {0.1f, 0.15f, 0.5f, 0.99f, 1.0f, 1.5f, 2.0f};
    const int counts[] = {1, 2, 3, 5, 17, 256, 300};
    for (uint32_t seed = 0; seed < 1500; ++seed) {
        Rng rng(seed);
        CorePicture picture(1 + static_cast<int>(seed % 140), rng.between(1, 40));
        picture.inkAtRandom(rng);
        picture.paintAtRandom(rng);
        picture.rect.left = rng.between(-3, picture.rect.right - 1);
        picture.rect.top = rng.between(-3, picture.rect.bottom - 1);
        picture.rect.right = rng.between(picture.rect.left, picture.rect.right + 3);
        picture.rect.bottom = rng.between(picture.rect.top, picture.rect.bottom + 3);
        // Unsorted and repeated positions, and last stops below 1, among them.
        std::vector<QxGradient> stops = randomStops(rng, counts[rng.below(7)]);
        const float angle =
            rng.oneIn(2) ? static_cast<float>(rng.between(-8, 8) * 45) : static_cast<float>(rng.between(-359, 359));
        const float scale = scales[rng.below(7)];
        const int count = static_cast<int>(stops.size());

        CorePicture want = picture;
        if (rng.oneIn(2)) {
            QxLinearGradientProperty record(angle, scale, 1.0f, count, stops.data());
            test::reference::linearGradient(record, want.params());
            paint<QxLinearGradient>(picture, record);
        } else {
            QxRadialGradientProperty record(angle, scale, 1.0f, count, stops.data());
            test::reference::radialGradient(record, want.params());
            paint<QxRadialGradient>(picture, record);
        }
        ASSERT_TRUE(test::samePlane(want.outputPlane(), picture.outputPlane(), "seed", seed, "angle", angle, "scale",
                                    scale, "stops", count));
    }
}

TEST(Gradients, RunFromTheFirstStopAcrossTheRectangle) {
    QxGradient stops[] = {{0xFF000000u, 1.0f, 0.0f}, {0xFFFFFFFFu, 1.0f, 1.0f}};
    CorePicture columns(256, 2), rows(3, 256), rings(256, 1);
    for (CorePicture* picture : {&columns, &rows, &rings})
        std::fill_n(picture->coverage.pixels, picture->coverage.width * picture->coverage.height, uint8_t{1});
    paint<QxLinearGradient>(columns, QxLinearGradientProperty(0.0f, 1.0f, 1.0f, 2, stops));
    paint<QxLinearGradient>(rows, QxLinearGradientProperty(-90.0f, 1.0f, 1.0f, 2, stops));
    paint<QxRadialGradient>(rings, QxRadialGradientProperty(0.0f, 1.0f, 1.0f, 2, stops));
    // Colours grow by ((channel + 1) * 255) >> 8 from the table's, which is i - 1 or i.
    EXPECT_EQ(0, columns.out(0, 1, 0));
    EXPECT_NEAR(127, columns.out(128, 0, 0), 1);
    EXPECT_NEAR(254, columns.out(255, 0, 0), 1);
    EXPECT_EQ(0, rows.out(1, 0, 2));
    EXPECT_NEAR(254, rows.out(1, 255, 2), 1);
    EXPECT_EQ(0, rings.out(128, 0, 1));
    EXPECT_NEAR(254, rings.out(0, 0, 1), 1);
    EXPECT_NEAR(128, rings.out(64, 0, 1), 1);
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
        std::fill_n(linear.coverage.pixels, 64, uint8_t{255});
        std::fill_n(radial.coverage.pixels, 64, uint8_t{255});
        paint<QxLinearGradient>(linear, QxLinearGradientProperty(0.0f, c.scale, 1.0f, c.count, c.stops));
        paint<QxRadialGradient>(radial, QxRadialGradientProperty(0.0f, c.scale, 1.0f, c.count, c.stops));
        EXPECT_EQ(c.blank, linear.blank()) << c.scale << " with " << c.count;
        EXPECT_EQ(c.blank, radial.blank()) << c.scale << " with " << c.count;
    }
}

TEST(Gradients, KeepStopsOfTheirOwn) {
    QxGradient stops[] = {{0xFF112233u, 1.0f, 0.0f}, {0xFF445566u, 1.0f, 0.5f}};
    QxLinearGradient core;
    {
        QxLinearGradientProperty record(0.0f, 1.0f, 1.0f, 2, stops);
        core.setProperty(&record);
    }
    stops[1].color = 0;
    ASSERT_NE(nullptr, core.property->gradient);
    EXPECT_NE(stops, core.property->gradient);
    EXPECT_EQ(0xFF445566u, core.property->gradient[1].color);
    core.setProperty(core.getProperty());
    EXPECT_EQ(0xFF112233u, core.property->gradient[0].color);
    core.setProperty(nullptr);
    EXPECT_EQ(2, core.property->count);
}

TEST(Gradients, DrawNothingWhenAnyAllocationFails) {
    QxGradient stop[] = {{0xFFFFFFFFu, 1.0f, 0.0f}};
    for (int n = 0;; ++n) {
        CorePicture picture(40, 30);
        std::fill_n(picture.coverage.pixels, 1200, uint8_t{255});
        ParamPostProcessing params = picture.params();
        QxLinearGradientProperty record(0.0f, 1.0f, 1.0f, 1, stop);
        QxLinearGradient core;
        test::FailingAlloc failing(n);
        core.setProperty(&record);
        core.doPostProcessing(&params);
        if (!failing.refused()) break;
        test::AllocationPause pause;
        EXPECT_TRUE(picture.blank()) << "request " << n;
    }
}

}  // namespace
}  // namespace QxFontEffect
