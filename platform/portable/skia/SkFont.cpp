#include "SkFont.h"

#include "glyph_loader.h"

void SkFont::getWidthsBounds(const SkGlyphID glyphs[], int count, SkScalar widths[], SkRect bounds[],
                             const SkPaint*) const {
    portable::GlyphLoader loader(*this);
    for (int i = 0; i < count; ++i) {
        const portable::GlyphMetrics metrics = portable::measureGlyph(loader, glyphs[i]);
        if (widths != nullptr) widths[i] = metrics.advance;
        if (bounds != nullptr) bounds[i] = metrics.bounds;
    }
}
