#pragma once

#include <cstdint>

#include "pixel/QxBitmap.h"
#include "pixel/QxRect.h"

namespace QxFontEffect {

/// Handed to `QxECoreBase::doPostProcessing` of each core in turn. Valid during the call; nothing is owned.
struct ParamPostProcessing {
    QxBitmap* dstBitmap;   ///< 4 bytes a pixel: the output or the colour layer, chosen per core by the stack
    QxBitmap* srcBitmap;   ///< 1 byte a pixel: coverage of the whole text, stride = width
    QxRect* textRect;      ///< bounds of the ink in coverage pixels, far edges outside, within the coverage
    int32_t layerMode;     ///< 1 when the stack composites through the colour layer
    QxBitmap* baseBitmap;  ///< the output, for cores that paint into the layer and the output; else null
};

}  // namespace QxFontEffect
