#pragma once

#include "effect/QxProperty.h"
#include "effect/QxGradient.h"

namespace QxFontEffect {

/// Settings of the radial gradient fill.
class QxRadialGradientProperty : public QxProperty {
public:
    QxRadialGradientProperty(float angle, float scale, float opacity, int count, QxGradient* gradient);

    int getSequentialCharLength() override;
    int toSequentialChar(char** cursor) override;

    float angle;           ///< degrees, stored reduced to (-360, 360), sign kept
    float scale;           ///< clamped to 0..2, NaN kept
    int32_t count;         ///< number of stops
    QxGradient* gradient;  ///< `count` stops; kept, not copied: owned by whoever made the array
};

}  // namespace QxFontEffect
