// The loops of relief_kernels.h for processors with AVX2; this file alone is compiled for them, and does not ask
// whether it may run.

#if defined(__AVX2__)

#include "effect/kernel/relief_kernels_body.h"

namespace QxFontEffect {

extern const ReliefKernels* const kReliefKernelsForAvx2;

static constexpr ReliefKernels kKernels = kernelsNamed("avx2");
const ReliefKernels* const kReliefKernelsForAvx2 = &kKernels;

}  // namespace QxFontEffect

#else

#include "effect/kernel/relief_kernels.h"

namespace QxFontEffect {

extern const ReliefKernels* const kReliefKernelsForAvx2;
const ReliefKernels* const kReliefKernelsForAvx2 = nullptr;

}  // namespace QxFontEffect

#endif
