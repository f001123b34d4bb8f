#include <algorithm>
#include <utility>

#include "pixel/reference/pixel_reference.h"
#include "plain/plain.h"

namespace qxbench::plain {

namespace reference = QxFontEffect::test::reference;

void srcOver8(const uint8_t* mask, uint32_t color, uint8_t* dst, int64_t count) {
    for (int64_t i = 0; i < count; ++i) reference::srcOver8To32(mask[i], color, dst + 4 * i);
}

void dstOver8(const uint8_t* mask, uint32_t color, uint8_t* dst, int64_t count) {
    for (int64_t i = 0; i < count; ++i) reference::dstOver8To32(mask[i], color, dst + 4 * i);
}

void dstOverNsa8(const uint8_t* mask, uint32_t color, uint8_t* dst, int64_t count) {
    for (int64_t i = 0; i < count; ++i) reference::dstOverNsa8To32(mask[i], color, dst + 4 * i);
}

void dstOverSa8(const uint8_t* mask, uint32_t color, uint8_t* dst, int64_t count) {
    for (int64_t i = 0; i < count; ++i) reference::dstOverSa8To32(mask[i], color, dst + 4 * i);
}

void draw8(const uint8_t* mask, uint32_t color, uint8_t* dst, int64_t count) {
    for (int64_t i = 0; i < count; ++i) reference::draw8To32(mask[i], color, dst + 4 * i);
}

void maximum(const uint8_t* src, uint8_t* dst, int64_t count) {
    for (int64_t i = 0; i < count; ++i) dst[i] = std::max(dst[i], src[i]);
}

void dstOver32(const uint8_t* src, uint8_t* dst, int64_t count) {
    for (int64_t i = 0; i < count; ++i) reference::dstOver32To32(src + 4 * i, dst + 4 * i);
}

void dstOver32Rgba(const uint8_t* src, uint8_t* dst, int64_t count) {
    for (int64_t i = 0; i < count; ++i) reference::dstOver32To32Rgba(src + 4 * i, dst + 4 * i);
}

void srcOver32(const uint8_t* src, uint8_t* dst, int64_t count) {
    for (int64_t i = 0; i < count; ++i) reference::srcOver32To32(src + 4 * i, dst + 4 * i);
}

void swapRedBlue(uint8_t* pixels, int64_t count) {
    for (int64_t i = 0; i < count; ++i) std::swap(pixels[4 * i], pixels[4 * i + 2]);
}

void compose(const uint8_t* layer, const uint8_t* coverage, uint8_t* picture, int64_t count) {
    for (int64_t i = 0; i < count; ++i) reference::compositeLayer(layer + 4 * i, coverage[i], picture + 4 * i);
}

void unpremultiply(int textAlpha, uint8_t* picture, int64_t count) {
    for (int64_t i = 0; i < count; ++i) reference::unpremultiply(textAlpha, picture + 4 * i);
}

}  // namespace qxbench::plain
