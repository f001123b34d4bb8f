// The loop of ramp_blend.h, included once per instruction set. Everything is internal to the including file.

#include "effect/kernel/ramp_blend.h"
#include "pixel/kernel/blend_lanes.h"

namespace QxFontEffect {
namespace {

/// The colours of a vector of pixels, put together in a register: one that is read back from narrow stores waits for
/// them.
inline kernel::Words colorsOf(const uint8_t* grey, const uint32_t* colors) {
    kernel::Words pixels = {};
    for (int i = 0; i < kernel::kVectorPixels; ++i) pixels[i] = colors[grey[i]];
    return pixels;
}

/// Inlined whatever its size: a call for every block costs more than most blocks.
__attribute__((always_inline)) inline void blendRampBlock(const uint8_t* grey, const uint32_t* colors, uint8_t* dst) {
    if (kernel::masksAllZero(grey) || kernel::pixelsAllOpaque(dst)) return;
    if (kernel::pixelsAllZero(dst)) {
        for (int i = 0; i < kernel::kBlock; ++i) std::memcpy(dst + 4 * i, colors + grey[i], 4);
        return;
    }
    for (int i = 0; i < kernel::kBlock; i += kernel::kVectorPixels) {
        const kernel::Words src = colorsOf(grey + i, colors);
        kernel::store(dst + 4 * i, kernel::dstOver(kernel::load(dst + 4 * i), kernel::split(src)));
    }
}

void blendRampRow(const uint8_t* grey, const uint32_t* colors, uint8_t* dst, ptrdiff_t count) {
    constexpr ptrdiff_t kBlock = kernel::kBlock;
    for (; count >= kBlock; count -= kBlock, grey += kBlock, dst += 4 * kBlock) blendRampBlock(grey, colors, dst);
    if (count <= 0) return;
    uint8_t lastGrey[kBlock] = {}, last[4 * kBlock] = {};
    std::memcpy(lastGrey, grey, static_cast<size_t>(count));
    std::memcpy(last, dst, static_cast<size_t>(4 * count));
    blendRampBlock(lastGrey, colors, last);
    std::memcpy(dst, last, static_cast<size_t>(4 * count));
}

}  // namespace
}  // namespace QxFontEffect
