#include "effect/QxEffect.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "effect/QxBevelProperty.h"
#include "effect/QxEmbossProperty.h"
#include "effect/QxInnerGlowProperty.h"
#include "effect/QxInnerShadowProperty.h"
#include "effect/QxLinearGradientProperty.h"
#include "effect/QxOuterGlowProperty.h"
#include "effect/QxOuterShadowProperty.h"
#include "effect/QxPatternProperty.h"
#include "effect/QxRadialGradientProperty.h"
#include "effect/QxStrokeProperty.h"
#include "effect/QxTextProperty.h"
#include "effect/recording_core.h"
#include "support/captured_log.h"
#include "support/sample_effects.h"

namespace QxFontEffect {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

template <typename Record>
Record& recordOf(QxEffect& stack, int type) {
    return *static_cast<Record*>(stack.getEffect(type)->getProperty());
}

class EffectStack : public ::testing::Test {
protected:
    // One of each; the ids are 0 to 10.
    static void addOneOfEach(QxEffect& stack) {
        for (const int type : test::kEffectTypes) test::addSample(stack, type, 1);
    }

    test::CapturedLog log;
    QxGradient stops[2] = {{0xFF000000u, 1, 0}, {0xFFFFFFFFu, 1, 1}};
};

TEST_F(EffectStack, StartsEmptyAndLogsItsLife) {
    char address[32];
    {
        QxEffect stack;
        std::snprintf(address, sizeof address, "(%p)", static_cast<void*>(&stack));
        EXPECT_FALSE(stack.hasEffects());
        EXPECT_EQ(stack.textOpacity, 1.0f);
        EXPECT_EQ(stack.textColor, 0xFF000000u);
        EXPECT_EQ(stack.textAlpha, -1);
        EXPECT_TRUE(stack.rectPending);
        stack.addText(0x80FF0000u, 0.5f);
        stack.addText(0x80FF0000u);
        stack.initEffect(1, 1);
        stack.doEffectPostProcessing();
        stack.compositeLayers(nullptr);
    }
    const char* const wanted[] = {"QxEffect(P)",
                                  "AddText(P) - (color:-2130771968/opacity:0.500000)",
                                  "AddText(P) - (color:80ff0000)",
                                  "InitEffect(P)",
                                  "DoEffectPostProcessing(P) - start",
                                  "DoEffectPostProcessing(P) - end",
                                  "CompositeLayers(P) - start",
                                  "CompositeLayers(P) - end",
                                  "~QxEffect(P)"};
    const std::vector<test::LogLine> lines = log.take();
    ASSERT_EQ(lines.size(), std::size(wanted));
    for (size_t i = 0; i < lines.size(); ++i) {
        std::string message = wanted[i];
        message.replace(message.find("(P)"), 3, address);
        EXPECT_THAT(lines[i], test::isDebugLine("QxEffect", message));
    }
    { QxEffect quiet(nullptr); }
    EXPECT_EQ(log.take().size(), 1u);
}

TEST_F(EffectStack, HoldsOneCoreOfEachType) {
    QxEffect stack(nullptr);
    addOneOfEach(stack);
    ASSERT_EQ(stack.effects.size(), 11u);
    for (int i = 0; i < 11; ++i) {
        EXPECT_EQ(stack.effects[static_cast<size_t>(i)]->getStyle(), static_cast<unsigned>(test::kEffectTypes[i]));
        EXPECT_EQ(stack.effects[static_cast<size_t>(i)]->getId(), i);
        EXPECT_TRUE(stack.hasEffect(test::kEffectTypes[i]));
    }
    EXPECT_EQ(stack.addStrokeText(9, 0, 1, 0, 2), 8);
    EXPECT_EQ(stack.effects.size(), 11u);
    EXPECT_EQ(recordOf<QxStrokeProperty>(stack, 10).position, 2);

    for (int type : {-1, 0, 9, 13, 14, std::numeric_limits<int>::max()}) {
        EXPECT_EQ(stack.addEffect(5, type, nullptr), -1) << type;
        EXPECT_EQ(stack.createEffect(5, type, nullptr), nullptr) << type;
        EXPECT_FALSE(stack.hasEffect(type)) << type;
    }
    EXPECT_EQ(stack.getNewEffectId(), 11);
}

TEST_F(EffectStack, IdsAreTakenAsGivenOrNumbered) {
    QxEffect stack(nullptr);
    EXPECT_EQ(stack.addEffect(7, 12, nullptr), 7);
    EXPECT_EQ(stack.addEffect(99, 12, nullptr), 7);
    EXPECT_EQ(stack.addEffect(11, nullptr), 0);
    EXPECT_FALSE(stack.removeEffect(1));
    EXPECT_TRUE(stack.removeEffect(7));
    EXPECT_FALSE(stack.hasEffect(12));
    EXPECT_TRUE(stack.hasEffects());
    stack.nextEffectId = std::numeric_limits<int32_t>::max();
    EXPECT_EQ(stack.getNewEffectId(), std::numeric_limits<int32_t>::max());
    EXPECT_EQ(stack.getNewEffectId(), 0);
    EXPECT_EQ(stack.getNewEffectId(), 1);
    stack.cleanAllEffect();
    EXPECT_FALSE(stack.hasEffects());
    EXPECT_EQ(stack.addEffect(11, nullptr), 0);
}

TEST_F(EffectStack, TextOpacityIsLimitedAndCountsAsAnEffect) {
    QxEffect stack(nullptr);
    const float rows[][2] = {{-1, 0}, {0.25f, 0.25f}, {7, 1}, {kInf, 1}, {-kInf, 0}};
    for (const auto& row : rows) {
        stack.setTextOpacity(row[0]);
        EXPECT_EQ(stack.getTextOpacity(), row[1]);
        EXPECT_EQ(stack.hasEffects(), row[1] < 1);
    }
    stack.clearTextOpacity();
    EXPECT_EQ(stack.getTextOpacity(), 1.0f);
}

TEST_F(EffectStack, MarginsAreTheLargestOfAnyCoreAndNeverNegative) {
    QxEffect stack(nullptr);
    EXPECT_EQ(stack.getLeftOffset(), 0);
    const int margins[3][4] = {{-5, -1, -7, -9}, {1, 20, -30, 4}, {10, 2, -3, 40}};
    const int wanted[3][4] = {{0, 0, 0, 0}, {1, 20, 0, 4}, {10, 20, 0, 40}};
    for (int i = 0; i < 3; ++i) {
        std::memcpy(test::addRecorder(stack, 1)->margins, margins[i], sizeof margins[i]);
        EXPECT_EQ(stack.getLeftOffset(), wanted[i][0]);
        EXPECT_EQ(stack.getRightOffset(), wanted[i][1]);
        EXPECT_EQ(stack.getTopOffset(), wanted[i][2]);
        EXPECT_EQ(stack.getBottomOffset(), wanted[i][3]);
    }
}

TEST_F(EffectStack, AddersRoundLimitAndFoldOpacityIntoColours) {
    struct Row {
        float angle, length, opacity;
        uint32_t color;
        float wantedAngle, wantedLength;
        uint32_t premultiplied, withAlpha;
        float wantedOpacity;
    };
    const Row rows[] = {
        {-30, 150, 0.5f, 0x80FF0000u, 330, 100, 0x80800000u, 0x80FF0000u, 0.5f},
        {719.9f, 3.99f, 1, 0x00102030u, 359, 3, 0xFF102030u, 0xFF102030u, 1},
        {-0.9f, -2, 0.001f, 0xFFFFFFFFu, 0, 0, 0x00000000u, 0x00FFFFFFu, 0.001f},
        {360, 0.99f, -3, 0xFFFFFFFFu, 0, 0, 0x00000000u, 0x00FFFFFFu, 0},
        {-360, 100.5f, 3, 0x00FFFFFFu, 0, 100, 0xFFFFFFFFu, 0xFFFFFFFFu, 1},
        {kInf, kInf, kInf, 0x00FF00FFu, 127, 100, 0xFFFF00FFu, 0xFFFF00FFu, 1},
        {-kInf, -kInf, -kInf, 0x00FF00FFu, 232, 0, 0x00000000u, 0x00FF00FFu, 0},
        {kNan, kNan, kNan, 0x00FF00FFu, 0, 0, 0x00000000u, 0x00FF00FFu, kNan},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.angle);
        const auto sameOpacity = [&](float got) {
            return got == row.wantedOpacity || (std::isnan(got) && std::isnan(row.wantedOpacity));
        };
        QxEffect stack(nullptr);
        stack.addOuterShadowText(row.angle, row.length, row.length, row.color, row.opacity);
        stack.addInnerShadowText(row.angle, row.length, row.length, row.color, row.opacity);
        for (int type : {1, 2}) {
            const QxShadowProperty& shadow = recordOf<QxShadowProperty>(stack, type);
            EXPECT_EQ(shadow.angle, row.wantedAngle);
            EXPECT_EQ(shadow.distance, row.wantedLength);
            EXPECT_EQ(shadow.size, row.wantedLength);
            EXPECT_EQ(shadow.color, row.premultiplied);
            EXPECT_TRUE(sameOpacity(shadow.opacity));
        }
        stack.addOuterGlowText(row.length, row.color, row.opacity, 0, nullptr);
        stack.addInnerGlowText(row.length, row.color, row.opacity, 0, nullptr);
        for (int type : {3, 4}) {
            const QxGlowProperty& glow = recordOf<QxGlowProperty>(stack, type);
            EXPECT_EQ(glow.size, row.wantedLength);
            EXPECT_EQ(glow.color, row.withAlpha);
            EXPECT_TRUE(sameOpacity(glow.opacity));
        }
        stack.addStrokeText(row.length, row.color, row.opacity, -4, 9);
        const QxStrokeProperty& stroke = recordOf<QxStrokeProperty>(stack, 10);
        EXPECT_EQ(stroke.size, row.wantedLength);
        EXPECT_EQ(stroke.color, row.premultiplied);
        EXPECT_EQ(stroke.mode, -4);
        EXPECT_EQ(stroke.position, 9);
        stack.addText(row.color, row.opacity);
        EXPECT_EQ(recordOf<QxTextProperty>(stack, 12).color, row.premultiplied);
        EXPECT_EQ(stack.textAlpha, static_cast<int32_t>(row.color >> 24));
        stack.addLinearGradientText(row.angle, 1, row.opacity, 0, nullptr);
        EXPECT_EQ(recordOf<QxLinearGradientProperty>(stack, 7).angle, row.wantedAngle);
        stack.addPatternText(nullptr, 20, row.opacity);
        EXPECT_EQ(recordOf<QxPatternProperty>(stack, 11).scale, 10.0f);
        EXPECT_TRUE(sameOpacity(recordOf<QxPatternProperty>(stack, 11).opacity));
    }
}

