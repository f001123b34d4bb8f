#include <gtest/gtest.h>
#include <hwui/MinikinUtils.h>
#include <hwui/Typeface.h>

#include <climits>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "base/Error.h"
#include "base/QxLog.h"
#include "effect/QxEffect.h"
#include "pixel/QxBitmap.h"
#include "platform/minikin/sample_text.h"
#include "support/captured_log.h"
#include "support/random.h"
#include "text/QxFontDrawing.h"
#include "text/text_fixture.h"

namespace QxFontEffect {
namespace {

using test::CapturedLog;
using test::isDebugLine;
using test::isErrorLine;
using test::newLine;
using test::setLines;
using test::TextScene;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::MatchesRegex;

constexpr int kWidth = 150;
constexpr int kHeight = 90;

using Picture = std::vector<uint32_t>;

Picture render(QxTextObject& object, int width = kWidth, int height = kHeight) {
    const unsigned char* const pixels = object.RenderTextEffect(width, height);
    Picture picture(pixels == nullptr ? 0 : static_cast<size_t>(width) * static_cast<size_t>(height));
    if (!picture.empty()) std::memcpy(picture.data(), pixels, picture.size() * 4);
    return picture;
}

bool isBlank(const Picture& picture) {
    for (const uint32_t pixel : picture)
        if (pixel != 0) return false;
    return !picture.empty();
}

/// The driver's job done again with the parts below it: one typeface, lines laid out and drawn.
class Reference {
public:
    explicit Reference(QxTextObject& object) : mObject(object), mEffect(*object.GetEffect()) {
        int weight = 400;
        FontManager::GetInstance()->GetMinikinFontFamilies(nullptr, mFamilies, nullptr, weight);
        std::vector<std::shared_ptr<minikin::FontFamily>> copy = mFamilies;
        mTypeface.reset(android::Typeface::createFromFamilies(std::move(copy), weight, object.isItalicTextStyle()));
        mUnits.reset(object.GetText()->GetUTF16());
        mSize = static_cast<size_t>(object.GetText()->GetUTF16Size());
    }

    minikin::Layout layout(const QxLineInfo& line) const {
        const android::Paint paint = mObject.GetPaint();
        const auto start = static_cast<size_t>(line.start);
        size_t context = start;
        while (context > 0 && mUnits[context] != 10) --context;
        return android::MinikinUtils::doLayout(
            &paint, static_cast<minikin::Bidi>(line.direction < 0 ? 3 : 2), mTypeface.get(), mUnits.get(), mSize, start,
            static_cast<size_t>(line.end) - start, context, static_cast<size_t>(line.end) - context, nullptr);
    }

    /// The picture with colour bytes R, G, B, A, not clipped and without backgrounds.
    Picture effects(int width, int height) {
        QxBitmap out(static_cast<unsigned int>(width), static_cast<unsigned int>(height), 4);
        mEffect.addText(mObject.GetTextColor());
        mEffect.initEffect(width, height);
        mEffect.setDstBitmap(&out);
        const List& lines = *mObject.GetLineInfo();
        for (int i = 0; i < lines.GetCount(); ++i) drawLine(*static_cast<QxLineInfo*>(lines.Get(i)));
        mEffect.doEffectPostProcessing();
        mEffect.compositeLayers(&out);
        Picture picture(static_cast<size_t>(width) * static_cast<size_t>(height));
        std::memcpy(picture.data(), out.pixels, picture.size() * 4);
        return picture;
    }

private:
    void drawLine(const QxLineInfo& line) {
        const minikin::Layout layout = this->layout(line);
        sample::LineMask mask(layout, mObject.GetPaint());
        const int top = static_cast<int>(-sample::boundsOf(layout).mTop);
        QxGlyph glyph = {mask.pixels.data(), static_cast<uint16_t>(mask.width), static_cast<uint16_t>(mask.height), top,
                         0};
        mEffect.renderEffectLayer(line.x + mEffect.getLeftOffset(), line.y + mEffect.getTopOffset() - top, &glyph);
    }

