#pragma once

#include <cstdint>

#include "pixel/QxRect.h"

namespace QxFontEffect {

/// One visible line of the text as the platform's paragraph layout placed it. View pixels, y down.
struct QxLineInfo {
    int32_t x = 0;          ///< left edge of the line
    int32_t y = 0;          ///< baseline
    int32_t start = 0;      ///< first UTF-16 index of the line in the text
    int32_t end = 0;        ///< one past its last visible UTF-16 index
    int32_t direction = 1;  ///< 1 left to right, negative right to left
    QxRect bounds;          ///< background rectangle; moved by the effect margins on every render
};

}  // namespace QxFontEffect
