#pragma once

#include <cstdint>

namespace QxFontEffect {

class List;

/// One family of the system's font configuration.
struct QxFontFamily {
    int32_t loaded = 0;         ///< 1 once all its fonts are registered
    uint32_t localeListId = 0;  ///< from minikin::registerLocaleList, the languages it serves; 0 for none
    int32_t variant = 0;        ///< default 0, compact 1, elegant 2; only the low byte counts
    List* fonts = nullptr;      ///< QxFontData records; list and records owned
};

/// Releases a family with its list, font records and their strings. Null does nothing.
void releaseFontFamily(QxFontFamily* family);

}  // namespace QxFontEffect
