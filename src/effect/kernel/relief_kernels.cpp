#include "effect/kernel/relief_kernels_body.h"

#include "pixel/kernel/cpu.h"

namespace QxFontEffect {

extern const ReliefKernels* const kReliefKernelsForAvx2;

const ReliefKernels& reliefKernelsPortable() {
    static constexpr ReliefKernels kKernels = kernelsNamed("portable");
    return kKernels;
}

const ReliefKernels* reliefKernelsAvx2() {
    return kernel::cpuHasAvx2() ? kReliefKernelsForAvx2 : nullptr;
}

const ReliefKernels& reliefKernels() {
    const ReliefKernels* fast = reliefKernelsAvx2();
    return fast != nullptr ? *fast : reliefKernelsPortable();
}

}  // namespace QxFontEffect
