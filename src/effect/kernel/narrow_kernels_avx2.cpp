// The loops of narrow_kernels.h for processors with AVX2; this file alone is compiled for them.

#include "effect/kernel/narrow_kernels.h"

#if defined(__AVX2__)

#include "effect/kernel/narrow_kernels_body.h"

namespace QxFontEffect {

extern const NarrowKernels* const kNarrowKernelsForAvx2;

static constexpr NarrowKernels kKernels = narrowKernelsNamed("avx2");
const NarrowKernels* const kNarrowKernelsForAvx2 = &kKernels;

}  // namespace QxFontEffect

#else

namespace QxFontEffect {

extern const NarrowKernels* const kNarrowKernelsForAvx2;
const NarrowKernels* const kNarrowKernelsForAvx2 = nullptr;

}  // namespace QxFontEffect

#endif
