#include "text/line_glyph.h"

#include <SkBitmap.h>
#include <SkBlendMode.h>
#include <SkCanvas.h>
#include <SkImageInfo.h>
#include <hwui/MinikinUtils.h>

#include <algorithm>
#include <memory>
#include <new>

#include "effect/safe_convert.h"
#include "text/DrawTextFunctor.h"

namespace QxFontEffect {

namespace {

struct GlyphDeleter {
    void operator()(QxGlyph* glyph) const { deleteGlyph(glyph); }
};

// Zeroed, one byte at least. Null for a size that memory cannot have.
unsigned char* newPixels(const LineBox& box) {
    const uint64_t count = static_cast<uint64_t>(box.width) * static_cast<uint64_t>(box.height);
    if (count > PTRDIFF_MAX) return nullptr;
    return new (std::nothrow) unsigned char[static_cast<size_t>(std::max<uint64_t>(count, 1))]();
}

void drawGlyphs(const minikin::Layout& layout, const minikin::MinikinRect& bounds, const LineBox& box,
                unsigned char* pixels, android::Paint* paint) {
    SkBitmap bitmap;
    const SkImageInfo info = SkImageInfo::Make(box.width, box.height, kAlpha_8_SkColorType, kPremul_SkAlphaType);
    if (!bitmap.installPixels(info, pixels, static_cast<size_t>(box.width))) return;
    SkCanvas canvas(bitmap);
    canvas.drawColor(0, SkBlendMode::kSrc);
    const float origin[4] = {bounds.mLeft, bounds.mTop, bounds.mRight, bounds.mBottom};
    DrawTextFunctor draw = {&layout, &canvas, paint, origin};
    android::MinikinUtils::forFontRun(layout, paint, draw);
}

}  // namespace

LineBox lineBox(float advance, const minikin::MinikinRect& bounds) {
    return {std::max(truncToInt(advance), 0), std::max(truncToInt(bounds.mBottom - bounds.mTop), 0),
            truncToInt(-bounds.mTop)};
}

QxGlyph* drawLineGlyph(const minikin::Layout* layout, android::Paint* paint) {
    minikin::MinikinRect bounds{};
    if (layout != nullptr) layout->getBounds(&bounds);
    const LineBox box = lineBox(layout == nullptr ? 0 : layout->getAdvance(), bounds);

    std::unique_ptr<QxGlyph, GlyphDeleter> glyph(new (std::nothrow) QxGlyph());
    if (glyph == nullptr) return nullptr;
    glyph->pixels = newPixels(box);
    if (glyph->pixels == nullptr) return nullptr;
    // The sides wrap at 16 bits; the memory never does, so a wrapped record stays inside it.
    glyph->width = static_cast<uint16_t>(box.width);
    glyph->height = static_cast<uint16_t>(box.height);
    glyph->top = box.top;
    glyph->left = 0;
    if (layout != nullptr && box.width > 0 && box.height > 0) {
        drawGlyphs(*layout, bounds, box, glyph->pixels, paint);
    }
    return glyph.release();
}

void deleteGlyph(QxGlyph* glyph) {
    if (glyph == nullptr) return;
    delete[] glyph->pixels;
    delete glyph;
}

}  // namespace QxFontEffect
