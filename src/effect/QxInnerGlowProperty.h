#pragma once

#include "effect/QxProperty.h"
#include "effect/QxGradient.h"

namespace QxFontEffect {

/// Settings of the inner glow.
class QxInnerGlowProperty : public QxProperty {
public:
    QxInnerGlowProperty(float size, unsigned int color, float opacity, int count, QxGradient* gradient);

    int getSequentialCharLength() override;
    int toSequentialChar(char** cursor) override;

    float size;            ///< glow size in pixels
    int32_t count;         ///< number of stops
    QxGradient* gradient;  ///< `count` stops; kept, not copied: owned by whoever made the array
};

}  // namespace QxFontEffect
