#include "peers/pixman_blend.h"

#include <memory>
#include <stdexcept>
#include <vector>

namespace qxbench::peers {

using namespace QxFontEffect;

namespace {

uint32_t exchanged(uint32_t color) {
    return (color & 0xFF00FF00u) | (color >> 16 & 0xFFu) | (color & 0xFFu) << 16;
}

uint16_t widened(uint32_t channel) {
    return static_cast<uint16_t>(channel * 257);
}

Image checked(pixman_image_t* image) {
    if (image == nullptr) throw std::runtime_error("pixman refused an image");
    return Image(image);
}

}  // namespace

Image pictureOf(uint32_t* pixels, int width, int height, int stride) {
    return checked(pixman_image_create_bits_no_clear(PIXMAN_a8r8g8b8, width, height, pixels, 4 * stride));
}

Image pictureOf(const QxBitmap& bitmap) {
    const int width = static_cast<int>(bitmap.width);
    return pictureOf(reinterpret_cast<uint32_t*>(bitmap.pixels), width, static_cast<int>(bitmap.height), width);
}

Image maskOf(ConstPlane8 plane) {
    // Masks are only read.
    uint32_t* const bits = reinterpret_cast<uint32_t*>(const_cast<uint8_t*>(plane.data));
    return checked(
        pixman_image_create_bits_no_clear(PIXMAN_a8, plane.width, plane.height, bits, static_cast<int>(plane.stride)));
}

Image indexedOf(ConstPlane8 plane, const pixman_indexed_t& palette) {
    uint32_t* const bits = reinterpret_cast<uint32_t*>(const_cast<uint8_t*>(plane.data));
    Image image = checked(
        pixman_image_create_bits_no_clear(PIXMAN_c8, plane.width, plane.height, bits, static_cast<int>(plane.stride)));
    pixman_image_set_indexed(image.get(), &palette);
    return image;
}

Image solidOf(uint32_t color) {
    const uint32_t c = exchanged(color);
    const pixman_color_t wide = {widened(c >> 16 & 255), widened(c >> 8 & 255), widened(c & 255), widened(c >> 24)};
    return checked(pixman_image_create_solid_fill(&wide));
}

pixman_color_t premultipliedColor(uint32_t color) {
    const uint32_t c = exchanged(color), alpha = c >> 24;
    const auto channel = [&](int shift) { return static_cast<uint16_t>((c >> shift & 255) * alpha * 257 / 255); };
    return {channel(16), channel(8), channel(0), widened(alpha)};
}

pixman_op_t pixmanOperator(Operator op) {
    return op == Operator::SrcOver ? PIXMAN_OP_OVER : PIXMAN_OP_OVER_REVERSE;
}

void compose(pixman_op_t op, const Image& src, const Image& mask, const Image& picture, int x, int y, int width,
             int height) {
    pixman_image_composite32(op, src.get(), mask.get(), picture.get(), 0, 0, 0, 0, x, y, width, height);
}

int alignedStride(int width) {
    return (width + 15) / 16 * 16;
}

Step blendMask(Operator op, ConstPlane8 mask, uint32_t color, uint8_t* picture) {
    return [=] {
        const Image dst =
            pictureOf(reinterpret_cast<uint32_t*>(picture), mask.width, mask.height, static_cast<int>(mask.stride));
        compose(pixmanOperator(op), solidOf(color), maskOf(mask), dst, 0, 0, mask.width, mask.height);
    };
}

Step blendPicture(Operator op, ConstPlane32 src, uint8_t* picture) {
    // The caller's colours in pixman's order, made once.
    const auto exchangedColors = std::make_shared<std::vector<uint32_t>>();
    for (int y = 0; y < src.height; ++y)
        for (int x = 0; x < src.width; ++x) exchangedColors->push_back(exchanged(src.row(y)[x]));
    return [=] {
        const Image from = pictureOf(exchangedColors->data(), src.width, src.height, src.width);
        const Image dst = pictureOf(reinterpret_cast<uint32_t*>(picture), src.width, src.height, src.width);
        compose(pixmanOperator(op), from, nullptr, dst, 0, 0, src.width, src.height);
    };
}

}  // namespace qxbench::peers
