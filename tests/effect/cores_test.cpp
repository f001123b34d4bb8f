// What every core does alike, whatever its effect.
#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>

#include "effect/QxBevel.h"
#include "effect/QxEmboss.h"
#include "effect/QxInnerGlow.h"
#include "effect/QxInnerShadow.h"
#include "effect/QxOuterGlow.h"
#include "effect/QxOuterShadow.h"
#include "effect/QxText.h"
#include "effect/core_factory.h"
#include "effect/core_picture.h"
#include "support/captured_log.h"
#include "support/failing_alloc.h"
#include "support/planes.h"
#include "support/sample_effects.h"

namespace QxFontEffect {
namespace {

using test::CorePicture;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr int kLeast = std::numeric_limits<int>::min(), kMost = std::numeric_limits<int>::max();

/// Runs a check on a core of every type, which has a sample's record.
class Cores : public ::testing::Test {
protected:
    template <typename Check>
    void forEach(Check check) {
        for (const int type : test::kEffectTypes) {
            SCOPED_TRACE("effect " + std::to_string(type));
            QxEffect stack(nullptr);
            test::addSample(stack, type, 1);
            check(*stack.getEffect(type));
        }
    }

    static CorePicture picture() {
        test::Rng rng(4);
        CorePicture made(40, 30);
        made.inkAtRandom(rng);
        return made;
    }

