#pragma once

#include <cstdint>

namespace QxFontEffect {

/// A directed light over a height field.
struct ReliefLight {
    float h;                 ///< height factor: how far a slope of 1 leans, the smaller the steeper it looks
    float lx, ly, lz;        ///< towards the light; rows count downwards
    int32_t shadowAlpha;     ///< strength of shaded slopes, 0..255
    int32_t highlightAlpha;  ///< strength of lit slopes, 0..255
};

/// The part of a height field that is lit, in the field's own unit: pixels.
///
/// The strength of a pixel of height d is clamp(gain * (top - d), 0, 255), or with `bothEnds` that of the nearer end:
/// clamp(gain * min(d, top - d), 0, 255).
struct ReliefBand {
    float top;
    float gain;     ///< strength gained over one pixel
    bool bothEnds;  ///< whether height 0 ends the band as well
    bool rising;    ///< the field rises into the shape: lit and shaded slopes change places
};

/// Lights one row of a height field.
///
/// Slopes are central differences; the normal's length is taken with the fast square root. Single precision
/// throughout, in the order written, since both maps are truncated to bytes.
///
/// @param above, here, below  `count` heights each; here[-1] and here[count] are read too.
/// @param shadow, highlight   `count` bytes each, written: 0 without strength.
void lightReliefRow(const float* above, const float* here, const float* below, int count, const ReliefLight& light,
                    const ReliefBand& band, uint8_t* shadow, uint8_t* highlight);

/// How a pair of map bytes becomes a pixel: both are multiplied by the gain and truncated, and the larger one's colour
/// is as strong as they differ, up to 255.
struct ReliefColors {
    float gain;
    uint32_t highlight;  ///< A, R, G, B; the alpha byte is not read
    uint32_t shadow;
};

}  // namespace QxFontEffect
