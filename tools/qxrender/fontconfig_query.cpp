#include "fontconfig_query.h"

#include <fontconfig/fontconfig.h>
// Needs the one above first.
#include <fontconfig/fcfreetype.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>

namespace qxrender {

namespace {

using Pattern = std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)>;
using FontSet = std::unique_ptr<FcFontSet, decltype(&FcFontSetDestroy)>;

/// Loads the configuration for the first query and gives it back at the end of the process: it links its records by
/// offsets, which a leak checker does not follow.
void useFontconfig() {
    struct Session {
        Session() { FcInit(); }
        ~Session() { FcFini(); }
    };
    static const Session session;
}

const FcChar8* chars(const std::string& text) {
    return reinterpret_cast<const FcChar8*>(text.c_str());
}

std::optional<Face> faceOf(const FcPattern* pattern) {
    FcChar8* file = nullptr;
    if (pattern == nullptr || FcPatternGetString(pattern, FC_FILE, 0, &file) != FcResultMatch) return std::nullopt;
    Face face;
    face.file = reinterpret_cast<const char*>(file);
    int slant = FC_SLANT_ROMAN;
    double weight = FC_WEIGHT_REGULAR;
    FcPatternGetInteger(pattern, FC_INDEX, 0, &face.index);
    FcPatternGetInteger(pattern, FC_SLANT, 0, &slant);
    FcPatternGetDouble(pattern, FC_WEIGHT, 0, &weight);
    face.index &= 0xFFFF;  // the upper half names an instance of a variable font
    face.italic = slant != FC_SLANT_ROMAN;
    face.weight = static_cast<int>(std::lround(FcWeightToOpenTypeDouble(weight)));
    return face;
}

std::optional<Face> bestMatch(FcPattern* wanted, Pattern* match = nullptr) {
    FcConfigSubstitute(nullptr, wanted, FcMatchPattern);
    FcDefaultSubstitute(wanted);
    FcResult result = FcResultNoMatch;
    Pattern found(FcFontMatch(nullptr, wanted, &result), FcPatternDestroy);
    std::optional<Face> face = faceOf(found.get());
    if (match != nullptr) *match = std::move(found);
    return face;
}

bool isGeneric(const std::string& family) {
    const std::array<const char*, 5> generic = {"", "sans", "sans-serif", "serif", "monospace"};
    return std::any_of(generic.begin(), generic.end(), [&](const char* name) { return family == name; });
}

/// Fontconfig answers every name with something; only a font that carries the name counts.
bool hasFamilyName(const FcPattern* pattern, const std::string& family) {
    FcChar8* name = nullptr;
    for (int i = 0; FcPatternGetString(pattern, FC_FAMILY, i, &name) == FcResultMatch; ++i)
        if (FcStrCmpIgnoreCase(name, chars(family)) == 0) return true;
    return false;
}

}  // namespace

std::optional<Face> matchFamily(const std::string& family, int weight, bool italic) {
    useFontconfig();
    Pattern wanted(FcPatternCreate(), FcPatternDestroy);
    FcPatternAddString(wanted.get(), FC_FAMILY, chars(family.empty() ? "Roboto" : family));
    if (isGeneric(family)) FcPatternAddString(wanted.get(), FC_FAMILY, chars("sans-serif"));
    FcPatternAddDouble(wanted.get(), FC_WEIGHT, FcWeightFromOpenTypeDouble(weight));
    FcPatternAddInteger(wanted.get(), FC_SLANT, italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddBool(wanted.get(), FC_VARIABLE, FcFalse);
    Pattern match(nullptr, FcPatternDestroy);
    std::optional<Face> face = bestMatch(wanted.get(), &match);
    if (!face || (!isGeneric(family) && !hasFamilyName(match.get(), family))) return std::nullopt;
    return face;
}

std::vector<Face> uprightFacesOf(const Face& face) {
    useFontconfig();
    int faces = 0;
    const Pattern own(FcFreeTypeQuery(chars(face.file), static_cast<unsigned>(face.index), nullptr, &faces),
                      FcPatternDestroy);
    FcChar8* family = nullptr;
    if (own == nullptr || FcPatternGetString(own.get(), FC_FAMILY, 0, &family) != FcResultMatch) return {face};

    const Pattern wanted(FcPatternCreate(), FcPatternDestroy);
    FcPatternAddString(wanted.get(), FC_FAMILY, family);
    FcPatternAddInteger(wanted.get(), FC_SLANT, FC_SLANT_ROMAN);
    FcPatternAddBool(wanted.get(), FC_VARIABLE, FcFalse);
    FcPatternAddInteger(wanted.get(), FC_WIDTH, FC_WIDTH_NORMAL);
    const std::unique_ptr<FcObjectSet, decltype(&FcObjectSetDestroy)> objects(
        FcObjectSetBuild(FC_FILE, FC_INDEX, FC_WEIGHT, FC_SLANT, nullptr), FcObjectSetDestroy);
    const FontSet found(FcFontList(nullptr, wanted.get(), objects.get()), FcFontSetDestroy);
    std::vector<Face> result;
    for (int i = 0; found != nullptr && i < found->nfont; ++i)
        if (const std::optional<Face> upright = faceOf(found->fonts[i])) result.push_back(*upright);
    if (result.empty()) result.push_back(face);
    std::sort(result.begin(), result.end(), [](const Face& a, const Face& b) {
        return a.weight != b.weight ? a.weight < b.weight : a.file < b.file;
    });
    return result;
}

std::optional<Face> matchCharacters(const std::vector<char32_t>& characters, const std::string& language, bool color) {
    useFontconfig();
    Pattern wanted(FcPatternCreate(), FcPatternDestroy);
    const std::unique_ptr<FcCharSet, decltype(&FcCharSetDestroy)> set(FcCharSetCreate(), FcCharSetDestroy);
    for (const char32_t c : characters) FcCharSetAddChar(set.get(), c);
    FcPatternAddString(wanted.get(), FC_FAMILY, chars(color ? "emoji" : "Noto Sans"));
    FcPatternAddString(wanted.get(), FC_FAMILY, chars("sans-serif"));
    FcPatternAddCharSet(wanted.get(), FC_CHARSET, set.get());
    if (!language.empty()) FcPatternAddString(wanted.get(), FC_LANG, chars(language));
    FcPatternAddInteger(wanted.get(), FC_WEIGHT, FC_WEIGHT_REGULAR);
    FcPatternAddInteger(wanted.get(), FC_SLANT, FC_SLANT_ROMAN);
    FcPatternAddBool(wanted.get(), FC_VARIABLE, FcFalse);
    if (color) FcPatternAddBool(wanted.get(), FC_COLOR, FcTrue);
    Pattern match(nullptr, FcPatternDestroy);
    std::optional<Face> face = bestMatch(wanted.get(), &match);
    FcCharSet* covered = nullptr;
    if (!face || FcPatternGetCharSet(match.get(), FC_CHARSET, 0, &covered) != FcResultMatch) return std::nullopt;
    return FcCharSetIntersectCount(covered, set.get()) > 0 ? face : std::nullopt;
}

std::optional<Face> inspectFile(const std::string& file) {
    useFontconfig();
    int faces = 0;
    const Pattern pattern(FcFreeTypeQuery(chars(file), 0, nullptr, &faces), FcPatternDestroy);
    return faceOf(pattern.get());
}

}  // namespace qxrender
