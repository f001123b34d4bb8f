// Wide and long pictures. --gtest_also_run_disabled_tests runs a larger one with every effect too.
#include <gtest/gtest.h>
#include <hwui/MinikinUtils.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "effect/QxEffect.h"
#include "pixel/QxBitmap.h"
#include "support/captured_log.h"
#include "text/text_fixture.h"

namespace QxFontEffect {
namespace {

/// A picture that is still the text's own.
struct Drawn {
    const unsigned char* pixels;
    int width, height;

    const unsigned char* at(int x, int y) const {
        return pixels + (static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)) * 4;
    }
    /// Whether two rectangles of a size hold the same pixels.
    bool sameAt(int x1, int y1, const Drawn& other, int x2, int y2, int columns, int rows) const {
        for (int y = 0; y < rows; ++y)
            if (std::memcmp(at(x1, y1 + y), other.at(x2, y2 + y), static_cast<size_t>(columns) * 4) != 0) return false;
        return true;
    }
    bool inkIn(int left, int top, int right, int bottom) const {
        for (int y = top; y < bottom; ++y)
            for (int x = left; x < right; ++x)
                if (at(x, y)[3] != 0) return true;
        return false;
    }
};

class Line : public test::TextScene {
public:
    Line(const std::wstring& text, int width, int height, float size) : TextScene(text.c_str(), width, height) {
        android::Paint paint = GetPaint();
        paint.getSkFont().setSize(size);
        SetPaint(paint);
    }

    /// The whole text on one line with its baseline at (x, y), drawn.
    Drawn draw(int x, int y, int width, int height) {
        QxEffect& stack = *GetEffect();
        test::setLines(this, {test::newLine(x - stack.getLeftOffset(), y - stack.getTopOffset(), 0,
                                            GetText()->GetUTF16Size() - 1)});
        return {RenderTextEffect(width, height), width, height};
    }

