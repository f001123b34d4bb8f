#pragma once

#include "effect/QxShadowProperty.h"

namespace QxFontEffect {

/// Settings of the outer shadow; the angle is stored as given.
class QxOuterShadowProperty : public QxShadowProperty {
public:
    using QxShadowProperty::QxShadowProperty;

    int toSequentialChar(char** cursor) override { return writeSequentialChars(cursor, 'S'); }
};

}  // namespace QxFontEffect
