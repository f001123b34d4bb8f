#include "effect/kernel/distance_kernels_body.h"

#include "pixel/kernel/cpu.h"

namespace QxFontEffect {

extern const DistanceKernels* const kDistanceKernelsForAvx2;

const DistanceKernels& distanceKernelsPortable() {
    static constexpr DistanceKernels kKernels = kernelsNamed("portable");
    return kKernels;
}

const DistanceKernels* distanceKernelsAvx2() {
    return kernel::cpuHasAvx2() ? kDistanceKernelsForAvx2 : nullptr;
}

const DistanceKernels& distanceKernels() {
    const DistanceKernels* fast = distanceKernelsAvx2();
    return fast != nullptr ? *fast : distanceKernelsPortable();
}

}  // namespace QxFontEffect
