#pragma once

#include <cstdint>
#include <optional>

#include "effect/QxEffect.h"
#include "pixel/QxBitmap.h"
#include "pixel/QxGlyph.h"
#include "support/allocation_pause.h"

namespace QxFontEffect::test {

/// Every type that a stack can hold.
constexpr int kEffectTypes[] = {1, 2, 3, 4, 5, 6, 7, 8, 10, 11, 12};

/// Adds one effect of the type with settings that are neither none nor much. Variants 0 to 2 take different ways where
/// an effect has several. Gives the effect's id, -1 when it could not be added.
inline int addSample(QxEffect& stack, int type, int variant = 0) {
    QxGradient stops[2] = {{0xFF2030D0u, 1, 0}, {0xFFE0F020u, 1, 1}};
    const int glowStops = variant == 0 ? 0 : 2;
    switch (type) {
        case QXE_OUTER_SHADOW:
            return stack.addOuterShadowText(130, 4, 3, 0xFF102030u, 0.8f);
        case QXE_INNER_SHADOW:
            return stack.addInnerShadowText(40, 2, 3, 0xFF405060u, 0.9f);
        case QXE_OUTER_GLOW:
            return stack.addOuterGlowText(5, 0xFF7080FFu, 0.7f, glowStops, stops);
        case QXE_INNER_GLOW:
            return stack.addInnerGlowText(4, 0xFFA0FF20u, 0.6f, glowStops, stops);
        case QXE_BEVEL:
            // Chisel and smooth take different ways, and the smooth one a third from a radius of 11 on.
            return stack.addBevelText(variant % 2, variant == 2 ? 14 : 5, 2, 0, variant == 1, 2, 1, 135, 30,
                                      0xFFFFFFFFu, 0.8f, 0xFF000000u, 0.7f);
        case QXE_EMBOSS:
            return stack.addEmbossText(0, 6, 2, 0, variant % 2, 2, 1, 135, 30, 0xFFFFFFFFu, 0.8f, 0xFF000000u, 0.7f);
        case QXE_LINEAR_GRADIENT:
            return stack.addLinearGradientText(30, 1, 0.8f, 2, stops);
        case QXE_RADIAL_GRADIENT:
            return stack.addRadialGradientText(1, 0.7f, 2, stops);
        case QXE_STROKE:
            return stack.addStrokeText(4, 0xFFD01010u, 0.9f, 0, variant);
        case QXE_PATTERN: {
            uint8_t bytes[36];
            for (int i = 0; i < 36; ++i) bytes[i] = static_cast<uint8_t>(60 + 5 * i);
            std::optional<AllocationPause> pause(std::in_place);  // the tile is not what is short of memory
            QxBitmap tile(3, 3, bytes, 4);
            pause.reset();
            return stack.addPatternText(&tile, 1.5f, 0.8f);
        }
        default:
            return stack.addText(0xFF3060C0u, 1);
    }
}

/// Renders one glyph at (x, y) onto `output`, whose size the rendering has. Asks for no memory itself.
inline void drawGlyph(QxEffect& stack, QxBitmap& output, QxGlyph& glyph, int x, int y) {
    stack.initEffect(static_cast<int>(output.width), static_cast<int>(output.height));
    stack.setDstBitmap(&output);
    stack.renderEffectLayer(x, y, &glyph);
    stack.doEffectPostProcessing();
    stack.compositeLayers(&output);
}

}  // namespace QxFontEffect::test
