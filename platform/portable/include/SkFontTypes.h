#pragma once

/// How strongly outlines are fitted to the pixel grid.
enum class SkFontHinting {
    kNone = 0,
    kSlight = 1,
    kNormal = 2,
    kFull = 3,
};
