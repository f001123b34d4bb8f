#pragma once

#include <SkFont.h>
#include <SkRefCnt.h>
#include <SkTypeface.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <minikin/Font.h>
#include <minikin/MinikinFont.h>

namespace android {

class GlyphMetricsCache;

/// A font whose glyphs are measured and drawn by an SkTypeface.
class MinikinFontSkia : public minikin::MinikinFont {
public:
    /// @param typeface  must not be null.
    /// @param fontData  the bytes of the file, neither copied nor owned: they have to outlive the font, every family
    ///                  and typeface made of it, and every layout.
    /// @param filePath  copied; a name only, never opened.
    /// @param ttcIndex  index in a collection, 0 for a plain file.
    MinikinFontSkia(sk_sp<SkTypeface> typeface, const void* fontData, size_t fontSize, std::string_view filePath,
                    int ttcIndex, const std::vector<minikin::FontVariation>& axes);
    ~MinikinFontSkia() override;

    const void* GetFontData() const override { return mFontData; }
    size_t GetFontSize() const override { return mFontSize; }
    int GetFontIndex() const override { return mTtcIndex; }
    const std::vector<minikin::FontVariation>& GetAxes() const override { return mAxes; }
    const std::string& getFilePath() const { return mFilePath; }
    void measureGlyphs(const minikin::RasterSettings& settings, minikin::FontFakery fakery, const uint16_t* glyphs,
                       int count, float* advances, minikin::MinikinRect* boxes) const override;

    /// Borrowed; lives as long as the font.
    SkTypeface* GetSkTypeface() const { return mTypeface.get(); }
    sk_sp<SkTypeface> RefSkTypeface() const { return mTypeface; }

    /// The switches of a font that change its glyphs (edging, hinting, subpixel, emboldening, ...) in one number.
    static uint32_t packFontFlags(const SkFont& font);
    static void unpackFontFlags(SkFont* font, uint32_t fontFlags);

    /// Sets a font's typeface and adds the fakery to what the font has already: emboldened stays emboldened, and the
    /// fake slant of -0.25 comes on top of the font's own skew.
    static void populateSkFont(SkFont* skFont, const minikin::MinikinFont* font, minikin::FontFakery fakery);

private:
    const sk_sp<SkTypeface> mTypeface;
    const void* const mFontData;
    const size_t mFontSize;
    const int mTtcIndex;
    const std::string mFilePath;
    const std::vector<minikin::FontVariation> mAxes;
    const std::unique_ptr<GlyphMetricsCache> mMetrics;
};

}  // namespace android
