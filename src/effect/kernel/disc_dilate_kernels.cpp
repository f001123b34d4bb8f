#include "effect/kernel/disc_dilate_kernels_body.h"
#include "effect/kernel/disc_dilate_small_body.h"
#include "effect/kernel/disc_dilate_solid_body.h"
#include "pixel/kernel/cpu.h"

namespace QxFontEffect {

extern const DilateKernels* const kDilateKernelsForAvx2;

const DilateKernels& dilateKernelsPortable() {
    static constexpr DilateKernels kKernels = {"portable", copy,  measureInk, runMaxima,  joinSolid,
                                               gather,     lower, markSmall,  gatherSmall};
    return kKernels;
}

const DilateKernels* dilateKernelsAvx2() {
    return kernel::cpuHasAvx2() ? kDilateKernelsForAvx2 : nullptr;
}

const DilateKernels& dilateKernels() {
    const DilateKernels* fast = dilateKernelsAvx2();
    return fast != nullptr ? *fast : dilateKernelsPortable();
}

}  // namespace QxFontEffect
