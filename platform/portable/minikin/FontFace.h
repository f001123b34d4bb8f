#pragma once

#include <hb.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include <minikin/FontStyle.h>
#include <minikin/FontVariation.h>

namespace minikin {

struct HbFontDeleter {
    void operator()(hb_font_t* font) const { hb_font_destroy(font); }
};
using HbFont = std::unique_ptr<hb_font_t, HbFontDeleter>;

/// The tables of one font: which characters it has, its native style, and the parent of all fonts to shape with.
///
/// Immutable from outside; threads may share it. Bytes that are no font give a face without characters.
class FontFace {
public:
    /// @param data  read in place; must outlive the face. Null for none.
    FontFace(const void* data, size_t size, int index, const std::vector<FontVariation>& axes);
    ~FontFace();
    FontFace(const FontFace&) = delete;
    FontFace& operator=(const FontFace&) = delete;

    /// In font units, with HarfBuzz's own advances. Immutable: scale a sub-font of it.
    hb_font_t* hbFont() const { return mFont.get(); }

    bool hasGlyph(uint32_t codePoint) const;
    /// Whether the font lists the character with this variation selector, be it as the usual glyph.
    bool hasVariant(uint32_t codePoint, uint32_t variationSelector) const;

    /// What the OS/2 table says; normal and upright without one.
    FontStyle style() const { return mStyle; }
    /// Glyphs are coloured bitmaps (a CBDT table), scaled from one size.
    bool hasColorBitmaps() const { return mHasColorBitmaps; }

private:
    // Asking the character map costs a search each time, and choosing a font asks every family in turn. So each
    // stretch of 256 characters is asked once and kept as bits.
    static constexpr uint32_t kPageSize = 256;
    static constexpr uint32_t kCodePoints = 0x110000;
    using Page = std::array<uint32_t, kPageSize / 32>;

    const Page& page(uint32_t number) const;

    HbFont mFont;
    FontStyle mStyle;
    bool mHasColorBitmaps = false;
    mutable std::array<std::atomic<const Page*>, kCodePoints / kPageSize> mPages{};
};

}  // namespace minikin
