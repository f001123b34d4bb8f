// The loops of distance_kernels.h for processors with AVX2; this file alone is compiled for them, and does not ask
// whether it may run.

#if defined(__AVX2__)

#include "effect/kernel/distance_kernels_body.h"

namespace QxFontEffect {

extern const DistanceKernels* const kDistanceKernelsForAvx2;

static constexpr DistanceKernels kKernels = kernelsNamed("avx2");
const DistanceKernels* const kDistanceKernelsForAvx2 = &kKernels;

}  // namespace QxFontEffect

#else

#include "effect/kernel/distance_kernels.h"

namespace QxFontEffect {

extern const DistanceKernels* const kDistanceKernelsForAvx2;
const DistanceKernels* const kDistanceKernelsForAvx2 = nullptr;

}  // namespace QxFontEffect

#endif
