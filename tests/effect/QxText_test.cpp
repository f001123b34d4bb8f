#include "effect/QxText.h"

#include <gtest/gtest.h>

#include "effect/core_picture.h"
#include "support/failing_alloc.h"

namespace QxFontEffect {
namespace {

using test::CorePicture;

TEST(TextFill, ModeDecidesWhetherCoverageWeightsTheColour) {
    const struct {
        int layerMode;
        int wanted[4];
    } rows[] = {{0, {20, 30, 40, 50}}, {1, {40, 60, 80, 100}}, {2, {20, 30, 40, 50}}};
    for (const auto& row : rows) {
        CorePicture picture(2, 1);
        picture.ink(1, 0) = 128;
        picture.rect = QxRect(0, 0, 1, 1);  // not read: the whole coverage is filled
        QxText core;
        QxTextProperty record(0x64283C50u, 0.01f);
        core.setProperty(&record);
        picture.runs(core, row.layerMode);
        for (int k = 0; k < 4; ++k) EXPECT_EQ(picture.out(1, 0, k), row.wanted[k]) << row.layerMode << " " << k;
        for (int k = 0; k < 4; ++k) EXPECT_EQ(picture.out(0, 0, k), 0);
    }
}

TEST(TextFill, MissingPartsDrawNothing) {
    CorePicture picture(2, 2);
    picture.ink(0, 0) = 255;
    QxText core;
    picture.runs(core);
    core.setProperty(nullptr);
    EXPECT_EQ(core.getProperty(), nullptr);
    QxTextProperty record(0xFFFFFFFFu, 1);
    core.setProperty(&record);
    core.doPostProcessing(nullptr);
    ParamPostProcessing withoutCoverage{&picture.output, nullptr, &picture.rect, 0, nullptr};
    core.doPostProcessing(&withoutCoverage);
    ParamPostProcessing withoutOutput{nullptr, &picture.coverage, &picture.rect, 0, nullptr};
    core.doPostProcessing(&withoutOutput);
    EXPECT_TRUE(picture.blank());

    ParamPostProcessing withoutRectangle{&picture.output, &picture.coverage, nullptr, 0, nullptr};
    core.doPostProcessing(&withoutRectangle);  // this core does without
    EXPECT_EQ(picture.out(0, 0, 3), 255);
}

TEST(TextFill, SetPropertyCopiesAndReplaces) {
    QxText core;
    QxTextProperty record(1, 0.25f);
    core.setProperty(&record);
    record.color = 2;
    EXPECT_EQ(core.property->color, 1u);
    core.setProperty(core.property);
    EXPECT_EQ(core.property->color, 1u);
    EXPECT_EQ(core.property->opacity, 0.25f);
    EXPECT_EQ(core.getStyle(), 12u);
    EXPECT_EQ(core.getLeftOffset(), 0);

    test::FailingAlloc failing(0);
    core.setProperty(&record);
    EXPECT_EQ(core.property, nullptr);
}

}  // namespace
}  // namespace QxFontEffect
