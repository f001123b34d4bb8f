// The loops of box_grow.h for processors with AVX2; this file alone is compiled for them.

#include "effect/kernel/box_grow.h"

#if defined(__AVX2__)

#include "effect/kernel/box_grow_body.h"

namespace QxFontEffect {

extern const BoxGrowKernels* const kBoxGrowKernelsForAvx2;

static constexpr BoxGrowKernels kKernels = {"avx2", growBlock, lookAtBlock};
const BoxGrowKernels* const kBoxGrowKernelsForAvx2 = &kKernels;

}  // namespace QxFontEffect

#else

namespace QxFontEffect {

extern const BoxGrowKernels* const kBoxGrowKernelsForAvx2;
const BoxGrowKernels* const kBoxGrowKernelsForAvx2 = nullptr;

}  // namespace QxFontEffect

#endif
