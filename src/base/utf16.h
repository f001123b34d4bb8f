#pragma once

#include <cstddef>
#include <cstdint>

namespace QxFontEffect {

/// Converts a NUL-terminated wide text to UTF-16.
///
/// @param dst  room for the result and a zero unit, which is always written. Null only counts.
/// @return number of units without the terminator.
///
/// Characters from U+FFFF (not U+10000) up to U+10FFFF take two units; U+FFFF itself becomes DBFF DFFF. Other values
/// above U+10FFFF, negative ones included, become U+FFFD. A surrogate stays the unit it is.
size_t encodeUtf16(const wchar_t* text, uint16_t* dst);

}  // namespace QxFontEffect
