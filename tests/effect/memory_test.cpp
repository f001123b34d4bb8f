// Whole renders in which one request for memory is refused, each in its turn.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "effect/QxEffect.h"
#include "effect/QxGlowProperty.h"
#include "effect/QxGradientFillProperty.h"
#include "pixel/QxBitmap.h"
#include "support/captured_log.h"
#include "support/failing_alloc.h"

namespace QxFontEffect {
namespace {

constexpr unsigned kWidth = 64, kHeight = 48;
constexpr uint8_t kInk = 0x5A;
constexpr int kTypes[] = {1, 2, 3, 4, 5, 6, 7, 8, 10, 11, 12};

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
        for (int i = 0; i < 4 * 3 * 3; ++i) tile.pixels[i] = static_cast<uint8_t>(60 + 5 * i);
    }

    void add(QxEffect& stack, int type, int variant = 0) {
        switch (type) {
            case 1:
                stack.addOuterShadowText(130, 4, 3, 0xFF102030u, 0.8f);
                break;
            case 2:
                stack.addInnerShadowText(40, 2, 3, 0xFF405060u, 0.9f);
                break;
            case 3:
                stack.addOuterGlowText(5, 0xFF7080FFu, 0.7f, variant == 0 ? 0 : 2, stops);
                break;
            case 4:
                stack.addInnerGlowText(4, 0xFFA0FF20u, 0.6f, variant == 0 ? 0 : 2, stops);
                break;
            case 5:
                // Chisel and smooth take different ways, and the smooth one a third from a radius of 11 on.
                stack.addBevelText(variant % 2, variant == 2 ? 14 : 5, 2, 0, variant == 1, 2, 1, 135, 30, 0xFFFFFFFFu,
                                   0.8f, 0xFF000000u, 0.7f);
                break;
            case 6:
                stack.addEmbossText(0, 6, 2, 0, variant % 2, 2, 1, 135, 30, 0xFFFFFFFFu, 0.8f, 0xFF000000u, 0.7f);
                break;
            case 7:
                stack.addLinearGradientText(30, 1, 0.8f, 2, stops);
                break;
            case 8:
                stack.addRadialGradientText(1, 0.7f, 2, stops);
                break;
            case 10:
                stack.addStrokeText(4, 0xFFD01010u, 0.9f, 0, variant);
                break;
            case 11:
                stack.addPatternText(&tile, 1.5f, 0.8f);
                break;
            default:
                break;  // the fill comes with every rendering
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
    QxBitmap tile{3, 3, 4};
    QxGradient stops[2] = {{0xFF2030D0u, 1, 0}, {0xFFE0F020u, 1, 1}};
};

TEST_F(RenderMemory, AnEffectThatLacksMemoryIsLeftOutOfThePictureAndTheNextRenderIsWhole) {
    for (const int type : kTypes)
        for (int variant = 0; variant < 3; ++variant)
            for (const float opacity : {1.0f, 0.5f})
                checkEveryRefusal(
                    [&](QxEffect& stack) {
                        stack.setTextOpacity(opacity);
                        add(stack, type, variant);
                    },
                    "effect " + std::to_string(type) + " variant " + std::to_string(variant) + " opacity " +
                        std::to_string(opacity));
}

TEST_F(RenderMemory, OneEffectOfAStackThatLacksMemoryTakesNoOtherWithIt) {
    for (const bool emboss : {true, false})
        for (int variant = 0; variant < 3; ++variant)
            checkEveryRefusal(
                [&](QxEffect& stack) {
                    for (const int type : kTypes)
                        if (type != 6 || emboss) add(stack, type, variant);
                },
                std::string(emboss ? "everything" : "without emboss") + " variant " + std::to_string(variant));
}

bool hasItsStops(QxECoreBase& core) {
    switch (core.getStyle()) {
        case QXE_OUTER_GLOW:
        case QXE_INNER_GLOW:
            return static_cast<QxGlowProperty*>(core.getProperty())->gradient != nullptr;
        case QXE_LINEAR_GRADIENT:
        case QXE_RADIAL_GRADIENT:
            return static_cast<QxGradientFillProperty*>(core.getProperty())->gradient != nullptr;
        default:
            return true;
    }
}

// An id is a promise that the effect draws what was asked for.
TEST_F(RenderMemory, AnEffectThatIsAddedHasAllOfItsSettings) {
    for (const int type : kTypes)
        for (int request = 0;; ++request) {
            QxEffect stack(nullptr);
            bool refused = false;
            {
                const test::FailingAlloc failing(request);
                add(stack, type, 1);
                refused = failing.refused();
            }
            for (QxECoreBase* core : stack.effects) {
                ASSERT_NE(nullptr, core->getProperty()) << type << ", request " << request;
                EXPECT_TRUE(hasItsStops(*core)) << type << ", request " << request;
            }
            if (!refused) break;
        }
}

// A copy that lacks memory has fewer effects; what it has is whole.
TEST_F(RenderMemory, ACopyOfAStackIsMadeOfWholeEffects) {
    QxEffect stack(nullptr);
    for (const int type : kTypes) add(stack, type, 1);
    stack.addText(0xFF3060C0u);
    for (int request = 0;; ++request) {
        const test::FailingAlloc failing(request);
        QxEffect copy(stack);
        const test::AllocationPause pause;
        for (QxECoreBase* core : copy.effects) {
            ASSERT_NE(nullptr, core->getProperty()) << request;
            ASSERT_TRUE(hasItsStops(*core)) << request;
        }
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
