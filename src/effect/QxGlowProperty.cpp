#include "effect/QxGlowProperty.h"

#include "effect/sequential_chars.h"

namespace QxFontEffect {

QxGlowProperty::QxGlowProperty(float size_, unsigned int color_, float opacity_, int count_, QxGradient* gradient_)
    : QxProperty(color_, opacity_), size(size_), count(count_), gradient(gradient_) {}

int QxGlowProperty::getSequentialCharLength() {
    return sequentialLengthWithStops(10, count);
}

int QxGlowProperty::writeSequentialChars(char** cursor, char letter) const {
    return SequentialChars(cursor, letter).byte7(size).color(color).stops(count, gradient).finish();
}

}  // namespace QxFontEffect