    QxTextObject& mObject;
    QxEffect mEffect;
    std::vector<std::shared_ptr<minikin::FontFamily>> mFamilies;
    std::unique_ptr<android::Typeface> mTypeface;
    std::unique_ptr<uint16_t[]> mUnits;
    size_t mSize;
};

/// Source over destination, both straight 0xAARRGGBB, in the canvas's arithmetic.
uint32_t over(uint32_t source, uint32_t destination) {
    const float s = static_cast<float>(source >> 24) / 255.0f;
    const float rest = static_cast<float>(destination >> 24) / 255.0f * (1.0f - s);
    const float alpha = s + rest;
    if (alpha == 0.0f) return 0;
    uint32_t result = static_cast<uint32_t>(alpha * 255.0f + 0.5f) << 24;
    for (int shift = 0; shift < 24; shift += 8) {
        const float from = static_cast<float>(source >> shift & 0xFF);
        const float onto = static_cast<float>(destination >> shift & 0xFF);
        result |= static_cast<uint32_t>((from * s + onto * rest) / alpha + 0.5f) << shift;
    }
    return result;
}

uint32_t swapped(uint32_t pixel) {
    return (pixel & 0xFF00FF00u) | (pixel & 0xFFu) << 16 | (pixel >> 16 & 0xFFu);
}

struct Clip {
    int left, top, right, bottom;
};

Picture composed(const Picture& effects, const Clip& clip, const std::vector<QxRect>& backgrounds, uint32_t color) {
    Picture picture(effects.size());
    for (int y = clip.top; y < clip.bottom; ++y) {
        for (int x = clip.left; x < clip.right; ++x) {
            const size_t i = static_cast<size_t>(y * kWidth + x);
            uint32_t below = 0;
            for (const QxRect& box : backgrounds)
                if (x >= box.left && x < box.right && y >= box.top && y < box.bottom) below = over(color, below);
            picture[i] = over(swapped(effects[i]), below);
        }
    }
    return picture;
}

int channelDistance(uint32_t a, uint32_t b) {
    int largest = 0;
    for (int shift = 0; shift < 32; shift += 8)
        largest =
            std::max(largest, std::abs(static_cast<int>(a >> shift & 0xFF) - static_cast<int>(b >> shift & 0xFF)));
    return largest;
}

TEST(Render, EqualsItsPartsComposedByHand) {
    const struct {
        const char* what;
        std::wstring text;
        uint32_t color;
        uint32_t background;
        bool shadow, italic;
        int gravity;
        Clip clip;
    } rows[] = {
        {"plain", L"Ag fi", 0xFF000000, 0, false, false, 0x33, {0, 0, 141, 79}},
        {"colour, shadow", L"Agfi", 0xFF2468AC, 0, true, false, 0x55, {5, 7, kWidth, kHeight}},
        {"opaque background", L"Ag\nxy", 0xFFC08040, 0xFF112233, true, false, 0x11, {5, 7, 141, 79}},
        {"faint text and background", L"Ag", 0x60C08040, 0x40FF0000, true, false, 0x33, {0, 0, 141, 79}},
        {"italic, two fonts", L"a\u0633\u0644\u0627\u0645", 0xFF000000, 0, false, true, 0x33, {0, 0, 141, 79}},
    };
    for (const auto& row : rows) {
        TextScene object(row.text.c_str(), kWidth, kHeight);
        object.SetTextColor(row.color);
        object.SetTextStyle(true, row.italic);
        object.SetBackgroundColor(row.background, row.background != 0);
        object.GetView()->gravity = row.gravity;
        object.GetView()->SetPadding(5, 7, 9, 11);
        if (row.shadow) object.GetEffect()->addOuterShadowText(30, 4, 3, 0xFF0000FF, 0.7f);
        const size_t newline = row.text.find(L'\n');
        const int length = static_cast<int>(row.text.size());
        std::vector<QxLineInfo*> lines = {newLine(3, 30, 0, newline == std::wstring::npos ? length : 2)};
        if (newline != std::wstring::npos) lines.push_back(newLine(-4, 62, 3, length));
        setLines(&object, lines);

        Reference reference(object);
        const Picture effects = reference.effects(kWidth, kHeight);
        const int left = object.GetEffect()->getLeftOffset(), top = object.GetEffect()->getTopOffset();
        std::vector<QxRect> boxes;
        for (const QxLineInfo* line : lines) {
            const float advance = reference.layout(*line).getAdvance();
            const int x = line->x + left;
            boxes.emplace_back(x, line->bounds.top + top, static_cast<int>(static_cast<float>(x) + advance),
                               line->bounds.bottom + top);
        }
        const Picture got = render(object);
        ASSERT_FALSE(isBlank(got)) << row.what;
        const Picture want =
            composed(effects, row.clip, row.background == 0 ? std::vector<QxRect>() : boxes, row.background);
        // Float compositing of two translucent colours may round a tie either way.
        const int allowed = row.background >> 24 == 0 ? 0 : 1;
        int wrong = 0;
        for (size_t i = 0; i < want.size(); ++i) wrong += channelDistance(want[i], got.at(i)) > allowed ? 1 : 0;
        EXPECT_EQ(0, wrong) << row.what;

        // Records: left and right afresh, top and bottom down by the margin, and again with every render.
        for (int renders = 1; renders <= 2; ++renders) {
            for (size_t i = 0; i < lines.size(); ++i) {
                const int down = (renders - 1) * top;
                EXPECT_EQ(boxes[i].left, lines[i]->bounds.left) << row.what;
                EXPECT_EQ(boxes[i].top + down, lines[i]->bounds.top) << row.what;
                EXPECT_EQ(boxes[i].right, lines[i]->bounds.right) << row.what;
                EXPECT_EQ(boxes[i].bottom + down, lines[i]->bounds.bottom) << row.what;
            }
            render(object);
        }
    }
}

TEST(Render, BackgroundComesOutAsTheColourItWasGiven) {
    for (const uint32_t color : {0xFF112233u, 0x80FF0000u}) {
        TextScene object(L"a", kWidth, kHeight);
        object.SetBackgroundColor(color, true);
        setLines(&object, {newLine(100, 30, 0, 1)});
        const Picture picture = render(object);
        EXPECT_EQ(color, picture[12 * kWidth + 101]);
        EXPECT_EQ(0u, picture[12 * kWidth + 99]);
    }
}

TEST(Render, NegativeDirectionLaysOutNeutralTextFromTheRight) {
    const auto rendered = [](const wchar_t* text, int direction) {
        TextScene object(text, kWidth, kHeight);
        setLines(&object, {newLine(10, 40, 0, 3, direction)});
        return render(object);
    };
    const Picture leftToRight = rendered(L"1 4", 1);
    EXPECT_EQ(leftToRight, rendered(L"1 4", 0));
    EXPECT_NE(leftToRight, rendered(L"1 4", -1));
    EXPECT_EQ(rendered(L"4 1", 1), rendered(L"1 4", -1));
}

TEST(Render, BoldIsStoredAndItalicIsDrawn) {
    const auto rendered = [](bool bold, bool italic) {
        TextScene object(L"Hg", kWidth, kHeight);
        object.SetTextStyle(bold, italic);
        setLines(&object, {newLine(10, 40, 0, 2)});
        return render(object);
    };
    EXPECT_EQ(rendered(false, false), rendered(true, false));
    EXPECT_NE(rendered(false, false), rendered(false, true));
}

TEST(Render, LogsItsStartAndEnd) {
    TextScene object(L"a", kWidth, kHeight);
    const std::string name =
        std::string("RenderTextEffect\\(") + test::kPointer + " / " + std::to_string(object.GetRuntimeHandle()) + "\\)";
    CapturedLog log;
    render(object, 20, 10);
    const std::vector<test::LogLine> lines = log.take();
    EXPECT_THAT(lines.front(), isDebugLine("QxTextObject", MatchesRegex(name + " >>> Start! - \\(w=20,h=10\\)")));
    EXPECT_THAT(lines.back(), isDebugLine("QxTextObject", MatchesRegex(name + " <<< End.")));
}

TEST(Render, WithoutTextNothingRunsAndTheLogSaysSo) {
    TextScene object(L"a", kWidth, kHeight);
    QxBitmap out(4, 4, 4);
    const auto message = [](const std::string& end) {
        return isErrorLine("QxFontDrawing",
                           MatchesRegex(std::string("DrawTextEffect\\(") + test::kPointer + "\\) - " + end));
    };
    CapturedLog log;
    object.SetText(L"");
    log.take();
    object.GetFont()->DrawTextEffect(&object, &out);
    EXPECT_THAT(log.take(), ElementsAre(message("textLength is 0")));
    object.GetText()->Clear();
    object.GetFont()->DrawTextEffect(&object, &out);
    EXPECT_THAT(log.take(), ElementsAre(message("textLength is 0")));
    object.SetText(static_cast<const wchar_t*>(nullptr));
    object.GetFont()->DrawTextEffect(&object, &out);
    EXPECT_THAT(log.take(), ElementsAre(message("text is NULL")));
    EXPECT_FALSE(object.GetEffect()->hasEffects());
    object.GetFont()->DrawTextEffect(nullptr, &out);
    object.GetFont()->DrawTextEffect(&object, nullptr);

    // Without lines the stack runs and draws nothing.
    object.SetText(L"a");
    EXPECT_TRUE(isBlank(render(object)));
    EXPECT_TRUE(object.GetEffect()->hasEffects());

    QxLog::DEBUG_ENABLE = 1;
    log.take();
    object.GetFont()->SetFontPath("/f/A-Thin.ttf");
    object.GetFont()->DrawTextEffect(&object, &out);
    QxLog::DEBUG_ENABLE = 0;
    EXPECT_THAT(log.take(),
                Contains(isDebugLine("QxFontDrawing", MatchesRegex(std::string("DrawTextEffect\\(") + test::kPointer +
                                                                   "\\) fontPath\\[/f/A-Thin.ttf\\] weight=100"))));
}

TEST(Render, TextWithoutAnyFontHasNoWidth) {
    TextScene object(L"a", kWidth, kHeight);
    QxLineInfo* const line = newLine(7, 30, 0, 1);
    setLines(&object, {line});
    test::unloadFamilies();
    test::systemFamilies()[test::kDefault]->loaded = 0;
    EXPECT_TRUE(isBlank(render(object)));
    test::unloadFamilies();
    EXPECT_EQ(7, line->bounds.left);
    EXPECT_EQ(7, line->bounds.right);
}

TEST(Render, SizesThatCannotBeGiveNullAndKeepTheLastPicture) {
    TextScene object(L"a", kWidth, kHeight);
    setLines(&object, {newLine(10, 40, 0, 1)});
    const unsigned char* const last = object.RenderTextEffect(kWidth, kHeight);
    const Picture before = render(object);
    EXPECT_NE(nullptr, last);
    const int sizes[][2] = {{-1, 5},        {5, -1},        {INT_MIN, INT_MIN}, {INT_MAX, INT_MAX},
                            {65536, 16384}, {32768, 32768}, {INT_MAX, 1},       {1, 1 << 30}};
    for (const auto& size : sizes) EXPECT_EQ(nullptr, object.RenderTextEffect(size[0], size[1])) << size[0];
    for (const auto& size : {std::make_pair(0, 0), {0, 9}, {9, 0}}) object.RenderTextEffect(size.first, size.second);
    EXPECT_EQ(before, render(object));

    // The view's bitmap size clips, not the size drawn.
    object.GetView()->SetBitmapWidth(0);
    EXPECT_TRUE(isBlank(render(object)));
}

TEST(Render, SurvivesLinesAndPaintsOfAnyKind) {
    constexpr uint64_t kSeed = 3;
    test::Rng rng(kSeed);
    const int numbers[] = {INT_MIN, INT_MIN + 1, -33554433, -40, -1, 0, 1, 2, 5, 9, 30, 33554432, INT_MAX - 1, INT_MAX};
    const auto number = [&] { return numbers[rng.below(sizeof(numbers) / sizeof(*numbers))]; };
    const float inf = std::numeric_limits<float>::infinity();
    const float floats[] = {-inf, -1e30f, -2.5f, -1.0f, 0.0f, 0.3f, 1.0f, 20.0f, 40.0f, inf, std::nanf("")};
    const auto real = [&] { return floats[rng.below(sizeof(floats) / sizeof(*floats))]; };
    TextScene object(
        L"a\uFFFF\nb \U0001F600\u0633\xD800"
        L"c",
        kWidth, kHeight);
    object.SetBackgroundColor(0x80402010, true);
    object.GetEffect()->addOuterShadowText(40, 3, 2, 0xFF00FF00, 1);
    for (int round = 0; round < 300; ++round) {
        android::Paint paint = object.GetPaint();
        paint.getSkFont().setSize(rng.oneIn(3) ? std::min(real(), 90.0f) : 20.0f);
        paint.getSkFont().setScaleX(rng.oneIn(4) ? std::min(real(), 3.0f) : 1.0f);
        paint.getSkFont().setSkewX(rng.oneIn(4) ? real() : 0.0f);
        paint.setLetterSpacing(rng.oneIn(3) ? std::min(real(), 20.0f) : 0.0f);
        object.SetPaint(paint);
        object.GetView()->SetPadding(number(), number(), number(), number());
        object.GetView()->gravity = number();
        std::vector<QxLineInfo*> lines;
        for (int i = 0; i < 3; ++i) {
            lines.push_back(newLine(0, 0, number(), number(), rng.between(-1, 1)));
            lines.back()->x = number();
            lines.back()->y = number();
            lines.back()->bounds = QxRect(number(), number(), number(), number());
        }
        setLines(&object, lines);
        for (int twice = 0; twice < 2; ++twice) render(object, 64, 32);
        EXPECT_EQ(nullptr, object.GetEffect()->getDstBitmap()) << "round " << round << " did not run to its end";
    }
}

}  // namespace
}  // namespace QxFontEffect
