#pragma once

#include <cstddef>
#include <cstdint>

namespace QxFontEffect {

/// Loads the system font families that the scripts of a text need, before it is laid out.
///
/// Each script run registers its locale and asks the font manager for it, also when its script came before: every
/// request loads the next family of the locale that is not loaded yet, and many scripts have two.
///
/// @param text  `length` UTF-16 units.
void loadScriptFamilies(const uint16_t* text, size_t length);

}  // namespace QxFontEffect
