#pragma once

#include "effect/QxGlowProperty.h"

namespace QxFontEffect {

/// Settings of the outer glow.
class QxOuterGlowProperty : public QxGlowProperty {
public:
    using QxGlowProperty::QxGlowProperty;

    int toSequentialChar(char** cursor) override { return writeSequentialChars(cursor, 'G'); }
};

}  // namespace QxFontEffect
