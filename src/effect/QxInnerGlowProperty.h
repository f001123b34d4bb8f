#pragma once

#include "effect/QxGlowProperty.h"

namespace QxFontEffect {

/// Settings of the inner glow.
class QxInnerGlowProperty : public QxGlowProperty {
public:
    using QxGlowProperty::QxGlowProperty;

    int toSequentialChar(char** cursor) override { return writeSequentialChars(cursor, 'N'); }
};

}  // namespace QxFontEffect
