#pragma once

#include "effect/QxProperty.h"

namespace QxFontEffect {

/// What the outer and the inner shadow's settings have in common.
class QxShadowProperty : public QxProperty {
public:
    QxShadowProperty(float angle, float distance, float size, unsigned int color, float opacity);

    int getSequentialCharLength() override;

    float angle;     ///< degrees, direction of the light; the shadow falls opposite to it
    float distance;  ///< shift in pixels
    float size;      ///< blur radius in pixels

protected:
    int writeSequentialChars(char** cursor, char letter) const;
};

}  // namespace QxFontEffect
