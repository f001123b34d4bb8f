#pragma once

#include "effect/QxProperty.h"

namespace QxFontEffect {

/// Settings of the outer shadow.
class QxOuterShadowProperty : public QxProperty {
public:
    QxOuterShadowProperty(float angle, float distance, float size, unsigned int color, float opacity);

    int getSequentialCharLength() override;
    int toSequentialChar(char** cursor) override;

    float angle;     ///< degrees, direction of the light, stored as given; the shadow falls opposite to it
    float distance;  ///< shift in pixels
    float size;      ///< blur radius in pixels
};

}  // namespace QxFontEffect