    /// Where the line ended when it was drawn, relative to its start at 0.
    int advance() { return draw(0, 1, 1, 1).pixels == nullptr ? 0 : lastRight(); }

private:
    int lastRight() { return static_cast<const QxLineInfo*>(GetLineInfo()->Get(0))->bounds.right; }
};

/// Pixels from one letter to the next. Up to 256 px letters are hinted and stand on whole pixels.
int advanceOf(wchar_t letter, float size) {
    return Line(std::wstring(100, letter), 1, 1, size).advance() / 100;
}

void addLocalEffects(QxEffect& stack) {
    stack.addOuterShadowText(120, 6, 9, 0xFF203040u, 0.8f);
    stack.addStrokeText(5, 0xFFE0E0E0u, 1, 0, 1);
    stack.addInnerGlowText(4, 0xFFFFD040u, 0.9f, 0, nullptr);
}

// A row of equal letters looks the same from letter to letter, far out as well as near.
void drawEqualLetters(int width, int height, float size, void (*decorate)(QxEffect&)) {
    const int step = advanceOf(L'H', size);
    ASSERT_GT(step, 20);
    const int letters = (width - 200) / step;
    Line line(std::wstring(static_cast<size_t>(letters), L'H'), width, height, size);
    decorate(*line.GetEffect());
    const Drawn picture = line.draw(100, height * 3 / 4, width, height);
    ASSERT_NE(nullptr, picture.pixels);
    ASSERT_TRUE(picture.inkIn(100 + step * (letters - 1), 0, 100 + step * letters, height));
    for (const int letter : {10, letters / 2, letters - 10})
        EXPECT_TRUE(picture.sameAt(100 + 5 * step, 0, picture, 100 + letter * step, 0, step, height)) << letter;
}

TEST(Wide, ALineOfTwentyThousandPixelsIsDrawnAlikeFromEndToEnd) {
    const test::CapturedLog log;
    drawEqualLetters(20000, 200, 120, addLocalEffects);
}

TEST(Wide, AHugeLineWithEveryReliefIsDrawnAlikeFromEndToEnd) {
    const test::CapturedLog log;
    drawEqualLetters(20000, 400, 250, [](QxEffect& stack) {
        addLocalEffects(stack);
        stack.addInnerShadowText(30, 8, 20, 0xFF000000u, 0.9f);
        stack.addOuterGlowText(30, 0xFFFF0000u, 0.9f, 0, nullptr);
        // Chiselled: the smooth slope of a wide band squares whole columns in single precision, which rounds beyond
        // 4096 pixels, so that it differs by a level from letter to letter.
        stack.addBevelText(1, 20, 3, 0, 1, 4, 1, 135, 30, 0xFFFFFFFFu, 0.8f, 0xFF000000u, 0.7f);
        stack.addEmbossText(0, 20, 3, 0, 1, 4, 1, 135, 30, 0xFFFFFFFFu, 0.8f, 0xFF000000u, 0.7f);
    });
}

/// A line of exactly `width` pixels from letters of two widths.
std::wstring textOfWidth(int width, float size) {
    const int wide = advanceOf(L'H', size), narrow = advanceOf(L'i', size);
    for (int count = width / wide; count >= 0; --count)
        if ((width - count * wide) % narrow == 0)
            return std::wstring(static_cast<size_t>((width - count * wide) / narrow), L'i') +
                   std::wstring(static_cast<size_t>(count), L'H');
    return std::wstring();
}

// A line's image counts its columns in 16 bits.
TEST(Wide, ALineIsDrawnUpToTheLargestWidthThatItsImageCanSay) {
    const test::CapturedLog log;
    constexpr int kHeight = 40;
    constexpr float kSize = 24;
    constexpr int kMost = 65535;
    for (const int advance : {kMost, kMost + 1, kMost + 2}) {
        Line line(textOfWidth(advance, kSize), kMost + 50, kHeight, kSize);
        line.GetEffect()->addStrokeText(2, 0xFFFFFFFFu, 1, 0, 1);
        ASSERT_EQ(advance, line.advance());
        const Drawn picture = line.draw(8, 30, kMost + 50, kHeight);
        ASSERT_NE(nullptr, picture.pixels) << advance;
        // Beyond, what remains of the number decides: no column, then one.
        EXPECT_EQ(advance == kMost, picture.inkIn(kMost - 20, 0, kMost + 10, kHeight)) << advance;
        EXPECT_EQ(advance == kMost, picture.inkIn(20, 0, kMost, kHeight)) << advance;
        EXPECT_EQ(advance != kMost + 1, picture.inkIn(0, 0, 20, kHeight)) << advance;
    }
}

// Every line is where its record says, and looks as it does alone.
TEST(Wide, FiveThousandLines) {
    const test::CapturedLog log;
    constexpr int kLines = 5000, kStep = 24, kWidth = 160;
    std::wstring text;
    std::vector<QxLineInfo*> lines;
    std::vector<std::wstring> words;
    for (int i = 0; i < kLines; ++i) {
        words.push_back(L"line " + std::to_wstring(i));
        const int start = static_cast<int>(text.size());
        text += words.back() + L'\n';
        lines.push_back(test::newLine(4, kStep * i + 18, start, start + static_cast<int>(words.back().size())));
    }
    Line all(text, kWidth, kStep * kLines, 16);
    test::setLines(&all, lines);
    const Drawn picture = {all.RenderTextEffect(kWidth, kStep * kLines), kWidth, kStep * kLines};
    ASSERT_NE(nullptr, picture.pixels);
    for (int i = 0; i < kLines; i += i < kLines - 100 ? 97 : 1) {
        Line one(words[static_cast<size_t>(i)], kWidth, kStep, 16);
        const Drawn alone = one.draw(4, 18, kWidth, kStep);
        ASSERT_TRUE(alone.inkIn(0, 0, kWidth, kStep));
        ASSERT_TRUE(picture.sameAt(0, kStep * i, alone, 0, 0, kWidth, kStep)) << i;
    }
}

}  // namespace
}  // namespace QxFontEffect
