#pragma once

#include <cstddef>
#include <cstdint>

namespace QxFontEffect {

/// Draws colours of a table beneath a row of pixels, once per instruction set.
///
/// Gives the bytes of a row of looked up colours that goes beneath the destination, without that row: colours are
/// looked up only where there is something to draw and where it is not hidden, and go straight to pixels that are
/// empty.
struct RampBlendKernels {
    const char* name;

    /// @param grey    `count` places in the table.
    /// @param colors  256 premultiplied pixels in the destination's order. The first is 0 and stands for nothing.
    /// @param dst     `count` pixels.
    void (*row)(const uint8_t* grey, const uint32_t* colors, uint8_t* dst, ptrdiff_t count);
};

const RampBlendKernels& rampBlendKernelsPortable();
/// Null where the program was not built for AVX2 or the processor has none.
const RampBlendKernels* rampBlendKernelsAvx2();
const RampBlendKernels& rampBlendKernels();

}  // namespace QxFontEffect
