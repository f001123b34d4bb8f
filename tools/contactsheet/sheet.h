#pragma once

#include <vector>

#include "picture.h"

namespace contactsheet {

struct Layout {
    int columns = 2;
    int cellWidth = 480;  ///< pixels a picture may take; larger ones are made smaller
    int cellHeight = 160;
    int gap = 12;
    uint32_t background = 0xFFFFFFFF;  ///< straight alpha
};

/// The picture at the largest size that fits into width x height, never larger than it is. Each new pixel is the
/// average of the old ones beneath it, weighted by their alpha.
qxrender::Picture shrunkToFit(const qxrender::Picture& picture, int width, int height);

/// All pictures in rows, each in the middle of its cell. A row is as high as its highest picture.
qxrender::Picture makeSheet(const std::vector<qxrender::Picture>& pictures, const Layout& layout);

}  // namespace contactsheet
