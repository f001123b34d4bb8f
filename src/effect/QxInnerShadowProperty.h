#pragma once

#include "effect/QxProperty.h"

namespace QxFontEffect {

/// Settings of the inner shadow.
class QxInnerShadowProperty : public QxProperty {
public:
    QxInnerShadowProperty(float angle, float distance, float size, unsigned int color, float opacity);

    int getSequentialCharLength() override;
    int toSequentialChar(char** cursor) override;

    float angle;     ///< degrees, direction of the light, stored reduced to (-360, 360), sign kept
    float distance;  ///< shift in pixels
    float size;      ///< blur radius in pixels
};

}  // namespace QxFontEffect
