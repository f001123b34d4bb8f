#include "effect/QxEmboss.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "effect/core_picture.h"
#include "support/planes.h"

namespace QxFontEffect {
namespace {

using test::CorePicture;

QxEmbossProperty record(float size, int technique, int soften = 0, float angle = 180.0f) {
    return QxEmbossProperty(0, size, 3.0f, 0, technique, soften, 1.0f, angle, 30.0f, 0xFFFFFFFFu, 1.0f, 0xFF000000u,
                            1.0f);
}

/// Emboss into a layer and a base, both blank.
struct Relief {
    explicit Relief(const CorePicture& inked) : layer(inked), base(inked) {}

    void draw(QxEmbossProperty settings, bool withBase = true) {
        QxEmboss core;
        core.setProperty(&settings);
        ParamPostProcessing params = layer.params(1);
        if (withBase) params.baseBitmap = &base.output;
        core.doPostProcessing(&params);
    }

    CorePicture layer, base;
};

// A square of full coverage whose vertical edges lie `edge` / 255 into the pixel columns beside it.
CorePicture square(int side, int margin, uint8_t edge) {
    CorePicture picture(side + 2 * margin, side + 2 * margin);
    for (int y = margin; y < side + margin; ++y)
        for (int x = margin; x < side + margin; ++x)
            picture.ink(x, y) = x == margin || x == side + margin - 1 ? edge : uint8_t{255};
    picture.rect = {margin, margin, side + margin, side + margin};
    return picture;
}

CorePicture disc(int radius, int margin) {
    const int side = 2 * radius + 1;
    CorePicture picture(side + 2 * margin, side + 2 * margin);
    picture.inkRing(0, static_cast<float>(radius));
    picture.rect = {margin, margin, side + margin, side + margin};
    return picture;
}

TEST(Emboss, PaintsTheOuterHalfIntoTheLayerAndTheInnerHalfIntoTheBase) {
    const CorePicture inked = disc(20, 12);
    Relief relief(inked);
    relief.draw(record(12.0f, 1));
    int both = 0;
    for (int y = 0; y < 65; ++y)
        for (int x = 0; x < 65; ++x) {
            const uint8_t coverage = relief.layer.ink(x, y);
            const int outer = relief.layer.out(x, y, 3), inner = relief.base.out(x, y, 3);
            EXPECT_TRUE(coverage < 255 || outer == 0) << x << ", " << y;
            EXPECT_TRUE(coverage > 0 || inner == 0) << x << ", " << y;
            if (outer == 0 || inner == 0) continue;
            ++both;
            EXPECT_EQ(outer, inner) << x << ", " << y;
        }
    EXPECT_GT(both, 60);

    // Without a base, or with the layer itself for one, the layer gets all of it once.
    Relief alone(inked), same(inked);
    alone.draw(record(12.0f, 1), false);
    QxEmboss core;
    QxEmbossProperty settings = record(12.0f, 1);
    core.setProperty(&settings);
    ParamPostProcessing params = same.layer.params(1);
    params.baseBitmap = params.dstBitmap;
    core.doPostProcessing(&params);
    EXPECT_SAME_PLANE(alone.layer.outputPlane(), same.layer.outputPlane());
    for (int y = 0; y < 65; ++y)
        for (int x = 0; x < 65; ++x)
            EXPECT_EQ(std::max(relief.layer.out(x, y, 3), relief.base.out(x, y, 3)), alone.layer.out(x, y, 3));
}

// Alpha of the whole relief along the middle row, from the left.
std::vector<int> profile(const CorePicture& inked, QxEmbossProperty settings) {
    Relief relief(inked);
    relief.draw(settings, false);
    std::vector<int> alphas;
    for (int x = 0; x < static_cast<int>(inked.output.width); ++x)
        alphas.push_back(relief.layer.out(x, static_cast<int>(inked.output.height) / 2, 3));
    return alphas;
}

TEST(Emboss, StraddlesTheOutlineAtFullStrengthWithoutASeam) {
    for (const uint8_t edge : {uint8_t{255}, uint8_t{128}, uint8_t{40}})
        for (const float size : {6.0f, 7.0f, 12.0f, 30.0f}) {
            const int margin = 20, side = 60;
            const std::vector<int> alphas = profile(square(side, margin, edge), record(size, 1));
            const float outline = static_cast<float>(margin) + 1.0f - static_cast<float>(edge) / 255.0f;
            const int strongest = *std::max_element(alphas.begin(), alphas.begin() + margin + side / 2);
            EXPECT_GT(strongest, 150);
            for (int x = 0; x < margin + side / 2; ++x) {
                const float inBand = size * 0.5f - std::fabs(static_cast<float>(x) + 0.5f - outline);
                const int alpha = alphas[static_cast<size_t>(x)];
                // Flat neighbours halve the slope of the band's last pixels on either end.
                const bool wanted = inBand >= 1.0f ? std::abs(alpha - strongest) <= 2 : inBand > -0.01f || alpha == 0;
                EXPECT_TRUE(wanted) << x << ": " << alpha << " of " << strongest << ", size " << size << " edge "
                                    << int{edge};
            }
        }
}

TEST(Emboss, LightsTheSideThatFacesTheLightAndShadesTheOther) {
    for (const int technique : {0, 1}) {
        Relief relief(disc(20, 12));
        relief.draw(record(8.0f, technique), false);
        // Highlights are white and shadows black; light from the left.
        EXPECT_GT(relief.layer.out(12, 32, 3), 100);
        EXPECT_GT(relief.layer.out(12, 32, 0), 100);
        EXPECT_GT(relief.layer.out(52, 32, 3), 60);
        EXPECT_EQ(0, relief.layer.out(52, 32, 0));

        Relief turned(disc(20, 12));
        QxEmbossProperty settings = record(8.0f, technique);
        settings.direction = 1;
        turned.draw(settings, false);
        EXPECT_GT(turned.layer.out(52, 32, 0), 100);
        EXPECT_EQ(0, turned.layer.out(12, 32, 0));
    }
}

TEST(Emboss, OffsetCoversEverythingPaintedAndNoMoreThanTheBlurNeeds) {
    for (const int technique : {0, 1})
        for (const int soften : {0, 1, 5})
            for (float size = 0.5f; size < 40.0f; size += 1.75f) {
                const int margin = 50;
                const CorePicture inked = square(30, margin, 255);
                Relief relief(inked);
                QxEmbossProperty settings = record(size, technique, soften);
                relief.draw(settings, false);
                int reach = 0;
                for (int x = 0; x < margin; ++x)
                    for (int y = 0; y < 130; ++y)
                        if (relief.layer.out(x, y, 3) != 0) reach = std::max(reach, margin - x);
                QxEmboss core;
                core.setProperty(&settings);
                EXPECT_LE(reach, core.getOffset()) << "size " << size << " soften " << soften;
                // The last taps of the bells weigh next to nothing.
                const int faint = soften / 2 + (technique == 0 ? 1 + static_cast<int>(size / 8.0f) : 0) + 1;
                if (size < 2.0f) continue;
                EXPECT_GE(reach, core.getOffset() - faint) << "size " << size << " soften " << soften;
            }
}

TEST(Emboss, BandsFarWiderThanThePictureCoverIt) {
    for (const float size : {300.0f, 1e6f}) {
        Relief relief(disc(9, 9));
        relief.draw(record(size, 1), false);
        int painted = 0;
        for (int i = 0; i < 37 * 37; ++i) painted += relief.layer.out(i % 37, i / 37, 3) > 100;
        EXPECT_GT(painted, 800) << size;
    }
}

}  // namespace
}  // namespace QxFontEffect
