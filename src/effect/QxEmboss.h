#pragma once

#include "effect/QxECoreBase.h"
#include "effect/QxEmbossProperty.h"

namespace QxFontEffect {

/// Presses a relief that straddles the outline: half of the size outside the glyphs, half inside.
///
/// In: the coverage, size S, and the light settings of the bevel. Out: the lit slope, painted in the highlight and the
/// shadow colour.
///
/// 1. Signed distance to the outline, in pixels, negative inside. The outline is pieced together from the coverage: a
///    straight piece runs through each pixel of partial coverage, across the gradient of the coverage around it and as
///    far from the pixel's centre as an edge of that direction which covers as much of the pixel. Coverage without
///    partial pixels has its outline between two pixels.
/// 2. One height field over both sides: that distance, limited to -S/2 .. S/2 and counted from the inner end. It has
///    slope 1 across the band and is flat beyond both ends; nothing marks the outline in it, so no seam can show at any
///    size.
/// 3. Light as on the bevel, at full strength from one pixel inside either end of the band. The bevel's strength is its
///    distance to the far end, which leaves small sizes faint; here size 6 is plainly visible.
/// 4. Smooth technique: the band takes two thirds of the size, and a blur of both maps by the rest rounds its ends.
///    Hard technique: the band takes the whole size. Then softening and colours as on the bevel.
///
/// The picture is painted twice: into the destination where coverage is not full, and into the base bitmap where there
/// is any. The layer composition weights the first with 255 - coverage and the second with coverage, so the pixels on
/// the outline, which got both, come out whole. Without a base bitmap everything goes into the destination.
///
/// Depth, direction, angle, altitude and the two colours act as on the bevel; the style is not used. Nothing is drawn
/// for settings that are not finite, for sizes of 0 and less, or for bands too large for memory.
///
/// Where it is weak: curves are many-sided, by one side a pixel, which a hard slope shows when it is enlarged;
/// softening rounds them. Strokes thinner than a pixel have both outlines in one pixel, of which one piece is made.
class QxEmboss : public QxECoreBase {
public:
    QxEmboss();
    ~QxEmboss() override;

    void setProperty(QxProperty* p) override;
    QxProperty* getProperty() override { return property; }
    void doPostProcessing(ParamPostProcessing* p) override;
    /// How far beyond the text rectangle the relief paints.
    int getOffset() override;

    QxEmbossProperty* property;  ///< own copy, null until set
};

}  // namespace QxFontEffect
