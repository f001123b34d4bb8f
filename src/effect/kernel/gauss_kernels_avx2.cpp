// The loops of gauss_kernels.h for processors with AVX2; this file alone is compiled for them.

#include "effect/kernel/gauss_kernels.h"

#if defined(__AVX2__)

#include "effect/kernel/gauss_kernels_body.h"

namespace QxFontEffect {

extern const GaussKernels* const kGaussKernelsForAvx2;

static constexpr GaussKernels kKernels = {"avx2", columnsBlock, linesRun, startSums, countInk, widenBlock, turnBlock};
const GaussKernels* const kGaussKernelsForAvx2 = &kKernels;

}  // namespace QxFontEffect

#else

namespace QxFontEffect {

extern const GaussKernels* const kGaussKernelsForAvx2;
const GaussKernels* const kGaussKernelsForAvx2 = nullptr;

}  // namespace QxFontEffect

#endif
