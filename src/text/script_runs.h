#pragma once

#include <hb.h>

#include <cstddef>
#include <cstdint>

namespace QxFontEffect {

/// Consecutive UTF-16 units written in one script.
struct ScriptRun {
    size_t start;
    size_t end;
    hb_script_t script;
};

/// Finds the script run that starts at unit `start`.
///
/// Common and inherited characters (digits, blanks, marks) join the run before them; at the start of a text they join
/// the first script behind them. Unassigned and private characters have a script of their own and break a run. A
/// lone surrogate counts as U+FFFD, which is common. A run of nothing but common and inherited characters is common.
///
/// @param text   `length` units.
/// @param start  below `length`; the `end` of the run before.
ScriptRun scriptRunAt(const uint16_t* text, size_t length, size_t start);

}  // namespace QxFontEffect
