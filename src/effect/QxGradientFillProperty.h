#pragma once

#include "effect/QxGradient.h"
#include "effect/QxProperty.h"

namespace QxFontEffect {

/// What the linear and the radial gradient's settings have in common.
class QxGradientFillProperty : public QxProperty {
public:
    QxGradientFillProperty(float angle, float scale, float opacity, int count, QxGradient* gradient);

    int getSequentialCharLength() override;

    float angle;           ///< degrees, stored reduced to (-360, 360), sign kept
    float scale;           ///< clamped to 0..2, NaN kept
    int32_t count;         ///< number of stops
    QxGradient* gradient;  ///< `count` stops; kept, not copied: owned by whoever made the array

protected:
    int writeSequentialChars(char** cursor, char letter) const;
};

}  // namespace QxFontEffect
