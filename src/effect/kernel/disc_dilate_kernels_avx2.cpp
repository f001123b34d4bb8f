// The loops of disc_dilate_kernels.h for processors with AVX2; this file alone is compiled for them.

#if defined(__AVX2__)

#include "effect/kernel/disc_dilate_kernels_body.h"

namespace QxFontEffect {

const DilateKernels* dilateKernelsAvx2() {
    static constexpr DilateKernels kKernels = {"avx2", copy, countInk, runMaxima, gather};
    return __builtin_cpu_supports("avx2") ? &kKernels : nullptr;
}

}  // namespace QxFontEffect

#else

#include "effect/kernel/disc_dilate_kernels.h"

namespace QxFontEffect {

const DilateKernels* dilateKernelsAvx2() {
    return nullptr;
}

}  // namespace QxFontEffect

#endif
