#pragma once

#include <cstdint>

namespace QxFontEffect {

class QxString;

/// One font of a system family: a face of a font file and the style it plays.
struct QxFontData {
    QxString* path = nullptr;  ///< owned
    int32_t ttcIndex = 0;      ///< face within a collection, 0 for a plain file
    int32_t weight = 400;      ///< 100..900
    bool italic = false;
    QxString* auxName = nullptr;  ///< owned; never filled here, released when somebody did
};

}  // namespace QxFontEffect
