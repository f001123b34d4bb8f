#include "effect/kernel/ramp_blend.h"

#include "effect/kernel/ramp_blend_body.h"
#include "pixel/kernel/cpu.h"

namespace QxFontEffect {

extern const RampBlendKernels* const kRampBlendKernelsForAvx2;

const RampBlendKernels& rampBlendKernelsPortable() {
    static constexpr RampBlendKernels kKernels = {"portable", blendRampRow};
    return kKernels;
}

const RampBlendKernels* rampBlendKernelsAvx2() {
    return kernel::cpuHasAvx2() ? kRampBlendKernelsForAvx2 : nullptr;
}

const RampBlendKernels& rampBlendKernels() {
    const RampBlendKernels* fast = rampBlendKernelsAvx2();
    return fast != nullptr ? *fast : rampBlendKernelsPortable();
}

}  // namespace QxFontEffect
