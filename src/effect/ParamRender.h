#pragma once

#include <cstdint>

#include "pixel/QxBitmap.h"
#include "pixel/QxGlyph.h"

namespace QxFontEffect {

/// Handed to `QxECoreBase::render` once a glyph. Valid during the call.
struct ParamRender {
    int32_t x;            ///< left of the glyph image in coverage pixels
    int32_t y;            ///< top of the glyph image in coverage pixels
    QxGlyph* glyph;       ///< the glyph's coverage
    QxBitmap* dstBitmap;  ///< the stack's destination
};

}  // namespace QxFontEffect
