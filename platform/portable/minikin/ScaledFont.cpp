#include "ScaledFont.h"

#include <cmath>
#include <new>

#include "CheckedNumber.h"

namespace minikin {

namespace {

uint16_t narrowGlyph(hb_codepoint_t glyph) {
    return glyph <= 0xFFFF ? static_cast<uint16_t>(glyph) : 0;
}

template <typename T>
T* strided(T* first, unsigned stride, unsigned i) {
    using Byte = std::conditional_t<std::is_const_v<T>, const char, char>;
    return reinterpret_cast<T*>(reinterpret_cast<Byte*>(first) + static_cast<size_t>(stride) * i);
}

/// Called by HarfBuzz, which is C inside: nothing may be thrown through it.
void rasterAdvances(hb_font_t*, void* fontData, unsigned count, const hb_codepoint_t* glyphs, unsigned glyphStride,
                    hb_position_t* advances, unsigned advanceStride, void*) {
    auto* const font = static_cast<ScaledFont*>(fontData);
    for (unsigned i = 0; i < count; ++i) *strided(advances, advanceStride, i) = 0;
    try {
        std::vector<uint16_t> narrow(count);
        for (unsigned i = 0; i < count; ++i) narrow[i] = narrowGlyph(*strided(glyphs, glyphStride, i));
        std::vector<float> widths;
        font->advances(narrow, &widths);
        for (unsigned i = 0; i < count; ++i) {
            *strided(advances, advanceStride, i) = truncatedToInt(widths[i] * ScaledFont::kUnitsPerPixel);
        }
    } catch (const std::exception&) {
        font->noteLackOfMemory();
    }
}

/// Answers advances only; everything else is left to the parent font. Never freed.
hb_font_funcs_t* rasterFunctions() {
    static hb_font_funcs_t* const functions = [] {
        hb_font_funcs_t* made = hb_font_funcs_create();
        hb_font_funcs_set_glyph_h_advances_func(made, rasterAdvances, nullptr, nullptr);
        hb_font_funcs_make_immutable(made);
        return made;
    }();
    return functions;
}

}  // namespace

ScaledFont::ScaledFont(FakedFont font, const RasterSettings& settings)
    : mFont(font),
      mTypeface(*font.font->typeface()),
      mSettings(settings),
      mHbFont(hb_font_create_sub_font(mTypeface.face().hbFont())) {
    const double scale = static_cast<double>(settings.size) * kUnitsPerPixel;
    hb_font_set_scale(mHbFont.get(), truncatedToInt(scale * settings.scaleX), truncatedToInt(scale));
    if (!mTypeface.face().hasColorBitmaps()) hb_font_set_funcs(mHbFont.get(), rasterFunctions(), this, nullptr);
}

void ScaledFont::shape(hb_buffer_t* buffer, const std::vector<hb_feature_t>& features) {
    // OpenType only. Desktop builds of HarfBuzz may prefer a font's Graphite tables, which set other glyphs than a
    // device.
    static const char* const kShapers[] = {"ot", "fallback", nullptr};
    mLacksMemory = false;
    hb_shape_full(mHbFont.get(), buffer, features.data(), static_cast<unsigned>(features.size()), kShapers);
    if (mLacksMemory || !hb_buffer_allocation_successful(buffer)) throw std::bad_alloc();
}

void ScaledFont::advances(const std::vector<uint16_t>& glyphs, std::vector<float>* widths) const {
    widths->assign(glyphs.size(), 0.0f);
    mTypeface.measureGlyphs(mSettings, mFont.fakery, glyphs.data(), static_cast<int>(glyphs.size()), widths->data(),
                            nullptr);
}

void ScaledFont::inkBoxes(const std::vector<uint16_t>& glyphs, std::vector<MinikinRect>* boxes) const {
    boxes->assign(glyphs.size(), MinikinRect());
    if (!mTypeface.face().hasColorBitmaps()) {
        mTypeface.measureGlyphs(mSettings, mFont.fakery, glyphs.data(), static_cast<int>(glyphs.size()), nullptr,
                                boxes->data());
        return;
    }
    for (size_t i = 0; i < glyphs.size(); ++i) (*boxes)[i] = bitmapBox(glyphs[i]);
}

MinikinRect ScaledFont::bitmapBox(uint16_t glyph) const {
    hb_glyph_extents_t ink;
    if (!hb_font_get_glyph_extents(mHbFont.get(), glyph, &ink)) return MinikinRect();
    // HarfBuzz has y up, so heights are negative.
    const float left = toPixels(ink.x_bearing);
    const float top = -toPixels(ink.y_bearing);
    return MinikinRect(std::round(left), std::round(top), std::round(left + toPixels(ink.width)),
                       std::round(top - toPixels(ink.height)));
}

}  // namespace minikin