TEST_F(EffectStack, ReliefAddersKeepTheSizeAndBringTheLightIntoRange) {
    QxEffect stack(nullptr);
    stack.addBevelText(1, 250.5f, 12, 2, 3, 99, 2, -30, -30, 0x12345678u, 0.5f, 0x9ABCDEF0u, 2);
    stack.addEmbossText(1, 250.5f, 12, 2, 3, 99, 2, -30, -30, 0x12345678u, 0.5f, 0x9ABCDEF0u, 2);
    for (int type : {5, 6}) {
        const QxReliefProperty& relief = recordOf<QxReliefProperty>(stack, type);
        EXPECT_EQ(relief.size, 250.5f);
        EXPECT_EQ(relief.depth, 10.0f);
        EXPECT_EQ(relief.soften, 16);
        EXPECT_EQ(relief.opacity, 1.0f);
        EXPECT_EQ(relief.angle, 330.0f);
        EXPECT_EQ(relief.altitude, 60.0f);
        EXPECT_EQ(relief.highlightColor, 0x80345678u);
        EXPECT_EQ(relief.highlightOpacity, 0.5f);
        EXPECT_EQ(relief.shadowColor, 0xFFBCDEF0u);
        EXPECT_EQ(relief.shadowOpacity, 1.0f);
    }
}

