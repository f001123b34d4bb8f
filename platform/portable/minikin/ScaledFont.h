#pragma once

#include <vector>

#include <minikin/Font.h>
#include <minikin/MinikinFont.h>
#include <minikin/MinikinRect.h>

#include "FontFace.h"

namespace minikin {

/// A font at the size of a text: HarfBuzz shapes with it, in 1/256 pixel.
///
/// Advances come from the rasteriser, so that glyphs stand where their hinted shapes expect it. A font of coloured
/// bitmaps has one size on file and is scaled when drawn: its metrics are HarfBuzz's own.
class ScaledFont {
public:
    static constexpr int kUnitsPerPixel = 256;
    static float toPixels(hb_position_t units) { return static_cast<float>(units) / kUnitsPerPixel; }

    ScaledFont(FakedFont font, const RasterSettings& settings);
    ScaledFont(const ScaledFont&) = delete;
    ScaledFont& operator=(const ScaledFont&) = delete;

    const FakedFont& font() const { return mFont; }

    /// Turns the text of a buffer into glyphs.
    ///
    /// @throws std::bad_alloc  when memory ran out on the way; glyphs may be missing then.
    void shape(hb_buffer_t* buffer, const std::vector<hb_feature_t>& features);

    /// Makes the shaping that is going on throw at its end.
    void noteLackOfMemory() { mLacksMemory = true; }

    /// Ink boxes of glyphs in pixels at the origin, with whole edges, y down.
    void inkBoxes(const std::vector<uint16_t>& glyphs, std::vector<MinikinRect>* boxes) const;

    /// In pixels, the same order as glyphs.
    void advances(const std::vector<uint16_t>& glyphs, std::vector<float>* widths) const;

private:
    MinikinRect bitmapBox(uint16_t glyph) const;

    const FakedFont mFont;
    const MinikinFont& mTypeface;
    const RasterSettings mSettings;
    HbFont mHbFont;
    bool mLacksMemory = false;
};

}  // namespace minikin
