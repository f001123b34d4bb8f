#include <gtest/gtest.h>

#include "sample_text.h"

namespace {

using android::Paint;
using namespace sample;

TEST(Paint, StartsLikeTheDevices) {
    const Paint paint;
    EXPECT_EQ(paint.getColor(), 0xFF000000u);
    EXPECT_EQ(paint.getStyle(), SkPaint::kFill_Style);
    EXPECT_EQ(paint.getBlendMode(), SkBlendMode::kSrcOver);
    EXPECT_EQ(paint.getSkFont().getEdging(), SkFont::Edging::kAlias);
    EXPECT_EQ(paint.getSkFont().getSize(), 12.0f);
    EXPECT_EQ(paint.getJavaFlags(), 0u);
    EXPECT_EQ(paint.getTextAlign(), Paint::kLeft_Align);
}

TEST(Paint, FlagsSetAndClearTheirSwitches) {
    Paint paint;
    paint.setJavaFlags(0xFFFFFFFF);
    EXPECT_EQ(paint.getJavaFlags(), 0xDFFu);  // bits without a meaning are dropped
    EXPECT_EQ(paint.getSkFont().getEdging(), SkFont::Edging::kAntiAlias);
    EXPECT_TRUE(paint.getSkFont().isEmbolden());
    for (uint32_t bit = 1; bit <= 0x800; bit <<= 1) {
        paint.setJavaFlags(bit);
        EXPECT_EQ(paint.getJavaFlags(), bit & 0xDFFu);
    }
    paint.getSkFont().setEmbolden(true);
    paint.setJavaFlags(0x503);
    EXPECT_FALSE(paint.getSkFont().isEmbolden());
    paint.reset();
    EXPECT_EQ(paint.getJavaFlags(), 0u);
}

TEST(MinikinFontSkia, FakeryAddsToTheFontsOwn) {
    const auto font = installedFont(testsupport::kRobotoRegular);
    SkFont skFont;
    skFont.setSkewX(-0.5f);
    skFont.setEmbolden(true);
    android::MinikinFontSkia::populateSkFont(&skFont, font.get(), minikin::FontFakery(false, true));
    EXPECT_EQ(skFont.getSkewX(), -0.75f);
    EXPECT_TRUE(skFont.isEmbolden());
    EXPECT_EQ(skFont.getTypeface(), static_cast<android::MinikinFontSkia*>(font.get())->GetSkTypeface());
}

TEST(MinikinFontSkia, FlagsOfAFontSurviveTheirPacking) {
    SkFont font;
    font.setEdging(SkFont::Edging::kSubpixelAntiAlias);
    font.setHinting(SkFontHinting::kSlight);
    font.setLinearMetrics(true);
    font.setEmbeddedBitmaps(true);
    font.setBaselineSnap(false);
    SkFont unpacked;
    android::MinikinFontSkia::unpackFontFlags(&unpacked, android::MinikinFontSkia::packFontFlags(font));
    EXPECT_EQ(unpacked, font);
}

TEST(MinikinUtils, FontRunsPutBackSlantAndWeightButNotTheTypeface) {
    Paint paint = devicePaint();
    paint.getSkFont().setSkewX(-0.1f);
    // Italic and bold are wanted: Roboto has the weight and leans, the Han font has neither.
    const auto typeface = typefaceOf(deviceFamilies(), 700, 1);
    const minikin::Layout layout = layOut(u"A漢", paint, *typeface);
    struct Run {
        size_t first, end;
        float skew;
        bool embolden;
    };
    std::vector<Run> runs;
    auto record = [&](size_t first, size_t end) {
        runs.push_back({first, end, paint.getSkFont().getSkewX(), paint.getSkFont().isEmbolden()});
    };
    android::MinikinUtils::forFontRun(layout, &paint, record);
    ASSERT_EQ(runs.size(), 2u);
    EXPECT_EQ(runs[0].end, runs[1].first);
    EXPECT_FALSE(runs[0].embolden);
    EXPECT_TRUE(runs[1].embolden);
    EXPECT_FLOAT_EQ(runs[1].skew, -0.35f);
    EXPECT_EQ(paint.getSkFont().getSkewX(), -0.1f);
    EXPECT_FALSE(paint.getSkFont().isEmbolden());
    EXPECT_EQ(paint.getSkFont().getTypeface(),
              static_cast<const android::MinikinFontSkia*>(layout.getFont(1))->GetSkTypeface());

    runs.clear();
    android::MinikinUtils::forFontRun(minikin::Layout(), &paint, record);
    EXPECT_TRUE(runs.empty());
}

}  // namespace
