#include "effect/QxStrokeProperty.h"

#include "effect/sequential_chars.h"

namespace QxFontEffect {

QxStrokeProperty::QxStrokeProperty(float size_, unsigned int color_, float opacity_, int mode_, int position_)
    : QxProperty(color_, opacity_), size(size_), mode(mode_), position(position_) {}

int QxStrokeProperty::getSequentialCharLength() {
    return 12;
}

int QxStrokeProperty::toSequentialChar(char** cursor) {
    return SequentialChars(cursor, 'K').byte7(size).color(color).byte7(mode).byte7(position).finish();
}

}  // namespace QxFontEffect
