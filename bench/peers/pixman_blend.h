#pragma once

#include <memory>

#include <pixman.h>

#include "peers/peers.h"
#include "pixel/plane.h"

namespace qxbench::peers {

struct ImageDeleter {
    void operator()(pixman_image_t* image) const { pixman_image_unref(image); }
};
using Image = std::unique_ptr<pixman_image_t, ImageDeleter>;

/// Pictures in pixman's native order, see peers.h.
Image pictureOf(uint32_t* pixels, int width, int height, int stride);
Image pictureOf(const QxFontEffect::QxBitmap& bitmap);

/// Coverage. Pixman wants rows that begin at multiples of 4 bytes.
Image maskOf(QxFontEffect::ConstPlane8 plane);

/// Places in a palette, which is used as long as the image. Rows as for coverage.
Image indexedOf(QxFontEffect::ConstPlane8 plane, const pixman_indexed_t& palette);

/// A premultiplied library colour, red and blue exchanged.
Image solidOf(uint32_t color);

/// A library colour, not premultiplied, as pixman's 16-bit channels, premultiplied, red and blue exchanged.
pixman_color_t premultipliedColor(uint32_t color);

pixman_op_t pixmanOperator(Operator op);

/// Puts `src` through a mask (or null) onto the picture with its top left pixel at (x, y).
void compose(pixman_op_t op, const Image& src, const Image& mask, const Image& picture, int x, int y, int width,
             int height);

/// A byte plane whose rows begin at multiples of 16 bytes, as both libraries like it.
int alignedStride(int width);

}  // namespace qxbench::peers
