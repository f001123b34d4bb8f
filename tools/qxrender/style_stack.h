#pragma once

#include <cstdint>

#include "effect/QxEffect.h"
#include "job.h"

namespace qxrender {

/// Whether a style is drawn in the library's layer mode: as its mode says, or where an effect would paint the box
/// around the letters too, or for an opacity.
bool wantsLayer(const Style& style);

/// The colour that the text object gets. The library composes by its text opacity but scales by the text colour's
/// alpha, so fading takes both.
uint32_t textColorOf(const Style& style);

/// Adds the style's effects to a stack and sets its text opacity. Throws Failure: a pattern's file cannot be read.
void addStyle(QxFontEffect::QxEffect& stack, const Style& style);

}  // namespace qxrender
