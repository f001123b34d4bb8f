#pragma once

#include <memory>

#include "SkPoint.h"
#include "SkRect.h"
#include "glyph_loader.h"

namespace portable {

/// Coverage of one glyph, 0..255, rows top to bottom without padding. Empty box: no pixels.
struct GlyphMask {
    SkIRect box = SkIRect::MakeEmpty();
    std::unique_ptr<uint8_t[]> pixels;

    /// Blank pixels for an area; false for an empty one.
    bool allocate(const SkIRect& area);
    uint8_t* row(int y) const {
        return pixels.get() + static_cast<size_t>(y - box.fTop) * static_cast<size_t>(box.width());
    }
};

/// Draws a glyph's coverage at a place on the canvas.
///
/// Masks start on whole pixels: the origin is rounded half up, or with subpixel positions x falls on a quarter.
/// Paths keep their exact place. Antialiased masks pass the gamma table; 1-bit masks, coloured glyphs and paths
/// do not.
///
/// @param origin  where the glyph's origin falls, y on the baseline, canvas pixels.
/// @param clip    the part of the canvas that is wanted; the mask may be smaller than it or reach beyond it.
/// Throws std::bad_alloc where there is no memory for the mask: a text that lacks a letter is worse than none.
///
/// @return an empty mask for a glyph without ink in the clip, an origin that is not finite or more than 2^24 pixels
///         away, and an outline wider or higher than 32000 pixels.
GlyphMask rasteriseGlyph(GlyphLoader& loader, SkGlyphID glyph, SkPoint origin, const SkIRect& clip);

}  // namespace portable