    test::CapturedLog log;
};

TEST_F(Cores, DrawNothingWithoutARecordOrAPartOfThePicture) {
    forEach([](QxECoreBase& core) {
        const std::unique_ptr<QxECoreBase> bare(makeCore(static_cast<int>(core.getStyle())));
        CorePicture blank = picture();
        blank.runs(*bare);
        bare->setProperty(nullptr);
        EXPECT_EQ(nullptr, bare->getProperty());
        EXPECT_EQ(0, bare->getOffset() + bare->getLeftOffset() + bare->getTopOffset());

        QxBitmap none;
        QxBitmap *const ink = &blank.coverage, *const out = &blank.output;
        core.doPostProcessing(nullptr);
        for (ParamPostProcessing params : {ParamPostProcessing{nullptr, ink, &blank.rect, 0, nullptr},
                                           {out, nullptr, &blank.rect, 0, nullptr},
                                           {ink, out, &blank.rect, 0, nullptr},
                                           {&none, &none, &blank.rect, 0, nullptr}})
            core.doPostProcessing(&params);
        ParamPostProcessing withoutRectangle = blank.params();
        withoutRectangle.textRect = nullptr;
        if (core.getStyle() != QXE_TEXT) core.doPostProcessing(&withoutRectangle);
        EXPECT_TRUE(blank.blank());
        blank.runs(core);
        EXPECT_FALSE(blank.blank());
    });
}

TEST_F(Cores, TakeAnyRectangle) {
    forEach([](QxECoreBase& core) {
        for (const QxRect& rect :
             {QxRect(kLeast, kLeast, kMost, kMost), QxRect(-3, -3, 2, 2), QxRect(4, 4, 90, 90), QxRect(5, 5, 1, 1),
              QxRect(kMost, kMost, kLeast, kLeast), QxRect(2, 2, 2, 9), QxRect(kMost - 9, 0, kMost, 9)}) {
            CorePicture shifted = picture();
            shifted.rect = rect;
            shifted.runs(core);
        }
        CorePicture wanted = picture(), after = picture();
        QxEffect fresh(nullptr);
        test::addSample(fresh, static_cast<int>(core.getStyle()), 1);
        wanted.runs(*fresh.effects[0]);
        after.runs(core);
        EXPECT_SAME_PLANE(wanted.outputPlane(), after.outputPlane());
    });
}

std::string keyOf(QxProperty& record) {
    std::string key(64, '\0');
    char* cursor = &key[0];
    EXPECT_EQ(1, record.toSequentialChar(&cursor));
    return key;
}

TEST_F(Cores, KeepACopyOfTheirRecordUntilTheyGetAnother) {
    forEach([](QxECoreBase& core) {
        if (core.getStyle() == QXE_PATTERN) return;  // its key names the copy
        const std::unique_ptr<QxECoreBase> other(makeCore(static_cast<int>(core.getStyle())));
        const std::string key = keyOf(*core.getProperty());
        other->setProperty(core.getProperty());
        core.setProperty(core.getProperty());  // its own record may be handed back
        EXPECT_EQ(key, keyOf(*core.getProperty()));
        EXPECT_NE(core.getProperty(), other->getProperty());
        core.setProperty(nullptr);
        ASSERT_NE(nullptr, core.getProperty());
        {
            const test::FailingAlloc failing(0);
            core.setProperty(other->getProperty());
        }
        EXPECT_EQ(nullptr, core.getProperty());
        EXPECT_EQ(key, keyOf(*other->getProperty()));
    });
}

template <typename Core, typename... Settings>
bool drawsNothing(const Settings&... settings) {
    CorePicture picture(20, 20);
    picture.inkRing(6, 2);
    typename std::remove_pointer<decltype(Core::property)>::type record(settings...);
    test::drawWith<Core>(picture, record);
    return picture.blank();
}

template <typename Core>
bool reliefDrawsNothing(float size, float depth = 3, int technique = 0) {
    return drawsNothing<Core>(0, size, depth, 1, technique, 0, 1.0f, 120.0f, 30.0f, ~0u, 1.0f, 0xFF000000u, 1.0f);
}

TEST_F(Cores, SizesThatAreNoNumberOrBeyondAllMemoryDrawNothing) {
    for (const float size : {kNaN, kInfinity, 1e9f, 1e30f}) {
        EXPECT_TRUE(drawsNothing<QxOuterShadow>(0.0f, 0.0f, size, ~0u, 1.0f)) << size;
        EXPECT_TRUE(drawsNothing<QxInnerShadow>(0.0f, 0.0f, size, ~0u, 1.0f)) << size;
    }
    for (const float size : {kNaN, kInfinity, -kInfinity, -1.0f, -2.5f, -1e30f, 1e30f}) {
        EXPECT_TRUE(drawsNothing<QxOuterGlow>(size, ~0u, 1.0f, 2, nullptr)) << size;
        EXPECT_TRUE(drawsNothing<QxInnerGlow>(size, ~0u, 1.0f, 0, nullptr)) << size;
    }
    for (const float size : {kNaN, kInfinity, -kInfinity, -50.0f, 1e9f, 3e9f, 1e30f}) {
        EXPECT_TRUE(reliefDrawsNothing<QxBevel>(size)) << size;
        EXPECT_TRUE(reliefDrawsNothing<QxEmboss>(size)) << size;
    }
    for (const float size : {kInfinity, -kInfinity, -50.0f})
        EXPECT_TRUE(reliefDrawsNothing<QxBevel>(size, 3, 1)) << size;
    EXPECT_TRUE(reliefDrawsNothing<QxEmboss>(0));
    EXPECT_TRUE(reliefDrawsNothing<QxBevel>(5, kNaN));
}

TEST(TextFill, ModeDecidesWhetherCoverageWeightsTheColour) {
    const struct {
        int layerMode;
        int wanted[4];
    } rows[] = {{0, {20, 30, 40, 50}}, {1, {40, 60, 80, 100}}, {2, {20, 30, 40, 50}}};
    for (const auto& row : rows) {
        CorePicture picture(2, 1);
        picture.ink(1, 0) = 128;
        picture.rect = QxRect(0, 0, 1, 1);  // not read: the whole coverage is filled
        test::drawWith<QxText>(picture, QxTextProperty(0x64283C50u, 0.01f), row.layerMode);
        for (int k = 0; k < 4; ++k) EXPECT_EQ(picture.out(1, 0, k), row.wanted[k]) << row.layerMode << " " << k;
        for (int k = 0; k < 4; ++k) EXPECT_EQ(picture.out(0, 0, k), 0);
    }
}

}  // namespace
}  // namespace QxFontEffect
