#pragma once

#include "effect_table.h"

namespace qxrender {

// How each effect of the table reaches the library's stack, how far it paints and whether it wants the layer.

void addOuterShadow(QxFontEffect::QxEffect& stack, const EffectSetting& setting);
void addInnerShadow(QxFontEffect::QxEffect& stack, const EffectSetting& setting);
void addOuterGlow(QxFontEffect::QxEffect& stack, const EffectSetting& setting);
void addInnerGlow(QxFontEffect::QxEffect& stack, const EffectSetting& setting);
void addBevel(QxFontEffect::QxEffect& stack, const EffectSetting& setting);
void addEmboss(QxFontEffect::QxEffect& stack, const EffectSetting& setting);
void addLinearGradient(QxFontEffect::QxEffect& stack, const EffectSetting& setting);
void addRadialGradient(QxFontEffect::QxEffect& stack, const EffectSetting& setting);
void addStroke(QxFontEffect::QxEffect& stack, const EffectSetting& setting);
void addPattern(QxFontEffect::QxEffect& stack, const EffectSetting& setting);

/// The library's own margin is enough.
int noReach(const EffectSetting& setting);
int glowReach(const EffectSetting& setting);
int bevelReach(const EffectSetting& setting);

bool never(const EffectSetting& setting);
bool always(const EffectSetting& setting);
bool bevelNeedsLayer(const EffectSetting& setting);
bool strokeNeedsLayer(const EffectSetting& setting);

}  // namespace qxrender
