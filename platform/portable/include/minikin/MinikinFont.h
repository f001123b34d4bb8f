#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include <minikin/FontVariation.h>
#include <minikin/MinikinRect.h>

namespace minikin {

class FontFace;
class FontFakery;

/// How glyphs are rasterised: everything that moves an advance or an ink box, apart from font and glyph.
struct RasterSettings {
    float size = 0.0f;  ///< pixels per em
    float scaleX = 1.0f;
    float skewX = 0.0f;
    uint32_t fontFlags = 0;  ///< opaque here; packed and unpacked by the implementation of MinikinFont

    bool operator==(const RasterSettings& other) const {
        return size == other.size && scaleX == other.scaleX && skewX == other.skewX && fontFlags == other.fontFlags;
    }
};

/// One font file (or one font of a collection), as layout sees it: its bytes and its glyph metrics.
///
/// Shared by fonts and families; all members may be called from several threads at once.
class MinikinFont {
public:
    explicit MinikinFont(int32_t uniqueId);
    virtual ~MinikinFont();
    MinikinFont(const MinikinFont&) = delete;
    MinikinFont& operator=(const MinikinFont&) = delete;

    /// The bytes of the whole file; they stay valid and unchanged as long as the font lives. Null when there are none.
    virtual const void* GetFontData() const { return nullptr; }
    virtual size_t GetFontSize() const { return 0; }
    /// Index of the font in its collection, 0 for a plain file.
    virtual int GetFontIndex() const { return 0; }
    virtual const std::vector<FontVariation>& GetAxes() const = 0;

    /// Advances (pixels) and ink boxes (pixels, y down, at origin 0,0) of count glyphs.
    ///
    /// @param advances  count floats, or null.
    /// @param boxes     count rectangles, or null.
    virtual void measureGlyphs(const RasterSettings& settings, FontFakery fakery, const uint16_t* glyphs, int count,
                               float* advances, MinikinRect* boxes) const = 0;

    int32_t GetUniqueId() const { return mUniqueId; }

    /// The tables as HarfBuzz reads them; opened at first use and kept as long as the font.
    const FontFace& face() const;

private:
    struct LazyFace;

    const int32_t mUniqueId;
    const std::unique_ptr<LazyFace> mFace;
};

}  // namespace minikin
