#include <cmath>
#include <limits>

#include "drawn_text.h"
#include "platform/portable/skia/coverage_gamma.h"
#include "support/random.h"

using namespace testsupport;

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

/// The fonts of the rows below, 48 px, antialiased, embedded bitmaps on, as text of an app comes.
SkFont textFont(const std::string& file, int index = 0) {
    SkFont font(openFont(file, index), 48);
    font.setEmbeddedBitmaps(true);
    return font;
}

using Change = void (*)(SkFont&);
void asItIs(SkFont&) {}
void bold(SkFont& font) {
    font.setEmbolden(true);
}
void italic(SkFont& font) {
    font.setSkewX(-0.25f);
}
void aliased(SkFont& font) {
    font.setEdging(SkFont::Edging::kAlias);
}
void subpixel(SkFont& font) {
    font.setSubpixel(true);
}
void large(SkFont& font) {
    font.setSize(300);
}
void largeAliased(SkFont& font) {
    large(font);
    aliased(font);
}
void mirrored(SkFont& font) {
    font.setScaleX(-1);
}

}  // namespace

TEST(Glyph, AliasedMasksHaveNothingBetweenNoneAndFull) {
    for (Change change : {aliased, largeAliased}) {
        SkFont font = textFont(kRobotoRegular);
        change(font);
        CoveragePlane plane(200, 240);
        plane.canvas().drawTextBlob(blobOf(font, glyphOf(kRobotoRegular, 'S')), 0.3f, 225.4f, SkPaint());
        EXPECT_TRUE(std::all_of(plane.pixels.begin(), plane.pixels.end(), [](int c) { return c == 0 || c == 255; }));
        EXPECT_GT(plane.sum(), 0);
    }
}

TEST(Glyph, GammaMakesMasksLighterAsForBlackText) {
    const uint8_t* table = portable::blackCoverageGamma();
    const int points[][2] = {{0, 0},     {32, 23},   {64, 48},   {96, 73},   {128, 101}, {160, 130},
                             {192, 162}, {224, 199}, {240, 222}, {254, 250}, {255, 255}};
    for (const auto& point : points) EXPECT_EQ(table[point[0]], point[1]) << point[0];
    for (int c = 0; c < 255; ++c) EXPECT_LE(table[c], table[c + 1]) << c;
}

TEST(Glyph, AboveLargestMaskSizeMetricsAreThoseOf64PixelsEnlarged) {
    SkFont font = textFont(kRobotoRegular);
    large(font);
    const SkGlyphID glyph = glyphOf(kRobotoRegular, 'H');
    // Unhinted at 64 px: 5, -46, 41, 0 and 45.65625.
    EXPECT_EQ(boundsOf(font, glyph), SkRect::MakeLTRB(23.4375f, -215.625f, 192.1875f, 0));
    EXPECT_EQ(advanceOf(font, glyph), 45.65625f * 300 / 64);

    // The same holds when only the stretched width passes 256 px; exactly 256 is still a mask.
    font.setSize(200);
    font.setScaleX(1.5f);
    EXPECT_EQ(advanceOf(font, glyph), 45.65625f * 1.5f * 200 / 64);
    font.setSize(256);
    font.setScaleX(1);
    EXPECT_EQ(advanceOf(font, glyph), std::floor(advanceOf(font, glyph)));
}

TEST(Glyph, PathsKeepTheirExactPlaceAndHaveNoGamma) {
    SkFont font = textFont(kRobotoRegular);
    large(font);
    const sk_sp<SkTextBlob> blob = blobOf(font, glyphOf(kRobotoRegular, 'H'));
    const auto drawnAt = [&](float x) {
        CoveragePlane plane(220, 220);
        plane.canvas().drawTextBlob(blob, x, 217, SkPaint());
        return plane;
    };
    // The left stem starts inside a column: moving by a quarter of a pixel changes that column by a quarter.
    const CoveragePlane still = drawnAt(0), quarter = drawnAt(0.25f);
    int column = 0;
    while (still.at(column, 200) == 0) ++column;
    EXPECT_NEAR(still.at(column, 200) - quarter.at(column, 200), 64, 1);
    // Whatever the place, the ink is the same, which the gamma curve would not allow.
    EXPECT_NEAR(static_cast<double>(still.sum()), static_cast<double>(quarter.sum()),
                0.0005 * static_cast<double>(still.sum()));
}

