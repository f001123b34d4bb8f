// The loops of disc_dilate_kernels.h for processors with AVX2; this file alone is compiled for them.

#include "effect/kernel/disc_dilate_kernels.h"

#if defined(__AVX2__)

#include "effect/kernel/disc_dilate_kernels_body.h"
#include "effect/kernel/disc_dilate_small_body.h"
#include "effect/kernel/disc_dilate_solid_body.h"

namespace QxFontEffect {

extern const DilateKernels* const kDilateKernelsForAvx2;

static constexpr DilateKernels kKernels = {"avx2", copy,  measureInk, runMaxima,  joinSolid,
                                           gather, lower, markSmall,  gatherSmall};
const DilateKernels* const kDilateKernelsForAvx2 = &kKernels;

}  // namespace QxFontEffect

#else

namespace QxFontEffect {

extern const DilateKernels* const kDilateKernelsForAvx2;
const DilateKernels* const kDilateKernelsForAvx2 = nullptr;

}  // namespace QxFontEffect

#endif
