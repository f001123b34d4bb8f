#include "effect/QxBevel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <vector>

#include "effect/core_picture.h"
#include "support/planes.h"
#include "support/reference/bevel_reference.h"

namespace QxFontEffect {
namespace {

using test::CorePicture;
using test::GuardedPlane8;
using test::GuardedPlaneF;
using test::Rng;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

QxBevelProperty randomRecord(Rng& rng, float size) {
    const float altitudes[] = {0.0f, 30.0f, 45.0f, 89.0f, -20.0f};
    return QxBevelProperty(rng.between(0, 2), size, rng.oneIn(3) ? 0.05f : 10.0f * rng.unit(), rng.between(0, 1),
                           rng.between(0, 1), rng.oneIn(2) ? 0 : rng.between(0, 6), 1.0f,
                           static_cast<float>(rng.between(-400, 400)), altitudes[rng.below(5)],
                           rng.oneIn(2) ? rng.next32() | 0xFF000000u : rng.next32(), 1.0f,
                           rng.oneIn(2) ? rng.next32() | 0xFF000000u : rng.next32(), 1.0f);
}

QxBevelProperty plainRecord(int style, float size, int technique, int soften = 0) {
    return QxBevelProperty(style, size, 3.0f, 1, technique, soften, 1.0f, 120.0f, 30.0f, 0xFFFFFFFFu, 1.0f, 0xFF000000u,
                           1.0f);
}

TEST(Bevel, EqualsThePlainLoopsOnRandomPictures) {
    const float sizes[] = {0.0f, 0.9f, 1.0f, 2.0f, 3.7f, 5.0f, 9.0f, 14.0f, 15.0f, 17.0f, 24.0f, -1.0f};
    for (uint32_t seed = 0; seed < 400; ++seed) {
        Rng rng(seed);
        CorePicture picture = CorePicture::random(rng, 67, 40);
        if (rng.oneIn(2)) picture.inkRing(2.0f + 15.0f * rng.unit(), 4);
        picture.rectAtRandom(rng, 3);
        const QxBevelProperty record = randomRecord(rng, sizes[rng.below(12)]);
        const int32_t layerMode = rng.between(0, 1);

        ASSERT_TRUE(test::drawsLike<QxBevel>(test::reference::bevel, picture, record, layerMode, "seed", seed, "size",
                                             record.size, "style", record.style, "technique", record.technique));
    }
}

TEST(Bevel, WideBandsAndLongLinesEqualThePlainLoops) {
    for (const int style : {0, 1}) {
        CorePicture beyondTheRootTable(50, 40);
        beyondTheRootTable.inkRing(14, 5);
        EXPECT_TRUE(test::drawsLike<QxBevel>(test::reference::bevel, beyondTheRootTable, plainRecord(style, 53, 1), 0,
                                             "hard, style", style));
        // So long that the transform rounds. Dots up to a band apart, so that crossings lie everywhere along the line.
        Rng rng(static_cast<uint64_t>(style));
        CorePicture line(9000, 3);
        for (int x = 0; x < 9000; x += rng.between(1, 23)) line.ink(x, rng.between(0, 2)) = rng.byte();
        EXPECT_TRUE(
            test::drawsLike<QxBevel>(test::reference::bevel, line, plainRecord(style, 15, 0), 0, "long, style", style));
    }
}

TEST(Bevel, BandsFarWiderThanThePictureEndSoon) {
    for (const int style : {0, 1})
        for (const float size : {400.0f, 1e4f, 1e6f}) {
            CorePicture hard(60, 50);
            hard.inkRing(14, 5);
            CorePicture smooth = hard;
            test::drawWith<QxBevel>(hard, plainRecord(style, size, 1));
            EXPECT_FALSE(hard.blank()) << size;
            if (size < 1e4f) test::drawWith<QxBevel>(smooth, plainRecord(style, size, 0));
        }
}

TEST(Bevel, PassesWithoutMapsDoNothing) {
    EXPECT_EQ(0, QxBevel::partialDT(nullptr));
    EXPECT_EQ(0, QxBevel::partialLightProcess(nullptr));
    EXPECT_EQ(0, QxBevel::partialBlur(nullptr));
    float line[2] = {3.0f, 4.0f};
    QxBevel::dt1D(line, nullptr, 2);
    QxBevel::dt1D(nullptr, line, 2);
    QxBevel::dt1D(line, line + 1, -1);
    EXPECT_EQ(3.0f, line[0]);
    EXPECT_EQ(4.0f, line[1]);
    uint8_t map[4] = {1, 2, 3, 4}, blurred[4] = {9, 9, 9, 9};
    QxBevel::blur(nullptr, blurred, 2, 2, 1);
    QxBevel::blur(map, nullptr, 2, 2, 1);
    QxBevel::blur(map, blurred, std::numeric_limits<int>::min(), 2, 3);
    for (const uint8_t value : blurred) EXPECT_EQ(9, value);
}

TEST(Bevel, OffsetIsTheRoundedSizeAndTheSoftening) {
    const struct {
        float size;
        int soften, offset;
    } cases[] = {{4.4f, 3, 7}, {4.5f, 3, 8}, {0.0f, 0, 0}, {5.0f, 20, 21}, {kNaN, 2, 2}};
    QxBevel core;
    for (const auto& c : cases) {
        QxBevelProperty record = plainRecord(0, c.size, 0, c.soften);
        core.setProperty(&record);
        EXPECT_EQ(c.offset, core.getOffset()) << c.size;
    }
}

TEST(BevelDistances, OneDimensionIsTheLowerEnvelopeOfParabolas) {
    Rng rng(9);
    for (int n = 1; n <= 40; ++n) {
        std::vector<float> f, d(static_cast<size_t>(n), -1.0f);
        for (int i = 0; i < n; ++i) f.push_back(rng.oneIn(3) ? 1e20f : static_cast<float>(rng.below(60)));
        QxBevel::dt1D(d.data(), f.data(), n);
        for (int q = 0; q < n; ++q) {
            float best = 1e20f;
            for (int v = 0; v < n; ++v)
                best = std::min(best, f[static_cast<size_t>(v)] + static_cast<float>((q - v) * (q - v)));
            EXPECT_EQ(best, d[static_cast<size_t>(q)]) << "sample " << q << " of " << n;
        }
    }
    // Far along a line the crossings are rounded, and the rounding decides; plain loops do the same operations.
    const int n = 9000;
    std::vector<float> f(n, 1e20f), d(n), want(n);
    for (int i = 0; i < 500; ++i)
        f[static_cast<size_t>(rng.between(6000, n - 1))] = static_cast<float>(rng.below(5000));
    QxBevel::dt1D(d.data(), f.data(), n);
    test::reference::squaredDistances(want.data(), f.data(), n);
    EXPECT_EQ(want, d);
}

TEST(BevelDistances, PartialPassRefinesItsRowsInRasterOrder) {
    Rng rng(11);
    for (const int radius : {0, 1, 3, 8, 1000000}) {
        GuardedPlaneF map(17, 12, 0.0f, 0), want = map;
        // Values below 0 spread on: what a row has been given, later pixels of the same pass read.
        for (int y = 0; y < 12; ++y)
            for (int x = 0; x < 17; ++x) {
                map.at(x, y) = rng.oneIn(4) ? rng.unit() : rng.oneIn(9) ? 0.0f : rng.oneIn(30) ? -2.5f : 20.0f;
                want.at(x, y) = map.at(x, y);
            }
        BevelDistanceWork work{map.view().data, 12, 17, radius, 3, 9};
        EXPECT_EQ(0, QxBevel::partialDT(&work));
        test::reference::refine(want.view().data, 17, 12, radius, 3, 9);
        EXPECT_SAME_PLANE(want, map, "radius", radius);
    }
}

TEST(BevelLight, KeepsTheMapsAtTheBandsEndAndOutsideItsRanges) {
    GuardedPlaneF distance(9, 7, 4.0f, 0);
    for (int y = 0; y < 7; ++y)
        for (int x = 0; x < 4; ++x) distance.at(x, y) = static_cast<float>(x);
    GuardedPlane8 shadow(9, 7, 7, 0), highlight(9, 7, 9, 0);
    // Light from the left at 30 degrees over a slope that rises to the right: h 1, so the normal leans half over.
    BevelLightWork work{shadow.view().data,
                        highlight.view().data,
                        9,
                        4,
                        1.0f,
                        0.8f,
                        0.0f,
                        0.6f,
                        255,
                        128,
                        0,
                        distance.view().data,
                        1,
                        8,
                        2,
                        5};
    EXPECT_EQ(0, QxBevel::partialLightProcess(&work));
    for (int y = 0; y < 7; ++y)
        for (int x = 0; x < 9; ++x) {
            const bool lit = x >= 1 && x < 4 && y >= 2 && y < 5;
            EXPECT_EQ(lit, shadow.at(x, y) != 7) << x << ", " << y;
            EXPECT_EQ(lit, highlight.at(x, y) != 9) << x << ", " << y;
        }
    // (0.6 + 0.8) / sqrt 2 is 0.99 of full light: s = 252, strength 4 - 2 = 2.
    EXPECT_EQ(((128 * 253 >> 8) + 1) * 2 >> 8, highlight.at(2, 3));
    EXPECT_EQ(((255 * 3 >> 8) + 1) * 2 >> 8, shadow.at(2, 3));
}

TEST(BevelBlur, WholeImageCallLeavesTheFrame) {
    Rng rng(3);
    for (const int radius : {0, 1, 4, 9}) {
        const int width = 30, height = 25;
        GuardedPlane8 src = test::randomCoverage(rng, width, height, 0), dst(width, height, 77, 0), want = dst;
        const std::vector<uint8_t> blurred = test::reference::blurred(
            std::vector<uint8_t>(src.view().data, src.view().data + width * height), width, height, radius);
        for (int y = radius; y < height - radius; ++y)
            for (int x = radius; x < width - radius; ++x) want.at(x, y) = blurred[static_cast<size_t>(y * width + x)];
        QxBevel::blur(src.view().data, dst.view().data, width, height, radius);
        EXPECT_SAME_PLANE(want, dst, "radius", radius);
    }
}

}  // namespace
}  // namespace QxFontEffect
