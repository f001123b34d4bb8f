#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "pixel/plane.h"

namespace qxbench {

/// Coverage of some lines of text.
struct Mask {
    std::string name;
    int width;
    int height;
    std::vector<uint8_t> coverage;
    int inkLeft, inkTop, inkRight, inkBottom;  ///< box around all ink, far edges outside
    double inkShare;                           ///< part of the pixels that have any coverage

    QxFontEffect::ConstPlane8 plane() const { return {coverage.data(), width, height, width}; }
    int64_t pixels() const { return int64_t{width} * height; }
};

/// What is measured on, drawn with Roboto through the text stack: S 400 x 120, one line at 64 px; M 1080 x 360, two
/// lines at 160 px; L 2160 x 1440, five lines at 230 px.
std::vector<Mask> makeMasks();

/// A mask of a few thousand pixels for a quick check of every row.
std::vector<Mask> makeTinyMask();

}  // namespace qxbench
