#include "pixel/kernel/layers.h"

namespace QxFontEffect::kernel {

void compositeLayerRow(const uint8_t* layer, const uint8_t* coverage, uint8_t* picture, ptrdiff_t count) {
    for (ptrdiff_t i = 0; i < count; ++i) {
        const int c = coverage[i];
        for (ptrdiff_t k = 4 * i; k < 4 * i + 4; ++k)
            picture[k] = static_cast<uint8_t>(((layer[k] + 1) * (255 - c) >> 8) + ((picture[k] + 1) * c >> 8));
    }
}

void unpremultiplyRow(int32_t textAlpha, uint8_t* picture, ptrdiff_t count) {
    const int64_t t = textAlpha;
    for (ptrdiff_t i = 0; i < count; ++i) {
        uint8_t* pixel = picture + 4 * i;
        const int64_t alpha = (pixel[3] + 1) * t >> 8;
        for (int k = 0; k < 3; ++k) {
            const int64_t straight = alpha == 0 ? 0 : ((pixel[k] + 1) * t & 0xFF00) / alpha;
            pixel[k] = static_cast<uint8_t>(straight > 255 ? 255 : straight);
        }
        pixel[3] = static_cast<uint8_t>(alpha);
    }
}

void composeLayers(const uint8_t* layer, const uint8_t* coverage, int32_t textAlpha, uint8_t* picture,
                   ptrdiff_t count) {
    // A block of picture and layer stays in the first-level cache between the two steps.
    constexpr ptrdiff_t kBlock = 2048;
    for (ptrdiff_t at = 0; at < count; at += kBlock) {
        const ptrdiff_t pixels = count - at < kBlock ? count - at : kBlock;
        if (layer != nullptr && coverage != nullptr)
            compositeLayerRow(layer + 4 * at, coverage + at, picture + 4 * at, pixels);
        unpremultiplyRow(textAlpha, picture + 4 * at, pixels);
    }
}

}  // namespace QxFontEffect::kernel
