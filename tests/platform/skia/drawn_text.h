#pragma once

#include <SkCanvas.h>
#include <SkFont.h>
#include <SkTextBlob.h>
#include <SkTypeface.h>

#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

#include "support/fonts.h"

/// Small helpers round typefaces and coverage planes.
namespace testsupport {

inline sk_sp<SkTypeface> openBytes(const void* bytes, size_t size, int index = 0) {
    return SkTypeface::MakeFromStream(std::make_unique<SkMemoryStream>(bytes, size), index);
}

inline sk_sp<SkTypeface> openFont(const std::string& fileName, int index = 0) {
    const std::vector<char>& bytes = fontBytes(fileName);
    return openBytes(bytes.data(), bytes.size(), index);
}

/// Glyph of a character, looked up beside the typeface under test.
inline SkGlyphID glyphOf(const std::string& fileName, unsigned character, int index = 0) {
    const std::vector<char>& bytes = fontBytes(fileName);
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    FT_UInt glyph = 0;
    if (FT_Init_FreeType(&library) != 0) return 0;
    if (FT_New_Memory_Face(library, reinterpret_cast<const FT_Byte*>(bytes.data()), static_cast<FT_Long>(bytes.size()),
                           index, &face) == 0)
        glyph = FT_Get_Char_Index(face, character);
    FT_Done_FreeType(library);
    return static_cast<SkGlyphID>(glyph);
}

/// A coverage plane with a canvas on it.
struct CoveragePlane {
    CoveragePlane(int w, int h, uint8_t fill = 0)
        : width(w), height(h), pixels(static_cast<size_t>(w) * static_cast<size_t>(h), fill) {}

    SkCanvas canvas() {
        SkBitmap bitmap;
        EXPECT_TRUE(bitmap.installPixels(SkImageInfo::Make(width, height, kAlpha_8_SkColorType, kPremul_SkAlphaType),
                                         pixels.data(), static_cast<size_t>(width)));
        return SkCanvas(bitmap);
    }
    uint8_t at(int x, int y) const { return pixels[static_cast<size_t>(y * width + x)]; }
    long sum() const { return std::accumulate(pixels.begin(), pixels.end(), 0L); }

    int width, height;
    std::vector<uint8_t> pixels;
};

inline sk_sp<SkTextBlob> blobOf(const SkFont& font, const std::vector<SkGlyphID>& glyphs,
                                const std::vector<SkPoint>& points) {
    SkTextBlobBuilder builder;
    const SkTextBlobBuilder::RunBuffer& run = builder.allocRunPos(font, static_cast<int>(glyphs.size()));
    std::copy(glyphs.begin(), glyphs.end(), run.glyphs);
    std::copy(points.begin(), points.end(), run.points());
    return builder.make();
}

inline sk_sp<SkTextBlob> blobOf(const SkFont& font, SkGlyphID glyph) {
    return blobOf(font, {glyph}, {{0, 0}});
}

inline SkRect boundsOf(const SkFont& font, SkGlyphID glyph) {
    SkRect bounds = SkRect::MakeEmpty();
    font.getWidthsBounds(&glyph, 1, nullptr, &bounds, nullptr);
    return bounds;
}

inline float advanceOf(const SkFont& font, SkGlyphID glyph) {
    float advance = -1;
    font.getWidthsBounds(&glyph, 1, &advance, nullptr, nullptr);
    return advance;
}

}  // namespace testsupport
