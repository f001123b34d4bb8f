#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "effect_table.h"
#include "fonts.h"
#include "paragraph/paragraph.h"

namespace qxrender {

enum class LayerMode { Auto, Plain, Layer };

/// How a text is decorated; what a style file holds.
struct Style {
    std::string name;
    std::string description;
    uint32_t color = 0xFF000000;
    float opacity = 1.0f;  ///< of the whole picture
    LayerMode mode = LayerMode::Auto;
    std::vector<EffectSetting> effects;  ///< at most one of a kind
};

struct Padding {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

/// Everything one call of the tool is asked to draw. Pixels unless said otherwise.
struct Job {
    std::string text;  ///< UTF-8
    FontRequest font;
    float size = 64.0f;
    float letterSpacing = 0.0f;  ///< em
    float scaleX = 1.0f;
    float skewX = 0.0f;
    std::string features;
    qxhost::ParagraphStyle paragraph;
    int height = 0;  ///< of the view; 0: as high as the text
    Padding padding;
    int gravity = 3;   ///< Android gravity value
    int maxLines = 0;  ///< 0: all
    bool hasLineBackground = false;
    uint32_t lineBackground = 0;
    Style style;
};

}  // namespace qxrender
