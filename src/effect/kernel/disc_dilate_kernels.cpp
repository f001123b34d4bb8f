#include "effect/kernel/disc_dilate_kernels_body.h"

namespace QxFontEffect {

const DilateKernels& dilateKernelsPortable() {
    static constexpr DilateKernels kKernels = {"portable", copy, countInk, runMaxima, gather};
    return kKernels;
}

const DilateKernels& dilateKernels() {
    const DilateKernels* fast = dilateKernelsAvx2();
    return fast != nullptr ? *fast : dilateKernelsPortable();
}

}  // namespace QxFontEffect
