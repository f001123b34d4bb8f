#include "ScriptRuns.h"

#include "Characters.h"

namespace minikin {

namespace {

bool joinsAnyScript(hb_script_t script) {
    return script == HB_SCRIPT_COMMON || script == HB_SCRIPT_INHERITED;
}

}  // namespace

ScriptRun nextScriptRun(const uint16_t* text, size_t start, size_t end) {
    hb_unicode_funcs_t* unicode = hb_unicode_funcs_get_default();
    hb_script_t script = HB_SCRIPT_INHERITED;
    size_t index = start;
    while (index < end) {
        const size_t before = index;
        const hb_script_t next = hb_unicode_script(unicode, nextCodePoint(text, end, &index));
        if (next == script) continue;
        if (joinsAnyScript(script)) {
            script = next;
        } else if (!joinsAnyScript(next)) {
            index = before;
            break;
        }
    }
    return {index, script == HB_SCRIPT_INHERITED ? HB_SCRIPT_COMMON : script};
}

bool lettersJoin(hb_script_t script) {
    switch (script) {
        case HB_SCRIPT_ARABIC:
        case HB_SCRIPT_NKO:
        case HB_SCRIPT_PSALTER_PAHLAVI:
        case HB_SCRIPT_MANDAIC:
        case HB_SCRIPT_MONGOLIAN:
        case HB_SCRIPT_PHAGS_PA:
        case HB_SCRIPT_DEVANAGARI:
        case HB_SCRIPT_BENGALI:
        case HB_SCRIPT_GURMUKHI:
        case HB_SCRIPT_MODI:
        case HB_SCRIPT_SHARADA:
        case HB_SCRIPT_SYLOTI_NAGRI:
        case HB_SCRIPT_TIRHUTA:
        case HB_SCRIPT_OGHAM:
            return true;
        default:
            return false;
    }
}

}  // namespace minikin
