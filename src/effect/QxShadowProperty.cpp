#include "effect/QxShadowProperty.h"

#include "effect/sequential_chars.h"

namespace QxFontEffect {

QxShadowProperty::QxShadowProperty(float angle_, float distance_, float size_, unsigned int color_, float opacity_)
    : QxProperty(color_, opacity_), angle(angle_), distance(distance_), size(size_) {}

int QxShadowProperty::getSequentialCharLength() {
    return 13;
}

int QxShadowProperty::writeSequentialChars(char** cursor, char letter) const {
    return SequentialChars(cursor, letter).angle(angle).byte7(distance).byte7(size).color(color).finish();
}

}  // namespace QxFontEffect
