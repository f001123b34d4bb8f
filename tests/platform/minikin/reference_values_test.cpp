#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "sample_text.h"

// What a device prints for these texts in these very font files, and the sum of the bytes of the line it draws.
// Every number is exact; a tolerance would hide a wrong rounding.

namespace {

using minikin::Bidi;
using minikin::MinikinRect;
using namespace sample;

struct Reference {
    const char* name;
    std::u16string text;
    std::function<void(android::Paint&)> change;
    int weight;
    int italic;
    Bidi bidi;
    std::vector<float> glyphX;
    float advance;
    MinikinRect bounds;
    int maskSum;
};

void unchanged(android::Paint&) {}

TEST(ReferenceValues, PositionsBoxesAndMasksEqualTheDevices) {
    const Families families = deviceFamilies();
    const auto aliased = [](android::Paint& paint) { paint.setJavaFlags(0x502); };
    const auto stretched = [](android::Paint& paint) { paint.getSkFont().setScaleX(2.0f); };
    constexpr Bidi kLeft = Bidi::DEFAULT_LTR;
    constexpr Bidi kRight = Bidi::DEFAULT_RTL;
    const Reference references[] = {
        {"two letters", u"Ag", unchanged, 400, 0, kLeft, {0, 31}, 58, {0, -35, 55, 11}, 172363},
        {"aliased", u"Ag", aliased, 400, 0, kLeft, {0, 31}, 58, {0, -35, 55, 11}, 184875},
        {"regular", u"H", unchanged, 400, 0, kLeft, {0}, 34, {3, -35, 31, 0}, 91925},
        {"600 is drawn with 500", u"H", unchanged, 600, 0, kLeft, {0}, 34, {3, -35, 31, 0}, 117443},
        {"800 is drawn with 900", u"H", unchanged, 800, 0, kLeft, {0}, 34, {2, -35, 32, 0}, 159595},
        {"fake italic", u"H", unchanged, 400, 1, kLeft, {0}, 34.2421875f, {3, -35, 39, 0}, 89643},
        {"Arabic", u"سلام", unchanged, 400, 0, kLeft, {0, 23, 52}, 90, {0, -34, 88, 19}, 194206},
        {"blank first", u"123 ", unchanged, 400, 0, kRight, {0, 12, 39, 66}, 93, {16, -35, 90, 1}, 188665},
        {"ligatures", u"fi office", unchanged, 400, 0, kLeft, {0, 27, 39, 66, 107, 132}, 157, {0, -37, 156, 1}, 399084},
        {"fake bold Han", u"\u6F22", unchanged, 700, 0, kLeft, {0}, 48, {1, -43, 49, 5}, 282056},
        {"blank", u" ", unchanged, 400, 0, kLeft, {0}, 12, {0, 0, 0, 0}, 0},
        {"stretched", u"A", stretched, 400, 0, kLeft, {0}, 63, {1, -35, 62, 0}, 164811},
    };
    for (const Reference& wanted : references) {
        SCOPED_TRACE(wanted.name);
        android::Paint paint = devicePaint();
        wanted.change(paint);
        const auto typeface = typefaceOf(families, wanted.weight, wanted.italic);
        const minikin::Layout layout = layOut(wanted.text, paint, *typeface, wanted.bidi);

        std::vector<float> glyphX;
        for (int i = 0; i < static_cast<int>(layout.nGlyphs()); ++i) glyphX.push_back(layout.getX(i));
        EXPECT_EQ(glyphX, wanted.glyphX);
        EXPECT_EQ(layout.getAdvance(), wanted.advance);
        EXPECT_EQ(boundsOf(layout), wanted.bounds);
        EXPECT_EQ(LineMask(layout, paint).sum(), wanted.maskSum);
    }
}

TEST(ReferenceValues, FakeBoldWidensTheInkAndNotTheAdvance) {
    const auto typeface = typefaceOf({familyOf(installedFont(testsupport::kRobotoRegular))}, 700);
    const minikin::Layout layout = layOut(u"H", devicePaint(), *typeface);
    EXPECT_EQ(layout.getAdvance(), 34.0f);
    EXPECT_EQ(boundsOf(layout), MinikinRect(3, -36, 32, 0));
    EXPECT_EQ(LineMask(layout, devicePaint()).sum(), 124292);
}

TEST(ReferenceValues, MixedLineTakesSixFontRuns) {
    const auto typeface = typefaceOf(deviceFamilies());
    android::Paint paint = devicePaint();
    const minikin::Layout layout = layOut(u"Ag سلام 漢字 😀", paint, *typeface);
    EXPECT_EQ(layout.nGlyphs(), 11u);
    EXPECT_EQ(layout.getAdvance(), 339.765625f);
    EXPECT_EQ(boundsOf(layout), MinikinRect(0, -44, 340, 19));

    int runs = 0;
    auto countRun = [&runs](size_t, size_t) { ++runs; };
    android::MinikinUtils::forFontRun(layout, &paint, countRun);
    EXPECT_EQ(runs, 6);

    // Pictures are scaled by a filter of our own, so the emoji's share of the sum differs by a few levels. The
    // letters' share is exact: it is what the same line sums up to without the emoji.
    const int letters = LineMask(layOut(u"Ag سلام 漢字 ", paint, *typeface), paint).sum();
    EXPECT_EQ(letters, 172363 + 194206 + LineMask(layOut(u"漢字", paint, *typeface), paint).sum());
    EXPECT_NEAR(LineMask(layout, paint).sum(), 1212963, 20);
}

TEST(ReferenceValues, EmojiMetricsAreThoseOfItsTables) {
    const minikin::Layout layout = layOut(u"😀", devicePaint(), *typefaceOf(deviceFamilies()));
    EXPECT_EQ(layout.getAdvance(), 59.765625f);
    EXPECT_EQ(boundsOf(layout), MinikinRect(0, -44, 60, 12));
}

TEST(ReferenceValues, MarksAboveKeepTheirFractionsInTheBox) {
    const minikin::Layout layout = layOut(u"\u0628\u0651\u064E", devicePaint(), *typefaceOf(deviceFamilies()));
    EXPECT_EQ(boundsOf(layout).mTop, -37.3203125f);
}

TEST(ReferenceValues, KerningAndLeadingBlanksMoveTheInk) {
    const auto typeface = typefaceOf(deviceFamilies());
    EXPECT_EQ(layOut(u"VA", devicePaint(), *typeface).getX(1), 29.2421875f);
    EXPECT_EQ(boundsOf(layOut(u" Ag", devicePaint(), *typeface)).mLeft, 12.0f);
}

TEST(ReferenceValues, LinearMetricsAreNotFittedToPixels) {
    const auto typeface = typefaceOf(deviceFamilies());
    android::Paint paint = devicePaint(17.0f);
    EXPECT_EQ(layOut(u"Hamburg", paint, *typeface).getAdvance(), 70.84375f);
    paint.getSkFont().setLinearMetrics(true);
    EXPECT_EQ(layOut(u"Hamburg", paint, *typeface).getAdvance(), 70.3359375f);
}

TEST(ReferenceValues, LetterSpacingStandsHalfOnEachSide) {
    android::Paint paint = devicePaint();
    paint.setLetterSpacing(0.1f);
    const minikin::Layout layout = layOut(u"AB", paint, *typefaceOf(deviceFamilies()));
    EXPECT_FLOAT_EQ(layout.getX(0), 2.4f);
    EXPECT_FLOAT_EQ(layout.getX(1), 38.2f);
    EXPECT_FLOAT_EQ(layout.getAdvance(), 70.6f);
}

TEST(ReferenceValues, FractionsOfTheSizeAreDrawnButMeasuredOnlyByLinearMetrics) {
    const auto typeface = typefaceOf(deviceFamilies());
    const minikin::Layout layout = layOut(u"H", devicePaint(48.9f), *typeface);
    EXPECT_EQ(layout.getAdvance(), 34.0f);
    android::Paint linear = devicePaint(48.9f);
    linear.getSkFont().setLinearMetrics(true);
    EXPECT_GT(layOut(u"H", linear, *typeface).getAdvance(), 34.5f);
    EXPECT_NE(LineMask(layout, devicePaint(48.9f)).pixels, LineMask(layout, devicePaint(48.0f)).pixels);
}

}  // namespace
