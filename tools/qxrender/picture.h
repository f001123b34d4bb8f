#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace qxrender {

/// A picture of straight-alpha pixels: alpha 24-31, red 16-23, green 8-15, blue 0-7, rows top to bottom.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<uint32_t> pixels;

    uint32_t& at(int x, int y) { return pixels[static_cast<size_t>(y) * width + x]; }
    uint32_t at(int x, int y) const { return pixels[static_cast<size_t>(y) * width + x]; }
};

/// left, top inclusive; right, bottom exclusive.
struct Box {
    int left;
    int top;
    int right;
    int bottom;

    bool isEmpty() const { return right <= left || bottom <= top; }
};

/// Smallest box around the pixels that are not fully transparent; an empty one at (0, 0) when there are none.
Box inkBox(const Picture& picture);

/// The part of `picture` inside `box`; transparent where the box reaches beyond it.
Picture cropped(const Picture& picture, const Box& box);

/// Puts the picture over one colour, itself straight alpha.
void flattenOnto(Picture& picture, uint32_t color);

}  // namespace qxrender
