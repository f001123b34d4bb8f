#include "pixel/kernel/rows.h"

#include "pixel/kernel/cpu.h"

namespace QxFontEffect::kernel {

const PixelRows& pixelRows() {
    static const PixelRows& best = kAvx2Rows != nullptr && cpuHasAvx2() ? *kAvx2Rows : kPortableRows;
    return best;
}

}  // namespace QxFontEffect::kernel
