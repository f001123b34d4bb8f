#include <gmock/gmock.h>

#include <array>
#include <climits>
#include <cmath>
#include <limits>

#include "support/captured_log.h"
#include "text/QxView.h"
#include "text/line_glyph.h"
#include "text/result_picture.h"

namespace QxFontEffect {
namespace {

TEST(ContentClip, TheEdgeTowardsWhichTheTextIsAlignedStaysOpen) {
    int32_t size[2] = {100, 50};
    QxView view;
    view.bitmapSize = size;
    view.SetPadding(3, 5, 7, 11);
    const struct {
        int gravity;
        int left, top, right, bottom;
    } rows[] = {
        {0x33, 0, 0, 93, 39},      // left, top
        {0x55, 3, 5, 100, 50},     // right, bottom
        {0x11, 3, 5, 93, 39},      // centred
        {0x77, 3, 5, 93, 39},      // fill
        {0x800033, 0, 0, 93, 39},  // start: the bits above do not matter
        {0, 3, 5, 93, 39},
    };
    for (const auto& row : rows) {
        view.gravity = row.gravity;
        const ContentClip clip = contentClip(&view, 100, 50);
        EXPECT_EQ(row.left, clip.left) << row.gravity;
        EXPECT_EQ(row.top, clip.top) << row.gravity;
        EXPECT_EQ(row.right, clip.right) << row.gravity;
        EXPECT_EQ(row.bottom, clip.bottom) << row.gravity;
    }
}

TEST(ContentClip, CrossedOrFarEdgesShowNothingOrEndAtThePicture) {
    int32_t size[2] = {100, 50};
    QxView view;
    view.bitmapSize = size;
    view.gravity = 0x11;
    const struct {
        int left, top, right, bottom;
        bool empty;
    } rows[] = {
        {60, 0, 60, 0, true},
        {50, 0, 50, 0, true},
        {0, 40, 0, 30, true},
        {INT_MAX, 0, INT_MAX, 0, true},
        {INT_MAX, INT_MIN, INT_MIN, INT_MAX, true},
        {INT_MIN, INT_MIN, INT_MIN, INT_MIN, false},
        {-5, -5, -5, -5, false},
    };
    for (const auto& row : rows) {
        view.SetPadding(row.left, row.top, row.right, row.bottom);
        const ContentClip clip = contentClip(&view, 100, 50);
        EXPECT_EQ(row.empty ? 0 : 100, clip.right - clip.left) << row.left;
        EXPECT_EQ(row.empty ? 0 : 50, clip.bottom - clip.top) << row.left;
    }
}

TEST(LineBox, TruncatesEachValueOnItsOwnAndSurvivesEveryFloat) {
    const float inf = std::numeric_limits<float>::infinity();
    const float nan = std::nanf("");
    const struct {
        float advance, top, bottom;
        int width, height, baseline;
    } rows[] = {
        {58.9f, -35.0f, 11.0f, 58, 46, 35},
        {10.0f, -37.3203f, 11.5f, 10, 48, 37},
        {10.0f, 5.5f, 9.4f, 10, 3, -5},  // wholly below the baseline
        {0.0f, 0.0f, 0.0f, 0, 0, 0},
        {-3.0f, -10.0f, 2.0f, 0, 12, 10},
        {10.0f, 4.0f, -4.0f, 10, 0, -4},
        {nan, nan, nan, 0, 0, 0},
        {inf, -inf, inf, INT_MAX, INT_MAX, INT_MAX},
        {1e20f, -1e20f, 0.0f, INT_MAX, INT_MAX, INT_MAX},
    };
    for (const auto& row : rows) {
        const LineBox box = lineBox(row.advance, minikin::MinikinRect(0, row.top, 1, row.bottom));
        EXPECT_EQ(row.width, box.width) << row.advance;
        EXPECT_EQ(row.height, box.height) << row.advance;
        EXPECT_EQ(row.baseline, box.top) << row.advance;
    }
}

TEST(View, RefusesNegativeSizesAndKeepsTheOldOnes) {
    test::CapturedLog log;
    int32_t size[2] = {0, 0};
    QxView view;
    view.bitmapSize = size;
    EXPECT_EQ(3, view.gravity);
    EXPECT_TRUE(view.SetSize(10, 20));
    EXPECT_FALSE(view.SetSize(11, -1));
    EXPECT_FALSE(view.SetSize(-1, 21));
    EXPECT_EQ(10, view.GetWidth());
    EXPECT_EQ(20, view.GetHeight());
    EXPECT_TRUE(view.SetBitmapWidth(0));
    EXPECT_TRUE(view.SetBitmapWidth(30));
    EXPECT_TRUE(view.SetBitmapHeight(40));
    EXPECT_FALSE(view.SetBitmapWidth(-1));
    EXPECT_FALSE(view.SetBitmapHeight(-2));
    EXPECT_EQ(30, view.GetBitmapWidth());
    EXPECT_EQ(40, view.GetDrawingBitmapSize()[1]);
    using test::isErrorLine;
    EXPECT_THAT(log.take(), ::testing::ElementsAre(isErrorLine("QxView", "SetSize() - size invalid"),
                                                   isErrorLine("QxView", "SetSize() - size invalid"),
                                                   isErrorLine("QxView", "SetBitmapWidht() - width[-1] is invalid"),
                                                   isErrorLine("QxView", "SetBitmapHeight() - height[-2] is invalid")));
    EXPECT_TRUE(view.SetPadding(-1, 2, 3, 4));
    EXPECT_THAT((std::array<int, 4>{view.paddingLeft, view.paddingTop, view.paddingRight, view.paddingBottom}),
                ::testing::ElementsAre(-1, 2, 3, 4));
}

}  // namespace
}  // namespace QxFontEffect