TEST(Glyph, OriginsRoundHalfUpOrToQuarters) {
    SkFont font = textFont(kRobotoRegular);
    const SkGlyphID glyph = glyphOf(kRobotoRegular, 'o');
    const auto drawnAt = [&](float glyphX, float x, float y) {
        CoveragePlane plane(50, 60);
        plane.canvas().drawTextBlob(blobOf(font, {glyph}, {{glyphX, 0}}), x, y, SkPaint());
        return plane.pixels;
    };
    EXPECT_EQ(drawnAt(0, 3.49f, 40.49f), drawnAt(0, 3, 40));
    EXPECT_EQ(drawnAt(0, 3.5f, 40.5f), drawnAt(0, 4, 41));
    EXPECT_EQ(drawnAt(5.75f, -2.25f, 40), drawnAt(0, 4, 40)) << "positions are added before rounding";
    EXPECT_EQ(drawnAt(0, -0.5f, 40), drawnAt(0, 0, 40));

    font.setSubpixel(true);
    EXPECT_EQ(drawnAt(0, 3.12f, 40), drawnAt(0, 3, 40));
    EXPECT_EQ(drawnAt(0, 3.13f, 40), drawnAt(0, 3.25f, 40));
    EXPECT_NE(drawnAt(0, 3.25f, 40), drawnAt(0, 3, 40));
    EXPECT_EQ(drawnAt(0, 3.9f, 40.49f), drawnAt(0, 4, 40));
}

TEST(Glyph, MasksAddUpAndPaintAlphaScalesThem) {
    const SkFont font = textFont(kRobotoRegular);
    const sk_sp<SkTextBlob> blob = blobOf(font, glyphOf(kRobotoRegular, 'g'));
    CoveragePlane mask(40, 60);
    mask.canvas().drawTextBlob(blob, 0, 40, SkPaint());

    SkPaint half;
    half.setAlpha(0x80);
    CoveragePlane halved(40, 60), over(40, 60, 100);
    halved.canvas().drawTextBlob(blob, 0, 40, half);
    over.canvas().drawTextBlob(blob, 0, 40, SkPaint());
    for (size_t i = 0; i < mask.pixels.size(); ++i) {
        const int c = mask.pixels[i];
        EXPECT_NEAR(halved.pixels[i], c * 128 / 255.0, 1.01) << i;
        EXPECT_EQ(over.pixels[i], (255 * c + 100 * (255 - c) + 255) >> 8) << i;
    }
}

TEST(Glyph, ClippedDrawingEqualsAWindowOnTheWholePicture) {
    const struct {
        const char* file;
        unsigned character;
        int index;
    } glyphs[] = {{kRobotoRegular, 'S', 0}, {kNotoCjk, 0x6F22, 2}, {kNotoEmoji, 0x1F600, 0}};
    QxFontEffect::test::Rng rng(1);
    for (const auto& g : glyphs)
        for (Change change : {asItIs, aliased, bold, italic, subpixel, mirrored, large, largeAliased}) {
            SkFont font = textFont(g.file, g.index);
            change(font);
            const sk_sp<SkTextBlob> blob = blobOf(font, glyphOf(g.file, g.character, g.index));
            const float x = static_cast<float>(rng.between(0, 400)) / 4,
                        y = static_cast<float>(rng.between(200, 1000)) / 4;
            CoveragePlane whole(400, 400);
            whole.canvas().drawTextBlob(blob, x, y, SkPaint());
            ASSERT_GT(whole.sum(), 0);

            for (int round = 0; round < 3; ++round) {
                const int left = rng.between(0, 200), top = rng.between(0, 200);
                const int right = left + rng.between(1, 199), bottom = top + rng.between(1, 199);
                CoveragePlane window(400, 400);
                SkCanvas canvas = window.canvas();
                canvas.clipRect(SkRect::MakeLTRB(static_cast<float>(left), static_cast<float>(top),
                                                 static_cast<float>(right), static_cast<float>(bottom)),
                                SkClipOp::kIntersect);
                canvas.drawTextBlob(blob, x, y, SkPaint());
                int wrong = 0;
                for (int i = 0; i < 400 * 400; ++i) {
                    const int column = i % 400, row = i / 400;
                    const bool inside = column >= left && column < right && row >= top && row < bottom;
                    const size_t at = static_cast<size_t>(i);
                    wrong += window.pixels[at] != (inside ? whole.pixels[at] : 0);
                }
                EXPECT_EQ(wrong, 0) << g.file << " window " << left << "," << top << "," << right << "," << bottom;
            }
        }
}

TEST(Glyph, ColouredGlyphsLeaveAFilledSilhouetteOfTheirSize) {
    const SkGlyphID glyph = glyphOf(kNotoEmoji, 0x1F600);
    double previous = 0;
    for (float size : {24.f, 48.f, 109.f, 300.f}) {
        SkFont font = textFont(kNotoEmoji);
        font.setEmbeddedBitmaps(false);  // not heeded: the font has nothing else
        font.setSize(size);
        CoveragePlane plane(400, 400);
        plane.canvas().drawTextBlob(blobOf(font, glyph), 10, 350, SkPaint());

        // A face is a disc: solid in the middle whatever its colours are, and its area goes with the square of size.
        const SkRect bounds = boundsOf(font, glyph);
        EXPECT_EQ(plane.at(10 + static_cast<int>(bounds.fLeft + bounds.width() / 2),
                           350 + static_cast<int>(bounds.fTop + bounds.height() / 2)),
                  255);
        const double area = static_cast<double>(plane.sum()) / 255 / (size * size);
        EXPECT_NEAR(area, previous == 0 ? area : previous, 0.003) << size;
        previous = area;
        EXPECT_NEAR(advanceOf(font, glyph), 1.25 * size, 0.01 * size);
    }
}

