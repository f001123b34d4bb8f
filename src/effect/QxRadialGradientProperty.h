#pragma once

#include "effect/QxGradientFillProperty.h"

namespace QxFontEffect {

/// Settings of the radial gradient fill; its pass does not read the angle.
class QxRadialGradientProperty : public QxGradientFillProperty {
public:
    using QxGradientFillProperty::QxGradientFillProperty;

    int toSequentialChar(char** cursor) override { return writeSequentialChars(cursor, 'D'); }
};

}  // namespace QxFontEffect
