#pragma once

#include <cstdint>
#include <string>

namespace qxrender {

/// Reads `#RGB`, `#RGBA`, `#RRGGBB` or `#AARRGGBB` into alpha 24-31, red 16-23, green 8-15, blue 0-7. The long form
/// with alpha has it first, as the platform's resources write colours; the short one has it last, as the web does.
/// Throws Failure naming `what`.
uint32_t parseColor(const std::string& text, const std::string& what);

/// `#AARRGGBB`, lower case.
std::string formatColor(uint32_t color);

}  // namespace qxrender
