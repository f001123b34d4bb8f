#pragma once

#include "effect/QxShadowProperty.h"

namespace QxFontEffect {

/// Settings of the inner shadow; the angle is stored reduced to (-360, 360), sign kept.
class QxInnerShadowProperty : public QxShadowProperty {
public:
    QxInnerShadowProperty(float angle, float distance, float size, unsigned int color, float opacity);

    int toSequentialChar(char** cursor) override { return writeSequentialChars(cursor, 'I'); }
};

}  // namespace QxFontEffect
