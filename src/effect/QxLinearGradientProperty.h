#pragma once

#include "effect/QxGradientFillProperty.h"

namespace QxFontEffect {

/// Settings of the linear gradient fill.
class QxLinearGradientProperty : public QxGradientFillProperty {
public:
    using QxGradientFillProperty::QxGradientFillProperty;

    int toSequentialChar(char** cursor) override { return writeSequentialChars(cursor, 'L'); }
};

}  // namespace QxFontEffect
