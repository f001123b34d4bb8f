#include "effect/QxGradientFillProperty.h"

#include "effect/sequential_chars.h"
#include "effect/setting_rules.h"

namespace QxFontEffect {

QxGradientFillProperty::QxGradientFillProperty(float angle_, float scale_, float opacity_, int count_,
                                               QxGradient* gradient_)
    : QxProperty(0, opacity_),
      angle(static_cast<float>(wholeRemainder(angle_, 360))),
      scale(clampSetting(scale_, 0.0f, 2.0f)),
      count(count_),
      gradient(gradient_) {}

int QxGradientFillProperty::getSequentialCharLength() {
    return sequentialLengthWithStops(5, count);
}

int QxGradientFillProperty::writeSequentialChars(char** cursor, char letter) const {
    return SequentialChars(cursor, letter).angle(angle).nibbles2(percentOf(scale)).stops(count, gradient).finish();
}

}  // namespace QxFontEffect
