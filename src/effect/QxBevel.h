#pragma once

#include <cstdint>

#include "effect/QxBevelProperty.h"
#include "effect/QxECoreBase.h"

namespace QxFontEffect {

/// What `QxBevel::partialDT` takes.
struct BevelDistanceWork {
    float* map;  ///< height x width distances in pixels
    int32_t height;
    int32_t width;
    int32_t radius;    ///< columns and rows searched on each side
    int32_t rowStart;  ///< first row refined
    int32_t rowEnd;    ///< the row behind the last
};

/// What `QxBevel::partialLightProcess` takes. Ranges have their far ends outside.
struct BevelLightWork {
    uint8_t* shadow;         ///< shadow map
    uint8_t* highlight;      ///< highlight map
    int32_t width;           ///< elements from one row to the next in all three maps
    int32_t radius;          ///< distance at which the band ends
    float h;                 ///< height factor
    float lx, ly, lz;        ///< towards the light
    int32_t shadowAlpha;     ///< 0..255
    int32_t highlightAlpha;  ///< 0..255
    int32_t inside;          ///< not 0 for the inner style
    const float* distance;   ///< distance map
    int32_t xStart, xEnd;    ///< at least one column away from the map's sides
    int32_t yStart, yEnd;    ///< at least one row away from its top and bottom
};

/// What `QxBevel::partialBlur` takes. Ranges have their far ends outside and stay `radius` away from the map's edges.
struct BevelBlurWork {
    const uint8_t* src;
    uint8_t* dst;    ///< must not overlap src
    int32_t width;   ///< columns, and bytes from one row to the next
    int32_t radius;  ///< pixels
    int32_t xStart, xEnd;
    int32_t yStart, yEnd;
};

/// Makes the glyphs look raised.
///
/// A band along the outline, outside the glyphs or inside them, is taken for a slope whose height is the distance to
/// the outline; the slope is lit from a direction, and the difference of what is lit and what is shaded is painted in
/// the highlight or the shadow colour. The strength is the distance to the band's far end in pixels, of 255: a narrow
/// band is faint. The inner style lights everything around the glyphs too and relies on the layer composition, which
/// confines it to them.
///
/// Nothing is drawn for settings that are not finite or too large for memory.
class QxBevel : public QxECoreBase {
public:
    QxBevel();
    ~QxBevel() override;

    void setProperty(QxProperty* p) override;
    QxProperty* getProperty() override { return property; }
    void doPostProcessing(ParamPostProcessing* p) override;
    /// The size rounded, and the softening; narrower than what a smooth band may reach.
    int getOffset() override;

    // Null pointers and empty maps make the following do nothing.

    /// Squared distances along a line of `n` samples, see `squaredDistanceLine`. Without memory `d` is left as it is.
    static void dt1D(float* d, float* f, int n);

    /// Refines a distance map from its values below 1, see `refineDistances`. `work` is a `BevelDistanceWork`.
    /// The passes return 0.
    static int partialDT(void* work);

    /// Lights the part of a distance map that is not at the band's end; everything else keeps its map values. `work`
    /// is a `BevelLightWork`.
    static int partialLightProcess(void* work);

    /// Blurs a part of a map with the soft bell. `work` is a `BevelBlurWork`.
    static int partialBlur(void* work);

    /// `partialBlur` of a whole map but for the frame of `radius` pixels, which keeps what `dst` holds.
    static void blur(unsigned char* src, unsigned char* dst, int width, int height, int radius);

    QxBevelProperty* property;  ///< own copy, null until set
};

}  // namespace QxFontEffect
