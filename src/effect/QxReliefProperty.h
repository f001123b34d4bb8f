#pragma once

#include "effect/QxProperty.h"

namespace QxFontEffect {

/// What the bevel's and the emboss's settings have in common.
class QxReliefProperty : public QxProperty {
public:
    QxReliefProperty(int style, float size, float depth, int direction, int technique, int soften, float opacity,
                     float angle, float altitude, unsigned int highlightColor, float highlightOpacity,
                     unsigned int shadowColor, float shadowOpacity);

    int getSequentialCharLength() override;

    int32_t style;            ///< 1: the bevel's band lies inside the glyphs, any other value outside
    float size;               ///< band width in pixels, stored as given
    float depth;              ///< steepness, clamped to 0..10, NaN kept
    int32_t direction;        ///< 0 turns the light's horizontal components round
    int32_t technique;        ///< 0 smooth, any other value hard edge
    int32_t soften;           ///< radius of the final blur in pixels, clamped to 0..16
    float angle;              ///< light azimuth in degrees, stored reduced to (-360, 360), sign kept
    float altitude;           ///< light elevation in degrees, stored reduced to (-90, 90), sign kept
    uint32_t highlightColor;  ///< colour of lit slopes, alpha is their strength
    float highlightOpacity;   ///< stored as given
    uint32_t shadowColor;     ///< colour of shaded slopes, alpha is their strength
    float shadowOpacity;      ///< stored as given

protected:
    int writeSequentialChars(char** cursor, char letter) const;
};

}  // namespace QxFontEffect
