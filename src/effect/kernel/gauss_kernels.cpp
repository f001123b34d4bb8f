// Compiled for every processor of the kind.
#include "effect/kernel/gauss_kernels_body.h"

#include "pixel/kernel/cpu.h"

namespace QxFontEffect {

GaussPlan makeGaussPlan(const GaussBell& bell, const GaussKernels& kernels) {
    const GaussQuotient quotient = {bell.sum, 1.0f / static_cast<float>(bell.sum), bell.sum < 16384};
    return {bell, makeGaussTaps(bell), quotient, &kernels};
}

const GaussKernels& gaussKernelsPortable() {
    static constexpr GaussKernels kKernels = {"portable", columnsBlock, linesRun, startSums,
                                              countInk,   widenBlock,   turnBlock};
    return kKernels;
}

// In the file that is compiled for AVX2, which therefore must not ask for it itself.
extern const GaussKernels* const kGaussKernelsForAvx2;

const GaussKernels* gaussKernelsAvx2() {
    return kernel::cpuHasAvx2() ? kGaussKernelsForAvx2 : nullptr;
}

const GaussKernels& gaussKernels() {
    const GaussKernels* fast = gaussKernelsAvx2();
    return fast != nullptr ? *fast : gaussKernelsPortable();
}

}  // namespace QxFontEffect
