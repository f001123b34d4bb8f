#pragma once

#include <hwui/Paint.h>
#include <minikin/Layout.h>

#include <cstdint>

#include "pixel/QxGlyph.h"

namespace QxFontEffect {

/// Size and baseline of a line's coverage, before they are narrowed to a QxGlyph's fields.
struct LineBox {
    int32_t width;   ///< columns: the advance, truncated
    int32_t height;  ///< rows: of the layout's bounding box, truncated
    int32_t top;     ///< rows from the top down to the baseline
};

/// Advances and boxes that are negative, not finite or beyond 32 bits give the nearest size there is.
///
/// The width is the advance and not the ink: the picture starts at the left edge of the ink, so that ink beyond
/// the advance is cut and an empty first side bearing is gone.
LineBox lineBox(float advance, const minikin::MinikinRect& bounds);

/// Draws a layout into a new coverage image. The image has the memory of the whole box, the record its sizes
/// modulo 65536.
///
/// @param layout  null draws a line without glyphs.
/// @param paint   used as the drawing paint; its font's typeface is changed.
/// @return a record for `deleteGlyph`, or null when memory runs out.
QxGlyph* drawLineGlyph(const minikin::Layout* layout, android::Paint* paint);

/// Deletes a record and its pixels; null does nothing.
void deleteGlyph(QxGlyph* glyph);

}  // namespace QxFontEffect
