#include "effect/QxPattern.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "effect/core_picture.h"
#include "pixel/QxBlender.h"
#include "support/planes.h"
#include "support/reference/pattern_reference.h"

namespace QxFontEffect {
namespace {

using test::CorePicture;
using test::Rng;

QxBitmap randomPattern(Rng& rng, int width, int height) {
    QxBitmap pattern(static_cast<unsigned>(width), static_cast<unsigned>(height), 4);
    for (size_t i = 0; i < size_t{4} * pattern.width * pattern.height; ++i)
        pattern.pixels[i] = rng.oneIn(3) ? uint8_t{255} : rng.byte();
    return pattern;
}

void setPattern(QxPattern& core, QxBitmap* pattern, float scale, float opacity) {
    QxPatternProperty record(pattern, scale, opacity);
    core.setProperty(&record);
}

// A picture with every pixel inked, after a fill with this pattern.
CorePicture filled(int width, int height, QxBitmap* pattern, float scale, float opacity) {
    CorePicture picture(width, height);
    picture.inkAll(1);
    test::drawWith<QxPattern>(picture, QxPatternProperty(pattern, scale, opacity));
    return picture;
}

void drawPlainly(const QxPatternProperty& record, const ParamPostProcessing& p) {
    const QxRect& rect = *p.textRect;
    const int width = rect.right - rect.left;
    std::vector<uint32_t> pixels =
        test::patternPixelsRef(*p.srcBitmap, rect, *record.pattern, record.scale, record.opacity);
    QxBlender::drawBitmapBlend32(rect.left, rect.top, p.dstBitmap, pixels.data(), width, rect.bottom - rect.top, width,
                                 QXE_BLEND_DST_OVER);
}

TEST(Pattern, EqualsThePlainLoopsOnRandomPictures) {
    const float scales[] = {0.1f, 0.3f, 0.5f, 0.99f, 1.0f, 1.1f, 2.0f, 3.7f, 10.0f};
    for (uint32_t seed = 0; seed < 1500; ++seed) {
        Rng rng(seed);
        CorePicture picture = CorePicture::random(rng, 67, 40);
        picture.rectAtRandom(rng);
        const float scale = rng.oneIn(2) ? scales[rng.below(9)] : 0.1f + 9.9f * rng.unit();
        // Each side of the tile has at least a pixel.
        const int least = static_cast<int>(std::ceil(1.0f / scale));
        QxBitmap pattern = randomPattern(rng, rng.between(least, least + 12), rng.between(least, least + 12));
        const float opacity = rng.oneIn(3) ? 1.0f : rng.unit();

        ASSERT_TRUE(test::drawsLike<QxPattern>(drawPlainly, picture, QxPatternProperty(&pattern, scale, opacity), 0,
                                               "seed", seed, "scale", scale, "pattern", pattern.width, "x",
                                               pattern.height));
    }
    // A tile too large to be kept.
    Rng rng(1);
    QxBitmap pattern = randomPattern(rng, 400, 200);
    CorePicture picture(900, 1000);
    picture.inkAtRandom(rng);
    EXPECT_TRUE(test::drawsLike<QxPattern>(drawPlainly, picture, QxPatternProperty(&pattern, 2.0f, 0.5f), 0));
}

TEST(Pattern, DrawsNothingWithoutSomethingToDraw) {
    Rng rng(3);
    QxBitmap good = randomPattern(rng, 4, 4);
    QxBitmap grey(4, 4, 1);
    QxBitmap empty;
    QxBitmap flat(4, 0, 4);
    QxBitmap lost = good;
    std::free(lost.pixels);
    lost.pixels = nullptr;
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const struct {
        const char* name;
        QxBitmap* pattern;
        float scale, opacity;
        int width, height;
        bool draws;
    } rows[] = {
        {"the smallest scale", &good, 0.1f, 1, 1, 1, true},
        {"a smaller scale", &good, 0.099f, 1, 1, 1, false},
        {"a negative scale", &good, -5, 1, 9, 9, false},
        {"no number for a scale", &good, nan, 1, 9, 9, false},
        {"an endless scale", &good, std::numeric_limits<float>::infinity(), 1, 9, 9, true},
        {"no number for an opacity", &good, 1, nan, 9, 9, false},
        {"a thin tile on a box", &good, 0.2f, 1, 9, 9, false},
        {"a thin tile on one column", &good, 0.2f, 1, 1, 9, false},
        {"a thin tile on one pixel", &good, 0.2f, 1, 1, 1, true},
        {"no pattern", nullptr, 1, 1, 9, 9, false},
        {"a grey pattern", &grey, 1, 1, 9, 9, false},
        {"an empty pattern", &empty, 1, 1, 9, 9, false},
        {"a pattern without rows", &flat, 1, 1, 1, 1, false},
        {"a pattern without memory", &lost, 1, 1, 9, 9, false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(!filled(row.width, row.height, row.pattern, row.scale, row.opacity).blank(), row.draws) << row.name;

    // An opacity out of range is limited, not wrapped.
    good.pixels[0] = 200;
    EXPECT_EQ(filled(2, 2, &good, 1, 100.0f).out(0, 0, 3), 255);
    EXPECT_TRUE(filled(2, 2, &good, 1, -100.0f).blank());
}

TEST(Pattern, KeepsItsOwnCopiesAtNewAddresses) {
    Rng rng(5);
    QxBitmap pattern = randomPattern(rng, 3, 3);
    QxPattern core;
    setPattern(core, &pattern, 1, 1);
    QxBitmap* const first = core.property->pattern;
    setPattern(core, &pattern, 1, 1);
    QxBitmap* const second = core.property->pattern;
    EXPECT_NE(first, &pattern);
    EXPECT_NE(first, second);
    pattern.pixels[0] ^= 255;
    EXPECT_NE(second->pixels[0], pattern.pixels[0]);

    core.setProperty(core.property);  // its own record must survive long enough to be copied
    EXPECT_NE(core.property->pattern, second);
    EXPECT_EQ(core.property->pattern->pixels[0], second->pixels[0]);
    setPattern(core, nullptr, 1, 1);
    EXPECT_EQ(core.property->pattern, nullptr);
}

}  // namespace
}  // namespace QxFontEffect
