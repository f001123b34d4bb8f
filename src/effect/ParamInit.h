#pragma once

#include <cstdint>

namespace QxFontEffect {

/// Handed to `QxECoreBase::initEffect` once a rendering, before any glyph is drawn. Valid during the call.
struct ParamInit {
    int32_t width;      ///< columns of the coverage bitmap
    int32_t height;     ///< rows of the coverage bitmap
    int32_t layerMode;  ///< 1 when the stack composites through its colour layer, else 0
};

}  // namespace QxFontEffect
