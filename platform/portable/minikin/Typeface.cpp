#include <hwui/Typeface.h>

#include <algorithm>

#include "FontFace.h"

namespace android {

namespace {

constexpr int kFromFont = -1;
constexpr int kMaxWeight = 1000;

minikin::FontStyle plainFontStyle(const minikin::FontCollection& collection) {
    if (collection.getFamilies().empty()) return minikin::FontStyle();
    const minikin::FakedFont plain = collection.getFamilies().front()->getClosestMatch(minikin::FontStyle());
    return plain.font->typeface()->face().style();
}

}  // namespace

Typeface* Typeface::createFromFamilies(std::vector<std::shared_ptr<minikin::FontFamily>>&& families, int weight,
                                       int italic) {
    using minikin::FontStyle;
    auto collection = std::make_shared<minikin::FontCollection>(families);
    const FontStyle native = plainFontStyle(*collection);
    if (weight == kFromFont) weight = native.weight();
    if (weight < 0) weight = FontStyle::kNormalWeight;
    const auto slant =
        italic == kFromFont ? native.slant() : (italic != 0 ? FontStyle::Slant::ITALIC : FontStyle::Slant::UPRIGHT);

    auto* typeface = new Typeface();
    typeface->fFontCollection = std::move(collection);
    typeface->fStyle = FontStyle(static_cast<uint16_t>(std::clamp(weight, 1, kMaxWeight)), slant);
    return typeface;
}

}  // namespace android
