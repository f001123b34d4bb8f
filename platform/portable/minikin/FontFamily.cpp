#include <minikin/FontFamily.h>

#include <algorithm>
#include <cstdlib>

#include "FontFace.h"
#include "LocaleRegistry.h"

namespace minikin {

namespace {

constexpr int kFakeBoldFrom = 600;
constexpr int kFakeBoldStep = 200;

/// Whole hundreds of weight, and two hundreds' worth for the wrong slant.
int distance(FontStyle a, FontStyle b) {
    if (a == b) return 0;
    return std::abs(a.weight() / 100 - b.weight() / 100) + (a.slant() == b.slant() ? 0 : 2);
}

FontFakery fakeryFor(FontStyle wanted, FontStyle actual) {
    const bool bold = wanted.weight() >= kFakeBoldFrom && wanted.weight() - actual.weight() >= kFakeBoldStep;
    const bool italic = wanted.slant() == FontStyle::Slant::ITALIC && actual.slant() == FontStyle::Slant::UPRIGHT;
    return FontFakery(bold, italic);
}

std::vector<Font> withoutEmpty(std::vector<Font>&& fonts) {
    fonts.erase(std::remove_if(fonts.begin(), fonts.end(), [](const Font& font) { return font.typeface() == nullptr; }),
                fonts.end());
    return std::move(fonts);
}

const FontFace* faceOf(const Font* font) {
    return font == nullptr ? nullptr : &font->typeface()->face();
}

}  // namespace

FontFamily::FontFamily(std::vector<Font>&& fonts) : FontFamily(FamilyVariant::DEFAULT, std::move(fonts)) {}

FontFamily::FontFamily(FamilyVariant variant, std::vector<Font>&& fonts)
    : FontFamily(0, variant, std::move(fonts), false) {}

FontFamily::FontFamily(uint32_t localeListId, FamilyVariant variant, std::vector<Font>&& fonts, bool isCustomFallback)
    : mFonts(withoutEmpty(std::move(fonts))),
      mLocaleListId(localeListId),
      mVariant(variant),
      mIsCustomFallback(isCustomFallback),
      mIsColorEmoji(localeListOf(localeListId).emojiStyle() == EmojiStyle::EMOJI),
      mCoverageFace(faceOf(getClosestMatch(FontStyle()).font)) {}

FakedFont FontFamily::getClosestMatch(FontStyle style) const {
    const Font* best = nullptr;
    for (const Font& font : mFonts) {
        if (best == nullptr || distance(font.style(), style) < distance(best->style(), style)) best = &font;
    }
    if (best == nullptr) return FakedFont();
    return FakedFont{best, fakeryFor(style, best->style())};
}

bool FontFamily::hasGlyph(uint32_t codePoint, uint32_t variationSelector) const {
    if (mCoverageFace == nullptr) return false;
    return variationSelector == 0 ? mCoverageFace->hasGlyph(codePoint)
                                  : mCoverageFace->hasVariant(codePoint, variationSelector);
}

}  // namespace minikin
