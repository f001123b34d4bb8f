#pragma once

#include "effect/QxGradient.h"
#include "effect/QxProperty.h"

namespace QxFontEffect {

/// What the outer and the inner glow's settings have in common.
class QxGlowProperty : public QxProperty {
public:
    QxGlowProperty(float size, unsigned int color, float opacity, int count, QxGradient* gradient);

    int getSequentialCharLength() override;

    float size;            ///< glow size in pixels
    int32_t count;         ///< number of stops
    QxGradient* gradient;  ///< `count` stops; kept, not copied: owned by whoever made the array

protected:
    int writeSequentialChars(char** cursor, char letter) const;
};

}  // namespace QxFontEffect
