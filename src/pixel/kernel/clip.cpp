#include "pixel/kernel/clip.h"

#include <algorithm>

namespace QxFontEffect::kernel {

ClippedBox clipToPlane(int64_t x, int64_t y, int64_t srcWidth, int64_t srcHeight, int64_t dstWidth, int64_t dstHeight) {
    ClippedBox box;
    box.dstX = std::max<int64_t>(x, 0);
    box.dstY = std::max<int64_t>(y, 0);
    box.srcX = std::max<int64_t>(-x, 0);
    box.srcY = std::max<int64_t>(-y, 0);
    box.width = std::min(x + srcWidth, dstWidth) - box.dstX;
    box.height = std::min(y + srcHeight, dstHeight) - box.dstY;
    return box;
}

}  // namespace QxFontEffect::kernel
