#pragma once

#include <hb.h>

#include <cstddef>
#include <cstdint>

namespace minikin {

struct ScriptRun {
    size_t end;
    hb_script_t script;
};

/// The run of one script that starts at `start`: common and inherited characters go with what is before them, and
/// at the start with what follows.
ScriptRun nextScriptRun(const uint16_t* text, size_t start, size_t end);

/// Whether letter spacing keeps off a script, since its letters join or hang from a common line.
bool lettersJoin(hb_script_t script);

}  // namespace minikin
