#include "text/script_runs.h"

namespace QxFontEffect {

namespace {

constexpr hb_codepoint_t kReplacement = 0xFFFD;

bool isHighSurrogate(uint16_t unit) {
    return (unit & 0xFC00) == 0xD800;
}
bool isLowSurrogate(uint16_t unit) {
    return (unit & 0xFC00) == 0xDC00;
}

bool joinsAnyScript(hb_script_t script) {
    return script == HB_SCRIPT_COMMON || script == HB_SCRIPT_INHERITED;
}

struct CodePoint {
    hb_codepoint_t value;
    size_t units;
};

CodePoint codePointAt(const uint16_t* text, size_t length, size_t position) {
    const uint16_t unit = text[position];
    if (isHighSurrogate(unit) && position + 1 < length && isLowSurrogate(text[position + 1])) {
        const hb_codepoint_t high = unit & 0x3FFu;
        const hb_codepoint_t low = text[position + 1] & 0x3FFu;
        return {0x10000u + (high << 10) + low, 2};
    }
    if (isHighSurrogate(unit) || isLowSurrogate(unit)) return {kReplacement, 1};
    return {unit, 1};
}

}  // namespace

ScriptRun scriptRunAt(const uint16_t* text, size_t length, size_t start) {
    hb_unicode_funcs_t* const functions = hb_unicode_funcs_get_default();
    CodePoint point = codePointAt(text, length, start);
    ScriptRun run = {start, start + point.units, hb_unicode_script(functions, point.value)};
    while (run.end < length) {
        point = codePointAt(text, length, run.end);
        const hb_script_t script = hb_unicode_script(functions, point.value);
        if (script != run.script) {
            if (joinsAnyScript(run.script)) {
                run.script = script;
            } else if (!joinsAnyScript(script)) {
                break;
            }
        }
        run.end += point.units;
    }
    if (run.script == HB_SCRIPT_INHERITED) run.script = HB_SCRIPT_COMMON;
    return run;
}

}  // namespace QxFontEffect
