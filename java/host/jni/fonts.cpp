#include "fonts.h"

#include <SkStream.h>
#include <SkTypeface.h>
#include <hwui/MinikinSkia.h>
#include <minikin/LocaleList.h>

#include <fstream>
#include <iterator>
#include <map>
#include <mutex>
#include <utility>

namespace qxhost {

namespace {

using LoadedFont = std::shared_ptr<minikin::MinikinFont>;

/// The whole file; empty when it cannot be read.
const std::vector<char>& bytesOf(const std::string& file) {
    static auto* const files = new std::map<std::string, std::vector<char>>;
    const auto known = files->find(file);
    if (known != files->end()) return known->second;
    std::ifstream stream(file, std::ios::binary);
    return (*files)[file] = std::vector<char>(std::istreambuf_iterator<char>(stream), {});
}

LoadedFont load(const Face& face) {
    static std::mutex mutex;
    static auto* const fonts = new std::map<std::pair<std::string, int>, LoadedFont>;
    const std::lock_guard<std::mutex> lock(mutex);
    LoadedFont& font = (*fonts)[{face.file, face.ttcIndex}];
    if (font != nullptr) return font;
    const std::vector<char>& bytes = bytesOf(face.file);
    sk_sp<SkTypeface> typeface =
        SkTypeface::MakeFromStream(std::make_unique<SkMemoryStream>(bytes.data(), bytes.size()), face.ttcIndex);
    if (typeface != nullptr) {
        font = std::make_shared<android::MinikinFontSkia>(std::move(typeface), bytes.data(), bytes.size(), face.file,
                                                          face.ttcIndex, std::vector<minikin::FontVariation>());
    }
    return font;
}

}  // namespace

std::vector<std::shared_ptr<minikin::FontFamily>> makeFamilies(const std::vector<Face>& faces,
                                                               const std::vector<std::string>& languages) {
    std::vector<std::shared_ptr<minikin::FontFamily>> families;
    for (size_t i = 0; i < languages.size(); ++i) {
        std::vector<minikin::Font> members;
        int variant = 0;
        for (const Face& face : faces) {
            const LoadedFont font = static_cast<size_t>(face.family) == i ? load(face) : nullptr;
            if (font == nullptr) continue;
            variant = face.variant;
            minikin::Font::Builder builder(font);
            if (face.weight >= 0)
                builder.setWeight(static_cast<uint16_t>(face.weight)).setSlant(minikin::FontStyle::Slant::UPRIGHT);
            members.push_back(builder.build());
        }
        if (members.empty()) continue;
        const uint32_t locales = languages[i].empty() ? 0 : minikin::registerLocaleList(languages[i]);
        families.push_back(std::make_shared<minikin::FontFamily>(locales, static_cast<minikin::FamilyVariant>(variant),
                                                                 std::move(members), false));
    }
    return families;
}

}  // namespace qxhost
