#include "pixel/kernel/swap.h"

namespace QxFontEffect::kernel {

void swapRedBlueRow(uint8_t* pixels, ptrdiff_t count) {
    for (ptrdiff_t i = 0; i < count; ++i) {
        const uint8_t first = pixels[4 * i];
        pixels[4 * i] = pixels[4 * i + 2];
        pixels[4 * i + 2] = first;
    }
}

}  // namespace QxFontEffect::kernel
