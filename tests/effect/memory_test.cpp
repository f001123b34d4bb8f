// Whole renders in which one request for memory is refused, each in its turn.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "effect/QxEffect.h"
#include "effect/QxGlowProperty.h"
#include "effect/QxGradientFillProperty.h"
#include "effect/QxPatternProperty.h"
#include "pixel/QxBitmap.h"
#include "support/captured_log.h"
#include "support/failing_alloc.h"
#include "support/sample_effects.h"

namespace QxFontEffect {
namespace {

constexpr unsigned kWidth = 64, kHeight = 48;
constexpr uint8_t kInk = 0x5A;

constexpr int kNobody = -1, kEverybody = -2;

using Picture = std::vector<uint8_t>;

// What is left undrawn can be told from what was drawn empty.
struct InkedBitmap : QxBitmap {
    InkedBitmap() : QxBitmap(kWidth, kHeight, 4) { std::memset(pixels, kInk, kWidth * kHeight * 4); }
    Picture bytes() const { return Picture(pixels, pixels + kWidth * kHeight * 4); }
};

class RenderMemory : public ::testing::Test {
protected:
    RenderMemory() {
        // A ring with soft edges, so that every effect has an inside, an outside and slopes.
        for (int y = 0; y < kGlyphSide; ++y)
            for (int x = 0; x < kGlyphSide; ++x) {
                const int radius2 = (x - 12) * (x - 12) + (y - 12) * (y - 12);
                const bool edge = radius2 > 121 || radius2 < 36;
                const bool inside = radius2 <= 144 && radius2 >= 25;
                coverage[y * kGlyphSide + x] = static_cast<uint8_t>(!inside ? 0 : edge ? 100 : 255);
            }
    }

    /// Renders onto `output`, leaving out the core with number `without` of those that run. Asks for no memory itself.
    void drawOnto(QxBitmap& output, QxEffect& stack, int without = kNobody) {
        QxGlyph glyph{coverage, kGlyphSide, kGlyphSide, 0, 0};
        stack.initEffect(kWidth, kHeight);
        if (without == kEverybody) stack.renderList.clear();
        if (without >= 0) stack.renderList.erase(stack.renderList.begin() + without);
        stack.setDstBitmap(&output);
        stack.renderEffectLayer(20, 12, &glyph);
        stack.doEffectPostProcessing();
        stack.compositeLayers(&output);
    }

    Picture render(QxEffect& stack, int without = kNobody) {
        InkedBitmap output;
        drawOnto(output, stack, without);
        return output.bytes();
    }

    /// What a rendering that lacks memory may give: the whole picture, the picture without one of the effects, or one
    /// in which nothing was drawn.
    std::vector<Picture> allowed(QxEffect& stack) {
        std::vector<Picture> pictures = {render(stack)};
        const int cores = static_cast<int>(stack.renderList.size());
        for (int i = 0; i < cores; ++i) pictures.push_back(render(stack, i));
        pictures.push_back(render(stack, kEverybody));
        QxEffect plain(nullptr);
        plain.textAlpha = stack.textAlpha;
        pictures.push_back(render(plain));
        return pictures;
    }

    void checkEveryRefusal(const std::function<void(QxEffect&)>& build, const std::string& name) {
        const auto built = [&](QxEffect& stack) {
            stack.addText(0xFF3060C0u);
            build(stack);
        };
        QxEffect whole(nullptr);
        built(whole);
        const std::vector<Picture> pictures = allowed(whole);
        bool refused = true;
        int request = 0;
        for (; refused; ++request) {
            QxEffect stack(nullptr);
            built(stack);
            InkedBitmap output;
            {
                const test::FailingAlloc failing(request);
                drawOnto(output, stack);
                refused = failing.refused();
            }
            const size_t kind =
                static_cast<size_t>(std::find(pictures.begin(), pictures.end(), output.bytes()) - pictures.begin());
            ASSERT_LT(kind, refused ? pictures.size() : 1) << name << ": half a picture after request " << request;
            ASSERT_EQ(pictures.front(), render(stack)) << name << ": after request " << request;
        }
        EXPECT_GT(request, 2) << name;
    }

