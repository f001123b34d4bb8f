// Effect stacks with raw float parameters, through the adders and through the records, over random coverage.
#include <cmath>
#include <memory>
#include <vector>

#include "effect/QxBevelProperty.h"
#include "effect/QxEffect.h"
#include "effect/QxEmbossProperty.h"
#include "effect/QxInnerGlowProperty.h"
#include "effect/QxInnerShadowProperty.h"
#include "effect/QxLinearGradientProperty.h"
#include "effect/QxOuterGlowProperty.h"
#include "effect/QxOuterShadowProperty.h"
#include "effect/QxPatternProperty.h"
#include "effect/QxRadialGradientProperty.h"
#include "effect/QxStrokeProperty.h"
#include "fuzz/input.h"
#include "fuzz/quiet_log.h"

namespace {

using namespace QxFontEffect;
using test::Input;

/// Any float; sizes between what is drawn in a moment and what cannot get its memory are folded down, because the
/// time they take is no fault.
float raw(Input& input) {
    const float value = input.take<float>();
    return std::fabs(value) > 150.0f && std::fabs(value) < 1e6f ? std::fmod(value, 150.0f) : value;
}

std::vector<QxGradient> stops(Input& input) {
    std::vector<QxGradient> result(static_cast<size_t>(input.below(6)));
    for (QxGradient& stop : result) stop = {input.take<uint32_t>(), raw(input), raw(input)};
    return result;
}

std::unique_ptr<QxProperty> shadowRecord(Input& input, bool outer) {
    const float angle = raw(input), distance = raw(input), size = raw(input), opacity = raw(input);
    const auto color = input.take<uint32_t>();
    if (outer) return std::make_unique<QxOuterShadowProperty>(angle, distance, size, color, opacity);
    return std::make_unique<QxInnerShadowProperty>(angle, distance, size, color, opacity);
}

template <typename Relief>
std::unique_ptr<QxProperty> reliefRecord(Input& input) {
    const int style = input.below(3), direction = input.below(2), technique = input.below(2);
    const int soften = input.take<int32_t>();
    const float size = raw(input), depth = raw(input), opacity = raw(input), angle = raw(input), altitude = raw(input);
    const auto light = input.take<uint32_t>(), shade = input.take<uint32_t>();
    return std::make_unique<Relief>(style, size, depth, direction, technique, soften, opacity, angle, altitude, light,
                                    opacity, shade, opacity);
}

/// The stops have to outlive the record, which keeps their address only.
std::unique_ptr<QxProperty> record(Input& input, int type, std::vector<QxGradient>& gradient, QxBitmap& tile) {
    const int count = static_cast<int>(gradient.size());
    switch (type) {
        case QXE_OUTER_SHADOW:
            return shadowRecord(input, true);
        case QXE_INNER_SHADOW:
            return shadowRecord(input, false);
        case QXE_OUTER_GLOW:
            return std::make_unique<QxOuterGlowProperty>(raw(input), 0x80FF00FFu, 1.0f, count, gradient.data());
        case QXE_INNER_GLOW:
            return std::make_unique<QxInnerGlowProperty>(raw(input), 0x80FF00FFu, 1.0f, count, gradient.data());
        case QXE_BEVEL:
            return reliefRecord<QxBevelProperty>(input);
        case QXE_EMBOSS:
            return reliefRecord<QxEmbossProperty>(input);
        case QXE_LINEAR_GRADIENT: {
            const float angle = raw(input), scale = raw(input);
            return std::make_unique<QxLinearGradientProperty>(angle, scale, 1.0f, count, gradient.data());
        }
        case QXE_RADIAL_GRADIENT:
            return std::make_unique<QxRadialGradientProperty>(0.0f, raw(input), 1.0f, count, gradient.data());
        case QXE_STROKE: {
            const float size = raw(input);
            return std::make_unique<QxStrokeProperty>(size, 0xFF102030u, 1.0f, 0, input.below(4));
        }
        case QXE_PATTERN: {
            const float scale = raw(input);
            return std::make_unique<QxPatternProperty>(&tile, scale, raw(input));
        }
        default:
            return nullptr;
    }
}

void addThroughAdder(Input& input, QxEffect& stack, int type, std::vector<QxGradient>& gradient, QxBitmap& tile) {
    const float a = raw(input), b = raw(input), c = raw(input), d = raw(input);
    const auto color = input.take<uint32_t>();
    const int count = input.below(4) == 0 ? input.take<int16_t>() : static_cast<int>(gradient.size());
    const int safeCount = count > static_cast<int>(gradient.size()) ? static_cast<int>(gradient.size()) : count;
    switch (type) {
        case QXE_OUTER_SHADOW:
            stack.addOuterShadowText(a, b, c, color, d);
            break;
        case QXE_INNER_SHADOW:
            stack.addInnerShadowText(a, b, c, color, d);
            break;
        case QXE_OUTER_GLOW:
            stack.addOuterGlowText(a, color, b, safeCount, gradient.data());
            break;
        case QXE_INNER_GLOW:
            stack.addInnerGlowText(a, color, b, safeCount, gradient.data());
            break;
        case QXE_LINEAR_GRADIENT:
            stack.addLinearGradientText(a, b, c, safeCount, gradient.data());
            break;
        case QXE_RADIAL_GRADIENT:
            stack.addRadialGradientText(a, b, safeCount, gradient.data());
            break;
        case QXE_STROKE:
            stack.addStrokeText(a, color, b, 0, input.below(4));
            break;
        case QXE_PATTERN:
            stack.addPatternText(&tile, a, b);
            break;
        case QXE_BEVEL:
            stack.addBevelText(input.below(3), a, b, 1, input.below(2), 3, c, d, a, color, b, color, c);
            break;
        case QXE_EMBOSS:
            stack.addEmbossText(0, a, b, 0, input.below(2), 3, c, d, a, color, b, color, c);
            break;
        default:
            stack.addEffect(type, nullptr);
            break;
    }
}

void addEffect(Input& input, QxEffect& stack) {
    const int type = input.below(15);
    std::vector<QxGradient> gradient = stops(input);
    QxBitmap tile(static_cast<unsigned>(input.below(9)), static_cast<unsigned>(input.below(9)), 4u);
    if (input.below(2) == 0) {
        addThroughAdder(input, stack, type, gradient, tile);
        return;
    }
    const std::unique_ptr<QxProperty> property = record(input, type, gradient, tile);
    if (property != nullptr) stack.addEffect(type, property.get());
}

void draw(Input& input, QxEffect& stack) {
    const int width = input.below(70), height = input.below(50);
    QxBitmap output(static_cast<unsigned>(width), static_cast<unsigned>(height), 4u);
    stack.addText(input.take<uint32_t>());
    stack.initEffect(width, height);
    stack.setDstBitmap(&output);
    const int glyphWidth = 1 + input.below(40), glyphHeight = 1 + input.below(30);
    std::vector<unsigned char> coverage(static_cast<size_t>(glyphWidth) * static_cast<size_t>(glyphHeight));
    for (unsigned char& pixel : coverage) pixel = input.empty() ? 200 : input.byte();
    QxGlyph glyph{coverage.data(), static_cast<uint16_t>(glyphWidth), static_cast<uint16_t>(glyphHeight), 0, 0};
    const int x = input.below(3) == 0 ? input.take<int32_t>() : input.take<int8_t>();
    stack.renderEffectLayer(x, input.take<int8_t>(), &glyph);
    stack.doEffectPostProcessing();
    stack.compositeLayers(&output);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    test::quietLog();
    Input input(data, size);
    QxEffect stack;
    for (int effects = input.below(7); effects > 0; --effects) addEffect(input, stack);
    if (input.below(2) == 0) stack.setTextOpacity(raw(input));
    draw(input, stack);
    delete[] stack.getMapKey(input.take<uint32_t>());
    return 0;
}
