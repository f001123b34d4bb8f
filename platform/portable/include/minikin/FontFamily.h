#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <minikin/FamilyVariant.h>
#include <minikin/Font.h>
#include <minikin/FontStyle.h>

namespace minikin {

class FontFace;

/// Fonts of one design in several styles, which therefore cover the same characters.
///
/// Immutable once made, so threads may share it. A family without fonts covers nothing.
class FontFamily {
public:
    explicit FontFamily(std::vector<Font>&& fonts);
    FontFamily(FamilyVariant variant, std::vector<Font>&& fonts);
    /// @param localeListId      from registerLocaleList, the languages the family is made for; 0 for none.
    /// @param isCustomFallback  an application's own fallback: wins for every character it covers.
    FontFamily(uint32_t localeListId, FamilyVariant variant, std::vector<Font>&& fonts, bool isCustomFallback);

    FontFamily(const FontFamily&) = delete;
    FontFamily& operator=(const FontFamily&) = delete;

    /// The font nearest to a style and what is left to imitate. The font is null for a family without fonts.
    FakedFont getClosestMatch(FontStyle style) const;

    uint32_t localeListId() const { return mLocaleListId; }
    FamilyVariant variant() const { return mVariant; }
    bool isCustomFallback() const { return mIsCustomFallback; }
    /// By the languages' emoji style (und-Zsye, -u-em-emoji), not by looking into the font.
    bool isColorEmojiFamily() const { return mIsColorEmoji; }

    size_t getNumFonts() const { return mFonts.size(); }
    const Font* getFont(size_t index) const { return &mFonts[index]; }

    /// Whether the family has the character, or the character followed by a variation selector (0 for none).
    ///
    /// Asked of the font closest to upright 400; the others are taken to cover the same.
    bool hasGlyph(uint32_t codePoint, uint32_t variationSelector) const;

private:
    const std::vector<Font> mFonts;
    const uint32_t mLocaleListId;
    const FamilyVariant mVariant;
    const bool mIsCustomFallback;
    const bool mIsColorEmoji;
    const FontFace* mCoverageFace;  ///< null without fonts
};

}  // namespace minikin
