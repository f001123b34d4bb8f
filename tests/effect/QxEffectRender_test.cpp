#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>
#include <vector>

#include "effect/QxBevelProperty.h"
#include "effect/QxEffect.h"
#include "effect/QxStrokeProperty.h"
#include "effect/recording_core.h"
#include "pixel/reference/pixel_reference.h"
#include "support/captured_log.h"
#include "support/random.h"
#include "support/sample_effects.h"

namespace QxFontEffect {
namespace {

using test::addRecorder;
using test::Pass;
using test::RecordingCore;
using test::Rng;

constexpr int kMost = std::numeric_limits<int>::max();

// A type number and, for a stroke its position, for a bevel its style.
struct Kind {
    int type;
    int variant;
};

bool operator==(const Kind& a, const Kind& b) {
    return a.type == b.type && a.variant == b.variant;
}
void PrintTo(const Kind& kind, std::ostream* out) {
    *out << kind.type << '/' << kind.variant;
}

// A stack of recorders together with the records they borrow.
struct RecordedStack {
    QxEffect stack{nullptr};
    std::vector<std::unique_ptr<QxProperty>> records;
    std::vector<Pass> passes;

    RecordingCore* add(Kind kind) {
        if (kind.type == 9 || kind.type == 10)
            records.push_back(std::make_unique<QxStrokeProperty>(1.0f, 0u, 1.0f, 0, kind.variant));
        else
            records.push_back(std::make_unique<QxBevelProperty>(kind.variant, 1.0f, 1.0f, 0, 0, 0, 1.0f, 0.0f, 0.0f, 0u,
                                                                1.0f, 0u, 1.0f));
        return addRecorder(stack, kind.type, records.back().get(), &passes);
    }

    std::vector<Kind> order() const {
        std::vector<Kind> kinds;
        for (QxECoreBase* core : stack.renderList) kinds.push_back(kindOf(*core));
        return kinds;
    }

