#include "effect/QxReliefProperty.h"

#include <algorithm>

#include "effect/sequential_chars.h"
#include "effect/setting_rules.h"

namespace QxFontEffect {

QxReliefProperty::QxReliefProperty(int style_, float size_, float depth_, int direction_, int technique_, int soften_,
                                   float opacity_, float angle_, float altitude_, unsigned int highlightColor_,
                                   float highlightOpacity_, unsigned int shadowColor_, float shadowOpacity_)
    : QxProperty(0, opacity_),
      style(style_),
      size(size_),
      depth(clampSetting(depth_, 0.0f, 10.0f)),
      direction(direction_),
      technique(technique_),
      soften(std::clamp(soften_, 0, 16)),
      angle(static_cast<float>(wholeRemainder(angle_, 360))),
      altitude(static_cast<float>(wholeRemainder(altitude_, 90))),
      highlightColor(highlightColor_),
      highlightOpacity(highlightOpacity_),
      shadowColor(shadowColor_),
      shadowOpacity(shadowOpacity_) {}

int QxReliefProperty::getSequentialCharLength() {
    return 30;
}

int QxReliefProperty::writeSequentialChars(char** cursor, char letter) const {
    return SequentialChars(cursor, letter)
        .byte7(style)
        .nibbles2(truncToInt(size))
        .nibbles4(percentOf(depth))
        .byte7(direction)
        .byte7(technique)
        .byte7(soften)
        .angle(angle)
        .byte7(altitude)
        .color(highlightColor)
        .color(shadowColor)
        .finish();
}

}  // namespace QxFontEffect
