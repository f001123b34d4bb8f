#pragma once

#include <cstddef>
#include <cstdint>

#include "effect/kernel/scratch_cutter.h"
#include "pixel/plane.h"

namespace QxFontEffect {

/// What is known of all samples of a block. Both hold of a block without samples.
enum GrowState : uint8_t { kGrowMixed = 0, kGrowBlank = 1, kGrowFull = 2, kGrowEmpty = kGrowBlank | kGrowFull };

/// The inner loops of the growth, once per instruction set.
struct BoxGrowKernels {
    /// Columns of a block.
    static constexpr int kColumns = 64;

    const char* name;

    /// Makes the rows of a block out of their own and the neighbouring old samples.
    ///
    /// @param above  the old sample above the first. Read are the rows from there to the one below the last, from the
    ///               column before the block to the one after it.
    /// @param out    the first new sample, must not overlap what is read.
    /// @return whether all new samples are 255.
    bool (*grow)(const uint8_t* above, ptrdiff_t stride, int rows, uint8_t* out);

    GrowState (*look)(const uint8_t* block, ptrdiff_t stride, int rows);
};

const BoxGrowKernels& boxGrowKernelsPortable();
/// Null where the program was not built for AVX2 or the processor has none.
const BoxGrowKernels* boxGrowKernelsAvx2();
const BoxGrowKernels& boxGrowKernels();

/// Grows the bright parts of a plane by about a pixel a pass: every sample becomes the sum of the 3 x 3 samples around
/// it, divided by 4 and limited to 255.
///
/// The first and the last row never change. In the other rows the first and the last sample are 0 after a pass; a
/// plane less than three columns wide becomes 0 there. Planes less than three rows high stay as they are.
///
/// Passes turn from one plane to a second and back, in bands of rows: as soon as a pass has made a band, the next makes
/// the band one row above it, so that both stay in the cache. What lies in the front of the growth is a fraction of the
/// plane, so blocks of a band that are blank with all their neighbours, or full with them, are not computed.
class BoxGrowth {
public:
    /// Bytes of scratch, in 64 bits because a job may want more than there is.
    static int64_t scratchBytes(int width, int height, int passes);

    /// @param width, height  of the plane, 0 or more.
    /// @param scratch        scratchBytes(...) bytes, used while the object lives, contents undefined before and after.
    BoxGrowth(int width, int height, int passes, uint8_t* scratch, const BoxGrowKernels& kernels = boxGrowKernels());

    /// The plane to be grown, with samples yet to be written.
    Plane8 start() const;

    /// Runs the passes; 0 or less of them change nothing.
    /// @return the grown plane, valid as long as the scratch.
    Plane8 grown();

private:
    /// What it keeps in scratch.
    struct Memory {
        Memory(int width, int height, int passes, ScratchCutter& cutter);

        int64_t stride;
        uint8_t* planes[2] = {};  ///< the first sample in each
        GrowState*
            states;      ///< of the blocks of two neighbouring bands, for each pass of a wave and what it begins with
        GrowState* top;  ///< of the blocks of the first row
        GrowState* bottom;  ///< of the blocks of the last row
    };

    uint8_t* rowOf(int plane, int64_t y) const { return mMemory.planes[plane] + y * mMemory.stride; }
    GrowState* statesOf(int pass, int64_t band) const;
    void startStates(int passes);
    void runWave(int passes);
    void lookAtBand(int64_t band);
    void makeBand(int pass, int64_t band);
    GrowState makeBlock(int pass, int block, GrowState around, int64_t from, int64_t to);
    GrowState withEdges(GrowState state, int block, int64_t from, int64_t to) const;

    int mWidth;
    int mHeight;
    int mPasses;
    int mBlocks;
    int mFrom;  // plane that the wave begins with
    const BoxGrowKernels& mKernels;
    Memory mMemory;
};

/// Grows a plane where it lies.
///
/// @param scratch  BoxGrowth::scratchBytes(plane.width, plane.height, passes) bytes, contents undefined before and
/// after.
void growByBoxPlane8(Plane8 plane, int passes, uint8_t* scratch, const BoxGrowKernels& kernels = boxGrowKernels());

}  // namespace QxFontEffect
