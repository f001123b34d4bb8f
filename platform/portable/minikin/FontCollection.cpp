#include <minikin/FontCollection.h>

#include "FontChooser.h"

namespace minikin {

namespace {

std::vector<std::shared_ptr<FontFamily>> usable(const std::vector<std::shared_ptr<FontFamily>>& families) {
    std::vector<std::shared_ptr<FontFamily>> kept;
    for (const auto& family : families) {
        if (family != nullptr && family->getNumFonts() > 0) kept.push_back(family);
    }
    return kept;
}

}  // namespace

FontCollection::FontCollection(const std::vector<std::shared_ptr<FontFamily>>& families)
    : mFamilies(usable(families)) {}

std::vector<FontCollection::Run> FontCollection::itemize(const uint16_t* text, size_t count,
                                                         const FontWish& wish) const {
    return FontChooser(*this, wish).itemize(text, count);
}

}  // namespace minikin