TEST_F(EffectStack, StopsAreRebuiltAndCopied) {
    std::vector<QxGradient> given(300, QxGradient{0x11223344u, 1, 0.5f});
    given[0] = {0x00ABCDEFu, 0.5f, 0.567f};
    given[1] = {0xFFABCDEFu, 4, -0.5f};
    given[2] = {0xFFABCDEFu, kNan, kNan};
    given[3] = {0xFFABCDEFu, -kInf, kInf};
    // The opacity of the effect is taken as given, so 1.5 lifts a half-opaque stop to three quarters.
    const QxGradient wanted[] = {{0xBFABCDEFu, 0.5f, 0.56f},
                                 {0xFFABCDEFu, 1, 0},
                                 {0x00ABCDEFu, kNan, 0},
                                 {0x00ABCDEFu, 0, 1},
                                 {0xFF223344u, 1, 0.5f}};
    QxEffect stack(nullptr);
    stack.addOuterGlowText(1, 0, 1.5f, 300, given.data());
    stack.addInnerGlowText(1, 0, 1.5f, 300, given.data());
    stack.addLinearGradientText(0, 1, 1.5f, 300, given.data());
    stack.addRadialGradientText(1, 1.5f, 300, given.data());
    given.assign(300, QxGradient{});
    const auto check = [&wanted](int count, const QxGradient* stored) {
        ASSERT_EQ(count, 256);
        for (int i = 0; i < 5; ++i) {
            EXPECT_EQ(stored[i].color, wanted[i].color) << i;
            EXPECT_EQ(stored[i].position, wanted[i].position) << i;
            EXPECT_TRUE(stored[i].alpha == wanted[i].alpha || i == 2) << i;
        }
    };
    for (const int type : {3, 4})
        check(recordOf<QxGlowProperty>(stack, type).count, recordOf<QxGlowProperty>(stack, type).gradient);
    for (const int type : {7, 8})
        check(recordOf<QxGradientFillProperty>(stack, type).count,
              recordOf<QxGradientFillProperty>(stack, type).gradient);
    for (int count : {0, -1, std::numeric_limits<int>::min()}) {
        stack.addLinearGradientText(0, 1, 1, count, given.data());
        EXPECT_EQ(recordOf<QxLinearGradientProperty>(stack, 7).count, 0);
    }
    stack.addLinearGradientText(0, 1, 1, 5, nullptr);
    EXPECT_EQ(recordOf<QxLinearGradientProperty>(stack, 7).count, 0);
}

