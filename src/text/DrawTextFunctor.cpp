#include "text/DrawTextFunctor.h"

#include <SkCanvas.h>
#include <SkRect.h>
#include <SkTextBlob.h>
#include <hwui/Paint.h>
#include <minikin/Layout.h>

namespace QxFontEffect {

void DrawTextFunctor::operator()(size_t start, size_t end) const {
    if (start >= end) return;
    android::Paint fill(*paint);
    fill.setStyle(SkPaint::kFill_Style);

    const SkRect bounds = SkRect::MakeLTRB(origin[0], origin[1], origin[2], origin[3]);
    SkTextBlobBuilder builder;
    const SkTextBlobBuilder::RunBuffer& run =
        builder.allocRunPos(fill.getSkFont(), static_cast<int>(end - start), &bounds);
    for (size_t i = start; i < end; ++i) {
        const int glyph = static_cast<int>(i);
        const size_t slot = i - start;
        run.glyphs[slot] = static_cast<SkGlyphID>(layout->getGlyphId(glyph));
        run.pos[2 * slot] = layout->getX(glyph);
        run.pos[2 * slot + 1] = layout->getY(glyph);
    }
    canvas->drawTextBlob(builder.make(), -origin[0], -origin[1], fill);
}

}  // namespace QxFontEffect
