#include "effect/QxPatternProperty.h"

#include "effect/sequential_chars.h"
#include "effect/setting_rules.h"

namespace QxFontEffect {

QxPatternProperty::QxPatternProperty(QxBitmap* pattern_, float scale_, float opacity_)
    : QxProperty(0, opacity_), pattern(pattern_), scale(clampSetting(scale_, 0.0f, 10.0f)) {}

int QxPatternProperty::getSequentialCharLength() {
    return 17;
}

int QxPatternProperty::toSequentialChar(char** cursor) {
    // The address stands for the pixels: cheap, and a core never hands out the same one twice.
    const uint32_t address = static_cast<uint32_t>(reinterpret_cast<uintptr_t>(pattern));
    return SequentialChars(cursor, 'P').color(address).nibbles4(percentOf(scale)).nibbles4(percentOf(opacity)).finish();
}

}  // namespace QxFontEffect
