#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include <minikin/FamilyVariant.h>
#include <minikin/Font.h>
#include <minikin/FontFamily.h>
#include <minikin/FontStyle.h>

namespace minikin {

/// What a text wishes for when fonts are chosen for its characters.
struct FontWish {
    FontStyle style;
    uint32_t localeListId = 0;
    FamilyVariant variant = FamilyVariant::DEFAULT;
};

/// An ordered list of families; chooses one for every character of a text.
///
/// Immutable once made, so threads may share it. An empty collection is allowed: it offers no font for anything.
class FontCollection {
public:
    /// Null entries and families without fonts are left out.
    explicit FontCollection(const std::vector<std::shared_ptr<FontFamily>>& families);

    FontCollection(const FontCollection&) = delete;
    FontCollection& operator=(const FontCollection&) = delete;

    /// Consecutive UTF-16 units drawn with one font.
    struct Run {
        FakedFont fakedFont;
        size_t start = 0;
        size_t end = 0;
    };

    /// Splits count units into runs, in text order and without gaps. Empty for an empty collection or text.
    std::vector<Run> itemize(const uint16_t* text, size_t count, const FontWish& wish) const;

    const std::vector<std::shared_ptr<FontFamily>>& getFamilies() const { return mFamilies; }

private:
    const std::vector<std::shared_ptr<FontFamily>> mFamilies;
};

}  // namespace minikin
