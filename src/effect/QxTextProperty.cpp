#include "effect/QxTextProperty.h"

#include "effect/sequential_chars.h"

namespace QxFontEffect {

QxTextProperty::QxTextProperty(unsigned int color_, float opacity_) : QxProperty(color_, opacity_) {}

int QxTextProperty::getSequentialCharLength() {
    return 9;
}

int QxTextProperty::toSequentialChar(char** cursor) {
    return SequentialChars(cursor, 'T').color(color).finish();
}

}  // namespace QxFontEffect
