#pragma once

#include <cstdint>

#include "Locale.h"

namespace minikin {

/// The list behind an id of registerLocaleList; the empty list for 0 and for ids nobody was given. Never freed.
const LocaleList& localeListOf(uint32_t id);

}  // namespace minikin
