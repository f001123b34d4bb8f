#pragma once

#include <string>

#include "effect_table.h"

namespace qxrender {

/// The table as text for a terminal: every effect with parameters, units, ranges and defaults.
std::string describeEffects();

/// An effect's parameters as a Markdown table.
std::string parameterTable(const EffectKind& kind);

/// Every effect's name and Markdown table.
std::string parameterTables();

/// The JSON Schema (draft 2020-12) of style files. It asks for values within their ranges, where the reader takes
/// others too and limits them.
std::string styleSchema();

}  // namespace qxrender
