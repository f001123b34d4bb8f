#include "pixel/kernel/layers.h"

#include "pixel/kernel/rows.h"

namespace QxFontEffect::kernel {
namespace {

/// The formula for text alphas that are no byte. 64-bit, because any 32-bit value may be stored there.
void unpremultiplyAnyAlpha(int64_t textAlpha, uint8_t* picture, ptrdiff_t count) {
    for (uint8_t* pixel = picture; count > 0; --count, pixel += 4) {
        const int64_t alpha = (pixel[3] + 1) * textAlpha >> 8;
        for (int k = 0; k < 3; ++k) {
            const int64_t straight = alpha == 0 ? 0 : ((pixel[k] + 1) * textAlpha & 0xFF00) / alpha;
            pixel[k] = static_cast<uint8_t>(straight > 255 ? 255 : straight);
        }
        pixel[3] = static_cast<uint8_t>(alpha);
    }
}

}  // namespace

void compositeLayerRow(const uint8_t* layer, const uint8_t* coverage, uint8_t* picture, ptrdiff_t count) {
    pixelRows().compositeLayer(layer, coverage, picture, count);
}

void unpremultiplyRow(int32_t textAlpha, uint8_t* picture, ptrdiff_t count) {
    if (textAlpha >= 0 && textAlpha <= 255)
        pixelRows().unpremultiply(textAlpha, picture, count);
    else
        unpremultiplyAnyAlpha(textAlpha, picture, count);
}

void composeLayers(const uint8_t* layer, const uint8_t* coverage, int32_t textAlpha, uint8_t* picture,
                   ptrdiff_t count) {
    // A block of picture and layer stays in the first-level cache between the two steps.
    constexpr ptrdiff_t kPixelsAtOnce = 2048;
    for (ptrdiff_t at = 0; at < count; at += kPixelsAtOnce) {
        const ptrdiff_t pixels = count - at < kPixelsAtOnce ? count - at : kPixelsAtOnce;
        if (layer != nullptr && coverage != nullptr)
            compositeLayerRow(layer + 4 * at, coverage + at, picture + 4 * at, pixels);
        unpremultiplyRow(textAlpha, picture + 4 * at, pixels);
    }
}

}  // namespace QxFontEffect::kernel
