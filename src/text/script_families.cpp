#include "text/script_families.h"

#include <hb.h>
#include <minikin/LocaleList.h>

#include <cstdio>

#include "font/FontManager.h"
#include "text/script_runs.h"

namespace QxFontEffect {

namespace {

void loadFamilies(const char* locales) {
    const uint32_t id = minikin::registerLocaleList(locales);
    if (id != 0) FontManager::GetInstance()->LoadMinikinFontFamily(id);
}

void loadFamiliesByTag(hb_script_t script) {
    const uint32_t tag = static_cast<uint32_t>(script);
    char locale[16];
    std::snprintf(locale, sizeof(locale), "und-%c%c%c%c", static_cast<char>(tag >> 24),
                  static_cast<char>(tag >> 16 & 0xFF), static_cast<char>(tag >> 8 & 0xFF),
                  static_cast<char>(tag & 0xFF));
    loadFamilies(locale);
}

void loadFamiliesOf(hb_script_t script) {
    switch (script) {
        // Latin is served by the default family, which is loaded from the start; so is what has no script of its own.
        case HB_SCRIPT_INVALID:
        case HB_SCRIPT_LATIN:
        case HB_SCRIPT_COMMON:
        case HB_SCRIPT_INHERITED:
        case HB_SCRIPT_UNKNOWN:
            break;
        case HB_SCRIPT_HANGUL:
            loadFamilies("ko");
            break;
        case HB_SCRIPT_HIRAGANA:
        case HB_SCRIPT_KATAKANA:
            loadFamilies("ja");
            break;
        case HB_SCRIPT_HAN:
            loadFamilies("zh-Hans");
            loadFamilies("zh-Hant");
            break;
        default:
            loadFamiliesByTag(script);
            break;
    }
}

}  // namespace

void loadScriptFamilies(const uint16_t* text, size_t length) {
    for (size_t start = 0; start < length;) {
        const ScriptRun run = scriptRunAt(text, length, start);
        loadFamiliesOf(run.script);
        start = run.end;
    }
}

}  // namespace QxFontEffect
