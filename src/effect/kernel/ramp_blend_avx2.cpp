// The loop of ramp_blend.h for processors with AVX2; this file alone is compiled for them.

#include "effect/kernel/ramp_blend.h"

#if defined(__AVX2__)

#include "effect/kernel/ramp_blend_body.h"

namespace QxFontEffect {

extern const RampBlendKernels* const kRampBlendKernelsForAvx2;

static constexpr RampBlendKernels kKernels = {"avx2", blendRampRow};
const RampBlendKernels* const kRampBlendKernelsForAvx2 = &kKernels;

}  // namespace QxFontEffect

#else

namespace QxFontEffect {

extern const RampBlendKernels* const kRampBlendKernelsForAvx2;
const RampBlendKernels* const kRampBlendKernelsForAvx2 = nullptr;

}  // namespace QxFontEffect

#endif
