#include "style_stack.h"

#include <algorithm>
#include <cmath>

namespace qxrender {

bool wantsLayer(const Style& style) {
    if (style.mode != LayerMode::Auto) return style.mode == LayerMode::Layer;
    return style.opacity < 1.0f || std::any_of(style.effects.begin(), style.effects.end(),
                                               [](const EffectSetting& e) { return e.kind->needsLayer(e); });
}

uint32_t textColorOf(const Style& style) {
    const auto alpha = static_cast<uint32_t>(std::lround(static_cast<float>(style.color >> 24) * style.opacity));
    return alpha << 24 | (style.color & 0xFFFFFF);
}

void addStyle(QxFontEffect::QxEffect& stack, const Style& style) {
    for (const EffectSetting& effect : style.effects) effect.kind->add(stack, effect);
    // A text opacity below 1 is what selects layer mode; one just below changes nothing else.
    if (wantsLayer(style)) stack.setTextOpacity(std::min(style.opacity, std::nextafter(1.0f, 0.0f)));
}

}  // namespace qxrender
