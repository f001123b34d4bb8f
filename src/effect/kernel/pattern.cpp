#include "effect/kernel/pattern.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace QxFontEffect {
namespace kernel {
namespace {

// All four bytes of a pixel are weighted by one multiplication: they lie in 16-bit lanes of a 64-bit word, which
// 255 * 255 just fits. The second pass needs 24 bits, so the even and the odd lanes go separately.
constexpr uint64_t kEvenLanes = 0x0000FFFF0000FFFFu;

uint64_t toLanes(const uint8_t* pixel) {
    uint64_t lanes = pixel[0] | uint32_t{pixel[1]} << 8 | uint32_t{pixel[2]} << 16 | uint32_t{pixel[3]} << 24;
    lanes = (lanes | lanes << 16) & kEvenLanes;
    return (lanes | lanes << 8) & 0x00FF00FF00FF00FFu;
}

uint64_t mixed(uint64_t first, uint64_t second, uint32_t weight) {
    return first * (255 - weight) + second * weight;
}

uint32_t scaledBy(uint32_t alpha, uint64_t channel) {
    return (static_cast<uint32_t>(channel & 255u) + 1) * alpha >> 8;
}

}  // namespace

PatternTap patternTap(int32_t position, float scale, int32_t imageSide) {
    const float place = static_cast<float>(position) / scale;
    const float whole = std::floor(place);
    // The minimum only matters for sides above 2^20, where a float's rounding can lead one step too far.
    const int32_t first = static_cast<int32_t>(std::min(static_cast<int64_t>(whole), int64_t{imageSide} - 1));
    return {first, first + 1 < imageSide ? first + 1 : 0, static_cast<uint32_t>((place - whole) * 255.0f)};
}

void patternSpan(const PatternImage& image, const PatternTap& row, const PatternTap* columns, const uint8_t* alphas,
                 int32_t count, uint32_t* dst) {
    const size_t stride = size_t{4} * static_cast<size_t>(image.width);
    const uint8_t* upper = image.pixels + static_cast<size_t>(row.first) * stride;
    const uint8_t* lower = image.pixels + static_cast<size_t>(row.second) * stride;
    for (int32_t i = 0; i < count; ++i) {
        const PatternTap& tap = columns[i];
        const ptrdiff_t first = ptrdiff_t{4} * tap.first;
        const ptrdiff_t second = ptrdiff_t{4} * tap.second;
        const uint64_t top = mixed(toLanes(upper + first), toLanes(upper + second), tap.weight);
        const uint64_t bottom = mixed(toLanes(lower + first), toLanes(lower + second), tap.weight);
        const uint64_t alphaGreen = mixed(top & kEvenLanes, bottom & kEvenLanes, row.weight) >> 16;
        const uint64_t redBlue = mixed(top >> 16 & kEvenLanes, bottom >> 16 & kEvenLanes, row.weight) >> 16;
        const uint32_t alpha = alphas[alphaGreen & 255u];
        dst[i] = alpha << 24 | scaledBy(alpha, redBlue) << 16 | scaledBy(alpha, alphaGreen >> 32) << 8 |
                 scaledBy(alpha, redBlue >> 32);
    }
}

}  // namespace kernel
}  // namespace QxFontEffect
