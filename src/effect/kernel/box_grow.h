#pragma once

#include <cstdint>

#include "pixel/plane.h"

namespace QxFontEffect {

/// The inner loop of the growth, once per instruction set.
struct BoxGrowKernels {
    const char* name;

    /// Makes one row out of its own and its two neighbours' old samples.
    ///
    /// @param pairs    by column, the old sample of the row above plus that of the row; becomes that of the row plus
    ///                 that of the row below.
    /// @param last     the old samples of the row; becomes those of the row below.
    /// @param columns  width + 2 words of scratch.
    /// @param below    the old samples of the row below.
    /// @param out      the new samples of the row.
    void (*row)(uint16_t* pairs, uint16_t* last, uint16_t* columns, const uint8_t* below, int width, uint8_t* out);
};

const BoxGrowKernels& boxGrowKernelsPortable();
/// Null where the program was not built for AVX2 or the processor has none.
const BoxGrowKernels* boxGrowKernelsAvx2();
const BoxGrowKernels& boxGrowKernels();

/// Bytes of scratch that `growByBoxPlane8` wants, in 64 bits because a job may want more than there is.
int64_t boxGrowScratchBytes(int width, int passes);

/// Grows the bright parts of a plane by about a pixel a pass: every sample becomes the sum of the 3 x 3 samples around
/// it, divided by 4 and limited to 255.
///
/// The first and the last row never change. In the other rows the first and the last sample are 0 after a pass; a
/// plane less than three columns wide becomes 0 there.
///
/// @param plane    changed in place; planes less than three rows high stay as they are.
/// @param passes   0 or less changes nothing.
/// @param scratch  boxGrowScratchBytes(plane.width, passes) bytes, contents undefined before and after.
void growByBoxPlane8(Plane8 plane, int passes, uint8_t* scratch, const BoxGrowKernels& kernels = boxGrowKernels());

}  // namespace QxFontEffect