TEST(Glyph, SlantMovesTheRowsOfColouredGlyphs) {
    SkFont font = textFont(kNotoEmoji);
    const SkGlyphID glyph = glyphOf(kNotoEmoji, 0x1F600);
    const int baseline = 60;
    const auto centres = [&] {
        CoveragePlane plane(120, 80);
        plane.canvas().drawTextBlob(blobOf(font, glyph), 20, baseline, SkPaint());
        std::vector<double> rows;
        for (int y = 20; y < 65; ++y) {
            double ink = 0, moment = 0;
            for (int x = 0; x < 120; ++x) {
                ink += plane.at(x, y);
                moment += plane.at(x, y) * x;
            }
            rows.push_back(moment / ink);
        }
        return rows;
    };
    const std::vector<double> upright = centres();
    font.setSkewX(-0.25f);
    const std::vector<double> slanted = centres();
    for (size_t i = 0; i < upright.size(); ++i)
        EXPECT_NEAR(slanted[i] - upright[i], 0.25 * (baseline - (20.5 + static_cast<double>(i))), 0.02) << i;
}

TEST(Glyph, NegativeScaleMirrors) {
    SkFont font = textFont(kRobotoRegular);
    mirrored(font);
    const SkGlyphID glyph = glyphOf(kRobotoRegular, 'H');
    EXPECT_EQ(advanceOf(font, glyph), -34.2421875f);
    EXPECT_EQ(boundsOf(font, glyph), SkRect::MakeLTRB(-31, -35, -3, 0));
}

TEST(Glyph, NothingIsDrawnWhereNothingCanBe) {
    const struct {
        const char* what;
        float size, scaleX, skewX, x, y;
        bool measures;
    } rows[] = {
        {"size 0", 0, 1, 0, 20, 40, false},
        {"negative size", -48, 1, 0, 20, 40, false},
        {"size NaN", kNan, 1, 0, 20, 40, false},
        {"size infinite", kInfinity, 1, 0, 20, 40, false},
        {"size below FreeType's unit", 0.01f, 1, 0, 20, 40, false},
        {"huge size", 3e38f, 1, 0, 20, 40, true},
        {"size beyond the rasteriser", 1e6f, 1, 0, 20, 40, true},
        {"scale 0", 48, 0, 0, 20, 40, false},
        {"scale NaN", 48, kNan, 0, 20, 40, false},
        {"scale infinite", 48, kInfinity, 0, 20, 40, false},
        {"size times scale infinite", 3e38f, 200, 0, 20, 40, false},
        {"skew NaN", 48, 1, kNan, 20, 40, false},
        {"skew infinite", 48, 1, -kInfinity, 20, 40, false},
        {"x NaN", 48, 1, 0, kNan, 40, true},
        {"y NaN", 48, 1, 0, 20, kNan, true},
        {"x infinite", 48, 1, 0, kInfinity, 40, true},
        {"y huge", 48, 1, 0, 20, 3e38f, true},
        {"x huge, path", 300, 1, 0, -3e38f, 40, true},
        {"y NaN, path", 300, 1, 0, 20, kNan, true},
        {"x beside the canvas", 48, 1, 0, -2e9f, 40, true},
    };
    for (const char* file : {kRobotoRegular, kNotoEmoji}) {
        const bool isPicture = file == std::string(kNotoEmoji);
        const SkGlyphID glyph = glyphOf(file, isPicture ? 0x1F600 : 'H');
        for (const auto& row : rows) {
            SCOPED_TRACE(std::string(file) + ", " + row.what);
            if (isPicture && row.size == 1e6f) continue;  // a picture can be enlarged to any size
            SkFont font = textFont(file);
            font.setSize(row.size);
            font.setScaleX(row.scaleX);
            font.setSkewX(row.skewX);
            CoveragePlane plane(100, 100, 7);
            plane.canvas().drawTextBlob(blobOf(font, glyph), row.x, row.y, SkPaint());
            EXPECT_EQ(plane.sum(), 7 * 100 * 100);
            EXPECT_TRUE(std::isfinite(advanceOf(font, glyph)));
            if (!isPicture) {
                EXPECT_EQ(advanceOf(font, glyph) != 0, row.measures);
            }
        }
    }
}

TEST(Glyph, UnknownGlyphsAndFontsWithoutTypefaceMeasureNothing) {
    SkFont font = textFont(kRobotoRegular);
    EXPECT_EQ(advanceOf(font, 65535), 0);
    EXPECT_EQ(boundsOf(font, 65535), SkRect::MakeEmpty());
    EXPECT_EQ(advanceOf(SkFont(), 40), 0);

    CoveragePlane plane(50, 50);
    plane.canvas().drawTextBlob(blobOf(SkFont(), 40), 5, 45, SkPaint());
    plane.canvas().drawTextBlob(blobOf(font, 65535), 5, 45, SkPaint());
    plane.canvas().drawTextBlob(nullptr, 5, 45, SkPaint());
    EXPECT_EQ(plane.sum(), 0);
}