    static Kind kindOf(QxECoreBase& core) {
        const int type = static_cast<int>(core.getStyle());
        QxProperty* record = core.getProperty();
        return {type, type == 9 || type == 10 ? static_cast<QxStrokeProperty*>(record)->position
                                              : static_cast<QxBevelProperty*>(record)->style};
    }
};

class Rendering : public ::testing::Test {
protected:
    test::CapturedLog log;
};

// The order rules, with the insertions they are told in.
bool wantsLayer(const std::vector<Kind>& added, float textOpacity) {
    return textOpacity < 1 || std::any_of(added.begin(), added.end(), [](const Kind& kind) {
               return kind.type == 6 || ((kind.type == 10 || kind.type == 9) && kind.variant == 0);
           });
}

bool wantedUnder(const Kind& kind, bool layer) {
    if (kind.type == 13 || kind.type == 1 || kind.type == 3) return true;
    if (kind.type == 6) return !layer;
    if (kind.type == 10 || kind.type == 9) return kind.variant == 1 || (kind.variant == 0 && !layer);
    return kind.type == 5 && kind.variant != 1;
}

std::vector<Kind> wantedOrder(const std::vector<Kind>& added, bool layer) {
    if (layer) {
        std::vector<Kind> order(added.rbegin(), added.rend());
        for (size_t i = 0; i < order.size(); ++i)
            if (order[i].type == 12) {
                const Kind fill = order[i];
                order.erase(order.begin() + static_cast<ptrdiff_t>(i));
                order.push_back(fill);
                break;
            }
        return order;
    }
    std::vector<Kind> over, under;
    for (const Kind& kind : added) {
        if (wantedUnder(kind, layer))
            under.insert(under.begin(), kind);
        else if (kind.type == 12)
            over.push_back(kind);
        else
            over.insert(over.begin(), kind);
    }
    over.insert(over.end(), under.begin(), under.end());
    return over;
}

TEST_F(Rendering, OrderOfRandomStacksOfAllTypesInBothModes) {
    // The model itself, held against two orders known by heart.
    const std::vector<Kind> known = {{2, 0}, {1, 0}, {12, 0}, {3, 0}};
    ASSERT_EQ(wantedOrder(known, false), std::vector<Kind>({{2, 0}, {12, 0}, {3, 0}, {1, 0}}));
    ASSERT_EQ(wantedOrder(known, true), std::vector<Kind>({{3, 0}, {1, 0}, {2, 0}, {12, 0}}));
    for (uint32_t seed = 0; seed < 3000; ++seed) {
        Rng rng(seed);
        RecordedStack recorded;
        std::vector<Kind> added(rng.below(9));
        for (Kind& kind : added) {
            // Emboss and centred strokes force the layer; most stacks go without.
            do kind = {rng.between(1, 13), rng.between(0, 3)};
            while (seed % 3 != 0 && wantsLayer({kind}, 1));
            recorded.add(kind);
        }
        const float opacity = seed % 3 == 1 ? 0.99f : 1.0f;
        recorded.stack.setTextOpacity(opacity);
        recorded.stack.initEffect(3, 2);
        const bool layer = wantsLayer(added, opacity);
        ASSERT_EQ(recorded.stack.layerMode, layer ? 1 : 0) << seed;
        ASSERT_EQ(recorded.order(), wantedOrder(added, layer)) << seed;
        ASSERT_EQ(recorded.stack.layerBitmap != nullptr, layer) << seed;
        // Also while the mode is not the stack's own.
        for (QxECoreBase* core : recorded.stack.effects)
            for (int mode : {0, 1}) {
                recorded.stack.layerMode = mode;
                ASSERT_EQ(recorded.stack.isUnderEffect(core), wantedUnder(RecordedStack::kindOf(*core), mode == 1))
                    << seed;
            }
    }
}

TEST_F(Rendering, CoresPaintWhereTheirTypeSays) {
    // L: the layer, O: the output, B: the layer with the output as base.
    const struct {
        Kind kind;
        char layered;
    } rows[] = {{{1, 0}, 'L'},  {{2, 0}, 'O'},  {{3, 0}, 'L'},  {{4, 0}, 'O'},  {{5, 0}, 'L'},  {{5, 1}, 'O'},
                {{5, 2}, 'L'},  {{6, 0}, 'B'},  {{7, 0}, 'O'},  {{8, 0}, 'O'},  {{9, 0}, 'B'},  {{9, 1}, 'L'},
                {{9, 2}, 'O'},  {{10, 0}, 'B'}, {{10, 1}, 'L'}, {{10, 2}, 'O'}, {{10, 3}, 'L'}, {{10, -1}, 'L'},
                {{11, 0}, 'O'}, {{12, 0}, 'O'}, {{13, 0}, 'L'}};
    uint8_t image[4] = {255, 255, 255, 255};
    QxGlyph glyph{image, 2, 2, 0, 0};
    for (bool layer : {false, true}) {
        RecordedStack recorded;
        for (const auto& row : rows)
            if (layer || !wantsLayer({row.kind}, 1)) recorded.add(row.kind);
        QxBitmap output(5, 5, 4);
        recorded.stack.initEffect(5, 5);
        recorded.stack.setDstBitmap(&output);
        recorded.stack.renderEffectLayer(1, 2, &glyph);
        recorded.stack.doEffectPostProcessing();
        ASSERT_EQ(recorded.passes.size(), recorded.stack.effects.size());
        for (size_t i = 0; i < recorded.passes.size(); ++i) {
            const Pass& pass = recorded.passes[i];
            EXPECT_EQ(pass.core, recorded.stack.renderList[i]);
            const Kind kind = RecordedStack::kindOf(*recorded.stack.renderList[i]);
            const char place = !layer ? 'O' : std::find_if(std::begin(rows), std::end(rows), [&](const auto& row) {
                                                  return row.kind == kind;
                                              })->layered;
            EXPECT_EQ(pass.params.dstBitmap, place == 'O' ? &output : recorded.stack.layerBitmap) << kind.type;
            EXPECT_EQ(pass.params.baseBitmap, place == 'B' ? &output : nullptr) << kind.type;
            EXPECT_EQ(pass.params.srcBitmap, recorded.stack.srcBitmap);
            EXPECT_EQ(pass.params.textRect, &recorded.stack.textRect);
            EXPECT_EQ(pass.params.layerMode, layer ? 1 : 0);
        }
    }
}

TEST_F(Rendering, CoresWithoutRecordsAreRunAsWell) {
    QxEffect stack(nullptr);
    for (int type : {5, 9, 10}) addRecorder(stack, type);
    stack.initEffect(2, 2);
    EXPECT_EQ(stack.layerMode, 0);
    stack.setTextOpacity(0);
    stack.initEffect(2, 2);
    uint8_t image[1] = {255};
    QxGlyph glyph{image, 1, 1, 0, 0};
    stack.renderEffectLayer(0, 0, &glyph);
    stack.doEffectPostProcessing();
    EXPECT_EQ(stack.renderList.size(), 3u);
}

TEST_F(Rendering, GlyphsCollectCoverageAndWidenTheRectangle) {
    RecordedStack recorded;
    RecordingCore* core = recorded.add({12, 0});
    QxEffect& stack = recorded.stack;
    uint8_t image[6] = {1, 2, 3, 4, 5, 6};
    uint8_t other[2] = {9, 2};
    QxGlyph glyph{image, 3, 2, 0, 0};
    QxGlyph second{other, 1, 2, 0, 0};
    stack.renderEffectLayer(0, 0, &glyph);  // no rendering has begun
    EXPECT_TRUE(stack.rectPending);

    stack.initEffect(4, 4);
    QxBitmap output(4, 4, 4);
    stack.setDstBitmap(&output);
    EXPECT_EQ(core->inits.size(), 1u);
    EXPECT_EQ(core->inits[0].width, 4);
    EXPECT_EQ(core->inits[0].layerMode, 0);
    stack.renderEffectLayer(-1, 1, &glyph);
    stack.renderEffectLayer(1, 2, &second);
    stack.renderEffectLayer(0, 1, &second);
    stack.renderEffectLayer(3, 3, nullptr);
    const uint8_t wanted[16] = {0, 0, 0, 0, 9, 3, 0, 0, 5, 9, 0, 0, 0, 2, 0, 0};
    EXPECT_EQ(std::memcmp(stack.srcBitmap->pixels, wanted, 16), 0);
    EXPECT_EQ(core->renders.size(), 4u);
    EXPECT_EQ(core->renders[1].x, 1);
    EXPECT_EQ(core->renders[1].glyph, &second);
    EXPECT_EQ(core->renders[1].dstBitmap, &output);
    EXPECT_EQ(stack.textRect.left, -1);
    EXPECT_EQ(stack.textRect.bottom, 4);

    stack.doEffectPostProcessing();
    ASSERT_EQ(recorded.passes.size(), 1u);
    const QxRect& rect = recorded.passes[0].rect;
    EXPECT_EQ(std::vector<int>({rect.left, rect.top, rect.right, rect.bottom}), std::vector<int>({0, 1, 2, 4}));

    // The rectangle starts again with the next glyph, but a rendering without any runs over the old one.
    stack.compositeLayers(&output);
    stack.initEffect(4, 4);
    stack.doEffectPostProcessing();
    EXPECT_EQ(recorded.passes.size(), 2u);
    EXPECT_EQ(recorded.passes[1].rect.right, 2);
    stack.initEffect(4, 4);
    stack.renderEffectLayer(3, 3, &second);
    stack.doEffectPostProcessing();
    EXPECT_EQ(recorded.passes[2].rect.left, 3);
    EXPECT_EQ(recorded.passes[2].rect.right, 4);
}

TEST_F(Rendering, RectanglesOutsideTheCoverageAreSkipped) {
    uint8_t image[4] = {255, 255, 255, 255};
    QxGlyph glyph{image, 2, 2, 0, 0};
    QxGlyph flat{image, 4, 0, 0, 0};
    QxGlyph lost{nullptr, 2, 2, 0, 0};
    const struct {
        int x, y;
        QxGlyph* glyph;
        size_t passes;
    } rows[] = {{-2, 0, &glyph, 0},
                {4, 0, &glyph, 0},
                {0, 0, &flat, 0},
                {kMost, kMost, &glyph, 0},
                {-kMost - 1, -kMost - 1, &glyph, 0},
                {0, 0, &lost, 1},
                {3, 3, &glyph, 1}};
    for (const auto& row : rows) {
        RecordedStack recorded;
        recorded.add({12, 0});
        recorded.stack.initEffect(4, 4);
        recorded.stack.renderEffectLayer(row.x, row.y, row.glyph);
        EXPECT_TRUE(row.x != kMost || recorded.stack.textRect.right == kMost);
        recorded.stack.doEffectPostProcessing();
        EXPECT_EQ(recorded.passes.size(), row.passes) << row.x << " " << row.y;
        EXPECT_TRUE(recorded.stack.rectPending);
    }
}

TEST_F(Rendering, SizesWithoutABitmapDrawNothing) {
    uint8_t image[4] = {255, 255, 255, 255};
    QxGlyph glyph{image, 2, 2, 0, 0};
    const int sizes[][2] = {{-1, -1}, {-4, 4},        {4, -kMost - 1}, {0, 5},
                            {0, 0},   {kMost, kMost}, {65536, 65536},  {kMost, 3}};
    for (const auto& size : sizes)
        for (float opacity : {1.0f, 0.5f}) {
            RecordedStack recorded;
            recorded.add({12, 0});
            recorded.stack.addText(0xFFFFFFFFu);
            recorded.stack.setTextOpacity(opacity);
            QxBitmap output(4, 4, 4);
            recorded.stack.initEffect(size[0], size[1]);
            recorded.stack.setDstBitmap(&output);
            recorded.stack.renderEffectLayer(0, 0, &glyph);
            recorded.stack.doEffectPostProcessing();
            recorded.stack.compositeLayers(&output);
            EXPECT_EQ(recorded.passes.size(), 0u) << size[0] << " x " << size[1];
            EXPECT_EQ(std::count(output.pixels, output.pixels + 64, 0), 64) << size[0] << " x " << size[1];
        }
}

std::vector<uint8_t> bytesOf(const QxBitmap& bitmap) {
    return {bitmap.pixels, bitmap.pixels + size_t{bitmap.width} * bitmap.height * bitmap.bytesPerPixel};
}

TEST_F(Rendering, CompositionEqualsThePlainLoops) {
    for (uint32_t seed = 0; seed < 600; ++seed) {
        Rng rng(seed);
        const int width = 1 + static_cast<int>(seed % 67), height = rng.between(1, 9);
        QxEffect stack(nullptr);
        const bool layer = rng.oneIn(2);
        stack.setTextOpacity(layer ? 0.5f : 1.0f);
        stack.initEffect(width, height);
        QxBitmap output(static_cast<unsigned>(width), static_cast<unsigned>(height), 4);
        for (size_t i = 0; i < bytesOf(output).size(); ++i) output.pixels[i] = rng.byte();
        for (size_t i = 0; i < bytesOf(*stack.srcBitmap).size(); ++i)
            stack.srcBitmap->pixels[i] = rng.oneIn(3) ? uint8_t{255} : rng.oneIn(2) ? uint8_t{0} : rng.byte();
        for (size_t i = 0; layer && i < bytesOf(*stack.layerBitmap).size(); ++i)
            stack.layerBitmap->pixels[i] = rng.byte();
        const int alphas[] = {0, 1, 127, 254, 255, rng.byte(), -1};
        stack.textAlpha = alphas[seed % 7];

        // The layer shows outside the glyphs, then colour is scaled by the text's alpha and made straight.
        std::vector<uint8_t> wanted = bytesOf(output);
        for (size_t i = 0; i < wanted.size(); i += 4) {
            if (layer)
                test::reference::compositeLayer(stack.layerBitmap->pixels + i, stack.srcBitmap->pixels[i / 4],
                                                &wanted[i]);
            test::reference::unpremultiply(stack.textAlpha, &wanted[i]);
        }
        stack.compositeLayers(&output);
        ASSERT_EQ(bytesOf(output), wanted) << seed;
        ASSERT_EQ(stack.srcBitmap, nullptr);
        ASSERT_EQ(stack.layerBitmap, nullptr);
        ASSERT_EQ(stack.layerMode, 0);
    }
}

TEST_F(Rendering, CompositionTouchesOnlyWhatBothPicturesHave) {
    const int sizes[][2] = {{3, 3}, {8, 3}, {3, 8}, {12, 12}, {5, 5}, {0, 4}};
    for (const auto& size : sizes) {
        QxEffect stack(nullptr);
        stack.setTextOpacity(0.5f);
        stack.addText(0xFF000000u);
        stack.initEffect(5, 5);
        std::fill_n(stack.layerBitmap->pixels, 100, uint8_t{200});
        QxBitmap output(static_cast<unsigned>(size[0]), static_cast<unsigned>(size[1]), 4);
        std::fill_n(output.pixels, size[0] * size[1] * 4, uint8_t{100});
        stack.compositeLayers(&output);
        // Blank coverage shows the layer, one step darker; outside it the output stays and is made straight.
        for (int y = 0; y < size[1]; ++y)
            for (int x = 0; x < size[0]; ++x)
                EXPECT_EQ(output.pixels[(y * size[0] + x) * 4 + 3], x < 5 && y < 5 ? 200 : 100) << x << " " << y;
    }
    QxEffect stack(nullptr);
    QxBitmap grey(4, 4, 1), lost(70000, 70000, 4);
    for (QxBitmap* output : {static_cast<QxBitmap*>(nullptr), &grey, &lost}) {
        stack.initEffect(4, 4);
        stack.compositeLayers(output);
        EXPECT_EQ(stack.srcBitmap, nullptr);
    }
    EXPECT_EQ(std::count(grey.pixels, grey.pixels + 16, 0), 16);
}

TEST_F(Rendering, SetBitmapsStayTheCallers) {
    QxBitmap mine(2, 2, 1);
    QxEffect stack(nullptr);
    stack.initEffect(4, 4);
    stack.setSrcBitmap(&mine);
    EXPECT_EQ(stack.getSrcBitmap(), &mine);
    stack.initEffect(4, 4);
    EXPECT_NE(stack.getSrcBitmap(), &mine);
    stack.setSrcBitmap(&mine);
    stack.compositeLayers(nullptr);
    EXPECT_EQ(mine.width, 2u);
}

TEST_F(Rendering, ARemovedCoreDoesNotRun) {
    RecordedStack recorded;
    recorded.add({12, 0})->setId(3);
    recorded.add({2, 0})->setId(4);
    uint8_t image[1] = {255};
    QxGlyph glyph{image, 1, 1, 0, 0};
    recorded.stack.initEffect(2, 2);
    EXPECT_TRUE(recorded.stack.removeEffect(3));
    recorded.stack.renderEffectLayer(0, 0, &glyph);
    recorded.stack.doEffectPostProcessing();
    EXPECT_EQ(recorded.passes.size(), 1u);
}

// The smallest whole picture: one full, one half and one empty pixel of a half-transparent red.
TEST_F(Rendering, AFilledTextComesOutStraight) {
    uint8_t image[3] = {255, 128, 0};
    QxGlyph glyph{image, 3, 1, 0, 0};
    for (float opacity : {1.0f, 0.5f}) {
        QxEffect stack(nullptr);
        QxBitmap output(3, 1, 4);
        stack.setTextOpacity(opacity);
        stack.addText(0x80FF8000u);
        test::drawGlyph(stack, output, glyph, 0, 0);
        const uint8_t wanted[12] = {255, 128, 0, 128, 255, 128, 0, 64, 0, 0, 0, 0};
        for (int i = 0; i < 12; ++i) EXPECT_EQ(output.pixels[i], wanted[i]) << opacity << " " << i;
    }
}

}  // namespace
}  // namespace QxFontEffect