TEST_F(EffectStack, MapKeyJoinsTheStringsAndEndsWhereTheLastOneEnds) {
    QxEffect stack(nullptr);
    std::unique_ptr<char[]> key(stack.getMapKey());
    EXPECT_STREQ(key.get(), "");

    stack.addLinearGradientText(0, 1, 1, 2, stops);
    stack.addStrokeText(1, 0, 1, 0, 2);
    stack.addEffect(11, nullptr);  // no record yet, nothing to write
    stack.setTextOpacity(0.5f);
    key.reset(stack.getMapKey(0x40FF0000u));
    std::string wanted;
    for (int type : {7, 10, 12}) {
        char buffer[64];
        char* cursor = buffer;
        stack.getEffect(type)->getProperty()->toSequentialChar(&cursor);
        wanted += buffer;
    }
    EXPECT_EQ(std::string(key.get()), wanted);
    // Two stops are reported with 10 bytes each and written with 9; the reported end holds a NUL as well.
    EXPECT_EQ(wanted.size(), size_t{23 + 12 + 9});
    EXPECT_EQ(key[25 + 12 + 9], '\0');
    EXPECT_EQ(stack.textColor, 0x40FF0000u);
    EXPECT_EQ(stack.textAlpha, 0x40);
    EXPECT_EQ(recordOf<QxTextProperty>(stack, 12).color, 0x80800000u);
}

TEST_F(EffectStack, CopiesHaveTheSameCoresAndKeysButOwnRecords) {
    QxEffect stack(nullptr);
    addOneOfEach(stack);
    stack.removeEffect(3);
    stack.removeEffect(9);  // a copied pattern has an address, and so a key, of its own
    stack.setTextOpacity(0.25f);
    stack.initEffect(4, 4);
    stack.textRect = QxRect(1, 1, 2, 2);
    const QxEffect& source = stack;
    QxEffect copy(source);
    ASSERT_EQ(copy.effects.size(), stack.effects.size());
    for (size_t i = 0; i < copy.effects.size(); ++i) {
        EXPECT_EQ(copy.effects[i]->getStyle(), stack.effects[i]->getStyle());
        EXPECT_EQ(copy.effects[i]->getId(), stack.effects[i]->getId());
        EXPECT_NE(copy.effects[i]->getProperty(), stack.effects[i]->getProperty());
    }
    EXPECT_EQ(copy.srcBitmap, nullptr);
    EXPECT_TRUE(copy.renderList.empty());
    EXPECT_EQ(copy.textRect.right, 0);
    EXPECT_EQ(copy.layerMode, 1);
    EXPECT_EQ(copy.textOpacity, 0.25f);
    EXPECT_EQ(copy.textAlpha, 255);
    EXPECT_EQ(copy.getNewEffectId(), 11);
    std::unique_ptr<char[]> first(stack.getMapKey()), second(copy.getMapKey());
    EXPECT_STREQ(first.get(), second.get());
}

}  // namespace
}  // namespace QxFontEffect
