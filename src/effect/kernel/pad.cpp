#include "effect/kernel/pad.h"

#include <cstring>

namespace QxFontEffect {

void padPlane8(ConstPlane8 inside, int pad, uint8_t frame, Plane8 dst) {
    const size_t width = static_cast<size_t>(dst.width);
    const size_t side = static_cast<size_t>(pad);
    const size_t middle = static_cast<size_t>(inside.width);
    for (int y = 0; y < dst.height; ++y) {
        uint8_t* row = dst.row(y);
        if (y < pad || y >= dst.height - pad) {
            std::memset(row, frame, width);
            continue;
        }
        std::memset(row, frame, side);
        std::memcpy(row + side, inside.row(y - pad), middle);
        std::memset(row + side + middle, frame, side);
    }
}

void complementPlane8(Plane8 plane) {
    for (int y = 0; y < plane.height; ++y) {
        uint8_t* row = plane.row(y);
        for (int x = 0; x < plane.width; ++x) row[x] = static_cast<uint8_t>(255 - row[x]);
    }
}

}  // namespace QxFontEffect
