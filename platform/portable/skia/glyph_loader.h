#pragma once

#include <ft2build.h>
#include FT_FREETYPE_H

#include <mutex>

#include "SkFont.h"
#include "strike.h"

namespace portable {

/// A font's typeface, locked and set to the font's strike for as long as the object lives. False in a condition
/// when the font draws nothing: no typeface, no drawable size, or a face that refuses the size.
class GlyphLoader {
public:
    explicit GlyphLoader(const SkFont& font);
    GlyphLoader(const GlyphLoader&) = delete;
    GlyphLoader& operator=(const GlyphLoader&) = delete;

    explicit operator bool() const { return mFace != nullptr; }

    /// Loads a glyph, slanted and emboldened as the strike wants it: an outline or a bitmap.
    ///
    /// @return the face's slot, valid until the next load; null when the font has no such glyph or it is broken.
    FT_GlyphSlot load(SkGlyphID glyph);

    const Strike& strike() const { return mStrike; }

    /// Pixels of the text per pixel of a loaded bitmap. 1 unless the face has nothing but bitmaps.
    double bitmapScaleX() const { return mBitmapScaleX; }
    double bitmapScaleY() const { return mBitmapScaleY; }

private:
    bool apply(const FaceTypeface& typeface);
    bool selectBitmaps(FT_Face face);

    Strike mStrike;
    std::unique_lock<std::mutex> mLock;
    FT_Face mFace = nullptr;
    double mBitmapScaleX = 1;
    double mBitmapScaleY = 1;
};

/// What layout asks of a glyph.
struct GlyphMetrics {
    float advance = 0;
    /// Ink round the glyph's origin, y down, rounded outward; all zero without ink.
    SkRect bounds = SkRect::MakeEmpty();
};

GlyphMetrics measureGlyph(GlyphLoader& loader, SkGlyphID glyph);

}  // namespace portable