    static constexpr int kGlyphSide = 25;
    test::CapturedLog log;
    unsigned char coverage[kGlyphSide * kGlyphSide];
};

TEST_F(RenderMemory, AnEffectThatLacksMemoryIsLeftOutOfThePictureAndTheNextRenderIsWhole) {
    for (const int type : test::kEffectTypes)
        for (int variant = 0; variant < 3; ++variant)
            for (const float opacity : {1.0f, 0.5f})
                checkEveryRefusal(
                    [&](QxEffect& stack) {
                        stack.setTextOpacity(opacity);
                        test::addSample(stack, type, variant);
                    },
                    "effect " + std::to_string(type) + " variant " + std::to_string(variant) + " opacity " +
                        std::to_string(opacity));
}

TEST_F(RenderMemory, OneEffectOfAStackThatLacksMemoryTakesNoOtherWithIt) {
    for (const bool emboss : {true, false})
        for (int variant = 0; variant < 3; ++variant)
            checkEveryRefusal(
                [&](QxEffect& stack) {
                    for (const int type : test::kEffectTypes)
                        if (type != 6 || emboss) test::addSample(stack, type, variant);
                },
                std::string(emboss ? "everything" : "without emboss") + " variant " + std::to_string(variant));
}

/// Whether a core has its record with all that the record of a sample points to.
bool isWhole(QxECoreBase& core) {
    QxProperty* const record = core.getProperty();
    if (record == nullptr) return false;
    switch (core.getStyle()) {
        case QXE_OUTER_GLOW:
        case QXE_INNER_GLOW:
            return static_cast<QxGlowProperty*>(record)->gradient != nullptr;
        case QXE_LINEAR_GRADIENT:
        case QXE_RADIAL_GRADIENT:
            return static_cast<QxGradientFillProperty*>(record)->gradient != nullptr;
        case QXE_PATTERN: {
            const QxBitmap* const pattern = static_cast<QxPatternProperty*>(record)->pattern;
            return pattern != nullptr && pattern->pixels != nullptr;
        }
        default:
            return true;
    }
}

// An id is a promise that the effect draws what was asked for.
TEST_F(RenderMemory, AnEffectThatIsAddedHasAllOfItsSettings) {
    for (const int type : test::kEffectTypes)
        for (int request = 0;; ++request) {
            QxEffect stack(nullptr);
            const test::FailingAlloc failing(request);
            const int id = test::addSample(stack, type, 1);
            const std::unique_ptr<char[]> key(stack.getMapKey());
            const test::AllocationPause pause;
            ASSERT_EQ(id == 0, stack.hasEffect(type)) << type << ", request " << request;
            EXPECT_TRUE(id != 0 || isWhole(*stack.effects[0])) << type << ", request " << request;
            EXPECT_EQ(static_cast<int>(stack.effects.size()), stack.nextEffectId) << type << ", request " << request;
            if (!failing.refused()) {
                EXPECT_TRUE(id == 0 && key != nullptr);
                break;
            }
        }
}

// A copy that lacks memory has fewer effects; what it has is whole.
TEST_F(RenderMemory, ACopyOfAStackIsMadeOfWholeEffects) {
    QxEffect stack(nullptr);
    for (const int type : test::kEffectTypes) test::addSample(stack, type, 1);
    for (int request = 0;; ++request) {
        const test::FailingAlloc failing(request);
        QxEffect copy(stack);
        const test::AllocationPause pause;
        for (QxECoreBase* core : copy.effects) ASSERT_TRUE(isWhole(*core)) << request;
        if (!failing.refused()) {
            ASSERT_EQ(stack.effects.size(), copy.effects.size());
            ASSERT_EQ(render(stack), render(copy));
            break;
        }
        ASSERT_LT(request, 1000);
    }
}

}  // namespace
}  // namespace QxFontEffect
