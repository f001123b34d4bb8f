// Text renders with effects in which one request for memory is refused, each in its turn.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "effect/QxEffect.h"
#include "effect/recording_core.h"
#include "pixel/QxBitmap.h"
#include "support/captured_log.h"
#include "support/failing_alloc.h"
#include "text/text_fixture.h"

namespace QxFontEffect {
namespace {

using test::TextScene;

constexpr int kWidth = 80, kHeight = 60;
constexpr int kNobody = -1;
constexpr int kFill = QXE_TEXT;
constexpr int kEffects[] = {1, 2, 3, 4, 5, 6, 7, 8, 10, 11};

using Picture = std::vector<unsigned char>;

void add(QxEffect& stack, int type) {
    QxGradient stops[2] = {{0xFF2030D0u, 1, 0}, {0xFFE0F020u, 1, 1}};
    QxBitmap tile(2, 2, 4);
    std::fill_n(tile.pixels, 16, uint8_t{180});
    switch (type) {
        case 1:
            stack.addOuterShadowText(130, 4, 3, 0xFF102030u, 0.8f);
            break;
        case 2:
            stack.addInnerShadowText(40, 2, 3, 0xFF405060u, 0.9f);
            break;
        case 3:
            stack.addOuterGlowText(5, 0xFF7080FFu, 0.7f, 2, stops);
            break;
        case 4:
            stack.addInnerGlowText(4, 0xFFA0FF20u, 0.6f, 0, stops);
            break;
        case 5:
            stack.addBevelText(0, 5, 2, 0, 0, 2, 1, 135, 30, 0xFFFFFFFFu, 0.8f, 0xFF000000u, 0.7f);
            break;
        case 6:
            stack.addEmbossText(0, 6, 2, 0, 1, 2, 1, 135, 30, 0xFFFFFFFFu, 0.8f, 0xFF000000u, 0.7f);
            break;
        case 7:
            stack.addLinearGradientText(30, 1, 0.8f, 2, stops);
            break;
        case 8:
            stack.addRadialGradientText(1, 0.7f, 2, stops);
            break;
        case 10:
            stack.addStrokeText(4, 0xFFD01010u, 0.9f, 0, 1);
            break;
        default:
            stack.addPatternText(&tile, 1.5f, 0.8f);
            break;
    }
}

/// A text with these effects, less the one of type `without`.
class Decorated : public TextScene {
public:
    Decorated(const std::vector<int>& effects, float opacity, int without = kNobody)
        : TextScene(L"Ag", kWidth, kHeight) {
        // A fill that paints nothing stands in for a fill that could not be made.
        if (without == kFill) test::addRecorder(*GetEffect(), kFill);
        for (const int type : effects)
            if (type != without) add(*GetEffect(), type);
        GetEffect()->setTextOpacity(opacity);
    }

    /// The letters stand at the same place whatever margins the effects want.
    void placeLine() {
        test::setLines(this,
                       {test::newLine(20 - GetEffect()->getLeftOffset(), 40 - GetEffect()->getTopOffset(), 0, 2)});
    }

    Picture render() {
        placeLine();
        return pictureOf(RenderTextEffect(kWidth, kHeight));
    }

    /// Nothing of a render that could not make its bitmaps.
    static Picture pictureOf(const unsigned char* pixels) {
        if (pixels == nullptr) return Picture(kWidth * kHeight * 4, 0);
        return Picture(pixels, pixels + kWidth * kHeight * 4);
    }
};

/// Draws in as many other sizes as the fonts remember, so that the next text is measured again.
void forgetGlyphs() {
    TextScene other(L"Ag", 8, 8);
    test::setLines(&other, {test::newLine(0, 4, 0, 2)});
    for (const float size : {3.0f, 4.0f, 5.0f, 6.0f}) {
        android::Paint paint = other.GetPaint();
        paint.getSkFont().setSize(size);
        other.SetPaint(paint);
        other.RenderTextEffect(8, 8);
    }
}

void checkEveryRefusal(const std::vector<int>& effects, float opacity, bool measured) {
    std::vector<Picture> allowed = {Decorated(effects, opacity).render(), Picture(kWidth * kHeight * 4, 0),
                                    Decorated(effects, opacity, kFill).render()};
    for (const int type : effects) allowed.push_back(Decorated(effects, opacity, type).render());
    bool refused = true;
    int request = 0;
    for (; refused; ++request) {
        Decorated text(effects, opacity);
        text.placeLine();
        if (!measured) forgetGlyphs();
        const unsigned char* pixels = nullptr;
        {
            const test::FailingAlloc failing(request);
            pixels = text.RenderTextEffect(kWidth, kHeight);
            refused = failing.refused();
        }
        const size_t kind = static_cast<size_t>(
            std::find(allowed.begin(), allowed.end(), Decorated::pictureOf(pixels)) - allowed.begin());
        ASSERT_LT(kind, refused ? allowed.size() : 1) << "half a picture after request " << request;
        ASSERT_EQ(allowed.front(), text.render()) << "after request " << request;
    }
    EXPECT_GT(request, 20);
}

TEST(EffectMemory, AnEffectThatLacksMemoryIsLeftOutOfTheText) {
    test::CapturedLog log;
    for (const int type : kEffects)
        for (const float opacity : {1.0f, 0.5f}) {
            // Without an emboss the opaque picture is put together another way.
            if (type == QXE_EMBOSS && opacity == 1.0f) continue;
            SCOPED_TRACE("effect " + std::to_string(type) + " opacity " + std::to_string(opacity));
            checkEveryRefusal({type}, opacity, true);
        }
}

TEST(EffectMemory, NeitherEffectsNorGlyphMetricsSufferFromAnothersLackOfMemory) {
    test::CapturedLog log;
    checkEveryRefusal({std::begin(kEffects), std::end(kEffects)}, 0.5f, false);
}

}  // namespace
}  // namespace QxFontEffect
