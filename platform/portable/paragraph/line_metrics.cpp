#include "line_metrics.h"

#include <hb.h>

#include <algorithm>
#include <cmath>

#include <hwui/Paint.h>
#include <hwui/Typeface.h>
#include <minikin/Font.h>
#include <minikin/FontCollection.h>
#include <minikin/FontFamily.h>

namespace qxhost {

namespace {

int rounded(float pixels) {
    return static_cast<int>(std::floor(std::clamp(pixels, -1e6f, 1e6f) + 0.5f));
}

}  // namespace

LineMetrics::LineMetrics(const android::Paint& paint, const android::Typeface* typeface)
    : mSize(paint.getSkFont().getSize()) {
    if (typeface == nullptr || typeface->fFontCollection == nullptr) return;
    const auto& families = typeface->fFontCollection->getFamilies();
    if (families.empty()) return;
    widen(mSmallest, families.front()->getClosestMatch(typeface->fStyle).font->typeface().get());
}

LineHeights LineMetrics::of(const minikin::Layout& layout) {
    LineHeights heights = mSmallest;
    const minikin::MinikinFont* last = nullptr;
    for (int i = 0; i < static_cast<int>(layout.nGlyphs()); ++i) {
        const minikin::MinikinFont* font = layout.getFont(i);
        if (font != last) widen(heights, font);
        last = font;
    }
    return heights;
}

const LineMetrics::PerEm& LineMetrics::perEm(const minikin::MinikinFont* font) {
    const auto known = mFonts.find(font);
    if (known != mFonts.end()) return known->second;

    hb_blob_t* blob =
        hb_blob_create(static_cast<const char*>(font->GetFontData()), static_cast<unsigned>(font->GetFontSize()),
                       HB_MEMORY_MODE_READONLY, nullptr, nullptr);
    hb_face_t* face = hb_face_create(blob, static_cast<unsigned>(font->GetFontIndex()));
    hb_font_t* scaled = hb_font_create(face);
    const float unitsPerEm = static_cast<float>(std::max(1u, hb_face_get_upem(face)));
    hb_font_extents_t extents{};
    hb_font_get_h_extents(scaled, &extents);
    hb_font_destroy(scaled);
    hb_face_destroy(face);
    hb_blob_destroy(blob);

    const PerEm heights{static_cast<float>(extents.ascender) / unitsPerEm,
                        static_cast<float>(extents.descender) / unitsPerEm};
    return mFonts.emplace(font, heights).first->second;
}

void LineMetrics::widen(LineHeights& heights, const minikin::MinikinFont* font) {
    const PerEm& em = perEm(font);
    heights.ascent = std::min(heights.ascent, rounded(-em.ascender * mSize));
    heights.descent = std::max(heights.descent, rounded(-em.descender * mSize));
}

}  // namespace qxhost
