#pragma once

#include "effect/QxReliefProperty.h"

namespace QxFontEffect {

/// Settings of the bevel.
class QxBevelProperty : public QxReliefProperty {
public:
    using QxReliefProperty::QxReliefProperty;

    int toSequentialChar(char** cursor) override { return writeSequentialChars(cursor, 'B'); }
};

}  // namespace QxFontEffect
