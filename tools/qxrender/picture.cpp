#include "picture.h"

#include <algorithm>

namespace qxrender {

namespace {

int channel(uint32_t pixel, int shift) {
    return static_cast<int>(pixel >> shift & 255);
}

/// One straight-alpha pixel over another, rounded to nearest.
uint32_t over(uint32_t top, uint32_t below) {
    const int topAlpha = channel(top, 24);
    const int belowShare = channel(below, 24) * (255 - topAlpha);  // of 255 * 255
    const int total = topAlpha * 255 + belowShare;
    if (total == 0) return 0;
    uint32_t pixel = static_cast<uint32_t>((total + 127) / 255) << 24;
    for (int shift = 0; shift < 24; shift += 8) {
        const int sum = channel(top, shift) * topAlpha * 255 + channel(below, shift) * belowShare;
        pixel |= static_cast<uint32_t>((sum + total / 2) / total) << shift;
    }
    return pixel;
}

}  // namespace

Box inkBox(const Picture& picture) {
    Box box{picture.width, picture.height, 0, 0};
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x)
            if (picture.at(x, y) >> 24) {
                box.left = std::min(box.left, x);
                box.right = std::max(box.right, x + 1);
                box.top = std::min(box.top, y);
                box.bottom = y + 1;
            }
    return box.right == 0 ? Box{0, 0, 0, 0} : box;
}

Picture cropped(const Picture& picture, const Box& box) {
    Picture part;
    part.width = box.right - box.left;
    part.height = box.bottom - box.top;
    part.pixels.resize(static_cast<size_t>(part.width) * part.height);
    const int left = std::max(box.left, 0);
    const int right = std::min(box.right, picture.width);
    for (int y = std::max(box.top, 0); y < std::min(box.bottom, picture.height) && left < right; ++y)
        std::copy_n(picture.pixels.begin() + (static_cast<ptrdiff_t>(y) * picture.width + left), right - left,
                    part.pixels.begin() + (static_cast<ptrdiff_t>(y - box.top) * part.width + left - box.left));
    return part;
}

void flattenOnto(Picture& picture, uint32_t color) {
    for (uint32_t& pixel : picture.pixels) pixel = over(pixel, color);
}

}  // namespace qxrender
