#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <minikin/FontCollection.h>

namespace minikin {

class LocaleList;

/// Chooses families for the characters of texts with one and the same wish.
///
/// Every family gets a score for a character; the highest wins, the earlier family among equals:
///   how well it covers the character, then its languages, then its variant.
/// Only the first family is asked first: what it has, it draws, so plain text stays in one font.
class FontChooser {
public:
    /// Both must outlive the chooser.
    FontChooser(const FontCollection& collection, const FontWish& wish);

    /// Splits text into runs; see FontCollection::itemize.
    std::vector<FontCollection::Run> itemize(const uint16_t* text, size_t count);

private:
    static constexpr size_t kNone = SIZE_MAX;

    size_t familyFor(uint32_t codePoint, uint32_t variationSelector);
    size_t bestFamily(uint32_t codePoint, uint32_t variationSelector);
    uint32_t coverageScore(const FontFamily& candidate, uint32_t codePoint, uint32_t variationSelector) const;
    const FontFamily& family(size_t index) const { return *mFamilies[index]; }
    const std::vector<uint32_t>& wishScores();

    const std::vector<std::shared_ptr<FontFamily>>& mFamilies;
    const FontWish mWish;
    const LocaleList& mLocales;
    std::vector<uint32_t> mWishScores;  ///< by family; filled when first needed
};

}  // namespace minikin
