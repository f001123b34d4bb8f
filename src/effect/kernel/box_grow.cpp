#include "effect/kernel/box_grow.h"

#include <algorithm>
#include <cstring>

namespace QxFontEffect {
namespace {

/// Grown row out of three old ones; width is at least 3.
void growRow(const uint8_t* above, const uint8_t* row, const uint8_t* below, int width, uint8_t* out) {
    for (int x = 1; x < width - 1; ++x) {
        int sum = 0;
        for (int i = x - 1; i <= x + 1; ++i) sum += above[i] + row[i] + below[i];
        // Divides by 4, not by 9: each pass is meant to swell the shape by a pixel, not to average it.
        out[x] = static_cast<uint8_t>(std::min(sum >> 2, 255));
    }
    out[0] = 0;
    out[width - 1] = 0;
}

}  // namespace

int64_t boxGrowScratchBytes(int width) {
    return int64_t{2} * std::max(width, 0);
}

void growByBoxPlane8(Plane8 plane, int passes, uint8_t* scratch) {
    if (plane.width < 1 || plane.height < 3) return;
    const size_t bytes = static_cast<size_t>(plane.width);
    uint8_t* previous = scratch;
    uint8_t* grown = scratch + plane.width;
    for (int pass = 0; pass < passes; ++pass) {
        std::memcpy(previous, plane.row(0), bytes);
        for (int y = 1; y < plane.height - 1; ++y) {
            std::memset(grown, 0, bytes);
            if (plane.width >= 3) growRow(previous, plane.row(y), plane.row(y + 1), plane.width, grown);
            std::memcpy(previous, plane.row(y), bytes);
            std::memcpy(plane.row(y), grown, bytes);
        }
    }
}

}  // namespace QxFontEffect
