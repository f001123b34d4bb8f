#include "effect/kernel/gauss.h"

#include <algorithm>
#include <cstring>

namespace QxFontEffect {
namespace {

/// Sum of `samples`[0..count-1], which lie `step` apart, within -reach..reach of position `at`.
int32_t boxSum(const uint8_t* samples, ptrdiff_t step, int count, int at, int reach) {
    const int first = std::max(at - reach, 0);
    const int last = std::min(at + reach, count - 1);
    int32_t sum = 0;
    for (int i = first; i <= last; ++i) sum += samples[i * step];
    return sum;
}

uint8_t bellSum(const uint8_t* samples, ptrdiff_t step, int count, int at, const GaussBell& bell) {
    int32_t sum = 0;
    for (int b = 0; b < bell.boxCount; ++b)
        sum += bell.boxes[b].height * boxSum(samples, step, count, at, bell.boxes[b].reach);
    return static_cast<uint8_t>(sum / bell.sum);
}

}  // namespace

size_t gaussScratchBytes(const GaussBell&, int width) {
    return static_cast<size_t>(std::max(width, 0));
}

void gaussBlurPlane8(ConstPlane8 src, const GaussBell& bell, GaussRange range, uint8_t* scratch, Plane8 dst) {
    if (range.xStart >= range.xEnd) return;
    uint8_t* line = scratch;
    std::memset(line, 0, static_cast<size_t>(src.width));
    for (int y = range.yStart; y < range.yEnd; ++y) {
        for (int x = range.xStart; x < range.xEnd; ++x)
            line[x] = bellSum(src.data + x, src.stride, src.height, y, bell);
        for (int x = range.xStart; x < range.xEnd; ++x) dst.row(y)[x] = bellSum(line, 1, src.width, x, bell);
    }
}

}  // namespace QxFontEffect
