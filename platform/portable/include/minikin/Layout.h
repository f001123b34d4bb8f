#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <minikin/Font.h>
#include <minikin/MinikinFont.h>
#include <minikin/MinikinRect.h>

namespace minikin {

/// Direction of a paragraph. DEFAULT_ takes the first strong character's and falls back to the named one.
enum class Bidi : uint8_t { LTR = 0, RTL = 1, DEFAULT_LTR = 2, DEFAULT_RTL = 3, FORCE_LTR = 4, FORCE_RTL = 5 };

/// One glyph of a layout; pixels from the line's origin on the baseline, y down.
struct LayoutGlyph {
    FakedFont font;
    uint32_t glyphId = 0;
    float x = 0;
    float y = 0;
};

/// Glyphs of a line in visual order. Points into the families it was made with: must not outlive them.
class Layout {
public:
    Layout() = default;

    size_t nGlyphs() const { return mGlyphs.size(); }
    const MinikinFont* getFont(int i) const { return glyph(i).font.font->typeface().get(); }
    FontFakery getFakery(int i) const { return glyph(i).font.fakery; }
    unsigned int getGlyphId(int i) const { return glyph(i).glyphId; }
    float getX(int i) const { return glyph(i).x; }
    float getY(int i) const { return glyph(i).y; }

    /// Sum of the advances, letter spacing included; not the width of the ink.
    float getAdvance() const { return mAdvance; }
    /// Advance of each UTF-16 unit of the line; a cluster's is all at its first unit.
    const std::vector<float>& getAdvances() const { return mAdvances; }
    /// Union of the glyphs' ink boxes; 0, 0, 0, 0 for blank text.
    void getBounds(MinikinRect* bounds) const { *bounds = mBounds; }

private:
    friend class LineBuilder;
    const LayoutGlyph& glyph(int i) const { return mGlyphs[static_cast<size_t>(i)]; }

    std::vector<LayoutGlyph> mGlyphs;
    std::vector<float> mAdvances;
    MinikinRect mBounds;
    float mAdvance = 0.0f;
};

}  // namespace minikin
