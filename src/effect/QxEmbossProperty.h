#pragma once

#include "effect/QxReliefProperty.h"

namespace QxFontEffect {

/// Settings of the emboss.
class QxEmbossProperty : public QxReliefProperty {
public:
    using QxReliefProperty::QxReliefProperty;

    int toSequentialChar(char** cursor) override { return writeSequentialChars(cursor, 'E'); }
};

}  // namespace QxFontEffect
