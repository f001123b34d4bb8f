#include "fonts.h"

#include <hb.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <map>

#include <minikin/LocaleList.h>

#include "base/List.h"
#include "base/QxString.h"
#include "base/utf8.h"
#include "failure.h"
#include "font/FontManager.h"
#include "font/QxFontData.h"
#include "font/QxFontFamily.h"
#include "fontconfig_query.h"

namespace qxrender {

namespace {

using namespace QxFontEffect;

/// A family of the list under construction.
struct FamilyPlan {
    std::string languages;  ///< locale list it serves; empty: for every text
    std::vector<Face> faces;
    bool atOnce = false;  ///< else the library loads it when a text of its languages is set
};

/// Which locale lists a text of one script makes the library look for, and what fontconfig calls the language.
struct ScriptFonts {
    std::string languages;
    std::string fontconfigTag;
};

std::vector<ScriptFonts> fontsOfScript(hb_script_t script) {
    switch (script) {
        case HB_SCRIPT_HANGUL:
            return {{"ko", "ko"}};
        case HB_SCRIPT_HIRAGANA:
        case HB_SCRIPT_KATAKANA:
            return {{"ja", "ja"}};
        case HB_SCRIPT_HAN:
            return {{"zh-Hans", "zh-cn"}, {"zh-Hant", "zh-tw"}};
        default:
            break;
    }
    char tag[5] = {};
    hb_tag_to_string(static_cast<hb_tag_t>(script), tag);
    return {{std::string("und-") + tag, ""}};
}

bool isLoadedForEveryText(hb_script_t script) {
    return script == HB_SCRIPT_LATIN || script == HB_SCRIPT_COMMON || script == HB_SCRIPT_INHERITED ||
           script == HB_SCRIPT_UNKNOWN;
}

/// The different characters of each script. Kana come before Han so that Han in a Japanese text look Japanese.
std::vector<std::pair<hb_script_t, std::vector<char32_t>>> charactersByScript(const std::vector<char32_t>& text) {
    std::map<hb_script_t, std::vector<char32_t>> byScript;
    std::vector<char32_t> unique = text;
    std::sort(unique.begin(), unique.end());
    unique.erase(std::unique(unique.begin(), unique.end()), unique.end());
    for (const char32_t c : unique) byScript[hb_unicode_script(hb_unicode_funcs_get_default(), c)].push_back(c);
    std::vector<std::pair<hb_script_t, std::vector<char32_t>>> result(byScript.begin(), byScript.end());
    std::stable_partition(result.begin(), result.end(), [](const auto& entry) {
        return entry.first == HB_SCRIPT_HIRAGANA || entry.first == HB_SCRIPT_KATAKANA;
    });
    return result;
}

void planScripts(const std::vector<char32_t>& text, std::vector<FamilyPlan>& plan) {
    for (const auto& [script, characters] : charactersByScript(text)) {
        if (isLoadedForEveryText(script)) continue;
        for (const ScriptFonts& fonts : fontsOfScript(script)) {
            const bool planned = std::any_of(plan.begin(), plan.end(),
                                             [&](const FamilyPlan& p) { return p.languages == fonts.languages; });
            if (planned) continue;
            if (const auto face = matchCharacters(characters, fonts.fontconfigTag, false))
                plan.push_back({fonts.languages, {*face}, false});
        }
    }
}

void planSymbols(const std::vector<char32_t>& text, std::vector<FamilyPlan>& plan) {
    // What every text may use: emoji, then whatever symbols of this one are left.
    if (const auto emoji = matchCharacters({0x1F600}, "", true)) plan.push_back({"und-Zsye", {*emoji}, true});
    std::vector<char32_t> symbols;
    for (const char32_t c : text)
        if (c >= 0x2000 && hb_unicode_script(hb_unicode_funcs_get_default(), c) == HB_SCRIPT_COMMON)
            symbols.push_back(c);
    if (symbols.empty()) return;
    if (const auto face = matchCharacters(symbols, "", false)) plan.push_back({"und-Zsym", {*face}, true});
}

QxFontData* makeFontRecord(const Face& face) {
    QxFontData* record = new QxFontData();
    record->path = new QxString();
    record->path->Construct(face.file.c_str());
    record->ttcIndex = face.index;
    record->weight = face.weight;
    return record;
}

QxFontFamily* makeFamilyRecord(const FamilyPlan& plan) {
    QxFontFamily* family = new QxFontFamily();
    family->fonts = new List();
    family->fonts->Construct();
    for (const Face& face : plan.faces) family->fonts->Add(static_cast<void*>(makeFontRecord(face)));
    if (!plan.languages.empty()) family->localeListId = minikin::registerLocaleList(plan.languages);
    if (plan.atOnce) family->loaded = FontManager::GetInstance()->BuildMinikinFamily(family) ? 1 : 0;
    return family;
}

void install(const std::vector<FamilyPlan>& plan) {
    if (FontManager::GetInstance()->IsSystemFontFamiliesAlreadySet()) return;
    List* families = new List();
    families->Construct();
    for (const FamilyPlan& family : plan) families->Add(static_cast<void*>(makeFamilyRecord(family)));
    FontManager::GetInstance()->SetSystemFontFamilies(families);
}

Face requestedFace(const FontRequest& request) {
    if (request.file.empty()) {
        const auto face = matchFamily(request.family, request.weight, request.italic);
        if (face) return *face;
        throw Failure(request.family.empty() ? "no fonts are installed"
                                             : "no font family '" + request.family + "' is installed");
    }
    // The library looks its fonts up by names in Unicode.
    if (!isWellFormedUtf8(request.file.data(), request.file.size()))
        throw Failure("the name of font '" + request.file + "' is not UTF-8");
    if (access(request.file.c_str(), R_OK) != 0)
        throw Failure("cannot read font '" + request.file + "': " + errorText(errno));
    const auto face = inspectFile(request.file);
    if (!face) throw Failure("'" + request.file + "' is not a usable font");
    return *face;
}

}  // namespace

FontChoice prepareFonts(const FontRequest& request, const std::vector<char32_t>& text) {
    const Face face = requestedFace(request);
    std::vector<FamilyPlan> plan;
    FontChoice choice;
    // A text's own font is always the first of its file; a face further inside a collection leads the system
    // families instead.
    if (face.index == 0)
        choice.userFont = face.file;
    else
        plan.push_back({"", {{face.file, face.index, 400, false}}, true});
    if (const auto fallback = matchFamily("", 400, false)) plan.push_back({"", uprightFacesOf(*fallback), true});
    planScripts(text, plan);
    planSymbols(text, plan);
    install(plan);

    // The platform's rule for the fake: at least semi-bold is wanted and the face is two steps lighter.
    choice.fakeBold = request.weight >= 600 && request.weight - face.weight >= 200;
    choice.fakeItalic = request.italic && !face.italic;
    return choice;
}

}  // namespace qxrender
