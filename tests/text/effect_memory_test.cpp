// Text renders with effects in which one request for memory is refused, each in its turn.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "effect/QxEffect.h"
#include "effect/recording_core.h"
#include "support/captured_log.h"
#include "support/failing_alloc.h"
#include "support/sample_effects.h"
#include "text/text_fixture.h"

namespace QxFontEffect {
namespace {

using test::TextScene;

constexpr int kWidth = 80, kHeight = 60;
constexpr int kNobody = -1;
constexpr int kFill = QXE_TEXT;
constexpr int kEffects[] = {1, 2, 3, 4, 5, 6, 7, 8, 10, 11};

using Picture = std::vector<unsigned char>;

/// A text with these effects, less the one of type `without`.
class Decorated : public TextScene {
public:
    Decorated(const std::vector<int>& effects, float opacity, int without = kNobody)
        : TextScene(L"Ag", kWidth, kHeight) {
        // A fill that paints nothing stands in for a fill that could not be made.
        if (without == kFill) test::addRecorder(*GetEffect(), kFill);
        for (const int type : effects)
            if (type != without) test::addSample(*GetEffect(), type, 1);
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
