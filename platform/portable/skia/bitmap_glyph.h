#pragma once

#include <ft2build.h>
#include FT_FREETYPE_H

#include "glyph_mask.h"

namespace portable {

/// How a font's picture of a glyph is laid onto the canvas, round the glyph's origin, y down.
struct BitmapPlacement {
    /// The picture's corner, in canvas pixels, fractional.
    double left = 0;
    double top = 0;
    /// Canvas pixels per picture pixel; negative in x for mirrored text.
    double scaleX = 1;
    double scaleY = 1;
    /// Canvas columns to the right per canvas row down.
    double skewX = 0;
};

/// The filled outline of a glyph that is a picture: its alpha, scaled by averaging the area under each pixel.
///
/// A slant moves whole rows. Pixels of the canvas that the picture covers in part get that part.
///
/// @param bitmap  BGRA with alpha last, 8-bit grey or 1-bit; others give nothing.
/// @param clip    in the placement's coordinates.
/// @return the mask in the placement's coordinates, empty when nothing falls into the clip or there is no memory.
GlyphMask silhouetteOf(const FT_Bitmap& bitmap, const BitmapPlacement& placement, const SkIRect& clip);

}  // namespace portable
