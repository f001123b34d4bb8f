#pragma once

#include <vector>

#include "effect/QxEffect.h"
#include "effect_table.h"
#include "render.h"

namespace qxrender {

/// Compares what was asked for with what the stack's records hold after the effects were added.
std::vector<Adjustment> findAdjustments(QxFontEffect::QxEffect& stack, const std::vector<EffectSetting>& effects);

}  // namespace qxrender
