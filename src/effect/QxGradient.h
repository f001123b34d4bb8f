#pragma once

#include <cstdint>

namespace QxFontEffect {

/// One colour stop. Records that carry stops hold a pointer to an array of them.
struct QxGradient {
    uint32_t color;  ///< A 24-31, R 16-23, G 8-15, B 0-7
    float alpha;     ///< 0..1; the effect stack folds it into the colour's alpha byte
    float position;  ///< 0..1 along the gradient
};

}  // namespace QxFontEffect
