// Compiled for every processor of the kind.
#include "effect/kernel/narrow_kernels_body.h"

#include "pixel/kernel/cpu.h"

namespace QxFontEffect {

// In the file that is compiled for AVX2, which therefore must not ask for it itself.
extern const NarrowKernels* const kNarrowKernelsForAvx2;

const NarrowKernels& narrowKernelsPortable() {
    static constexpr NarrowKernels kKernels = narrowKernelsNamed("portable");
    return kKernels;
}

const NarrowKernels* narrowKernelsAvx2() {
    return kernel::cpuHasAvx2() ? kNarrowKernelsForAvx2 : nullptr;
}

const NarrowKernels& narrowKernels() {
    const NarrowKernels* fast = narrowKernelsAvx2();
    return fast != nullptr ? *fast : narrowKernelsPortable();
}

}  // namespace QxFontEffect
