#include "effect/kernel/box_grow_body.h"

#include <algorithm>
#include <cstring>

#include "effect/kernel/scratch_cutter.h"
#include "pixel/kernel/cpu.h"

namespace QxFontEffect {
namespace {

// Passes that follow one another down the plane at a distance of one row, so that their rows stay in the cache.
constexpr int kMaxWave = 64;

/// What a pass remembers of the rows that it has overwritten.
struct Wave {
    Wave(int planeWidth, int passes, ScratchCutter& cutter)
        : width(planeWidth),
          pairs(cutter.take<uint16_t>(int64_t{planeWidth} * passes)),
          last(cutter.take<uint16_t>(int64_t{planeWidth} * passes)),
          columns(cutter.take<uint16_t>(int64_t{planeWidth} + 2)) {}

    int64_t width;
    uint16_t* pairs;
    uint16_t* last;
    uint16_t* columns;
};

/// Has pass `pass` of a wave make row `y`, after the pass before it has made row y + 1.
void makeRow(Plane8 plane, int y, int pass, const Wave& wave, const BoxGrowKernels& kernels) {
    uint16_t* pairs = wave.pairs + pass * wave.width;
    uint16_t* last = wave.last + pass * wave.width;
    if (y > 0) {
        kernels.row(pairs, last, wave.columns, plane.row(y + 1), plane.width, plane.row(y));
        return;
    }
    for (int x = 0; x < plane.width; ++x) {
        last[x] = plane.row(1)[x];
        pairs[x] = static_cast<uint16_t>(plane.row(0)[x] + last[x]);
    }
}

}  // namespace

extern const BoxGrowKernels* const kBoxGrowKernelsForAvx2;

const BoxGrowKernels& boxGrowKernelsPortable() {
    static constexpr BoxGrowKernels kKernels = {"portable", growRow};
    return kKernels;
}

const BoxGrowKernels* boxGrowKernelsAvx2() {
    return kernel::cpuHasAvx2() ? kBoxGrowKernelsForAvx2 : nullptr;
}

const BoxGrowKernels& boxGrowKernels() {
    const BoxGrowKernels* fast = boxGrowKernelsAvx2();
    return fast != nullptr ? *fast : boxGrowKernelsPortable();
}

int64_t boxGrowScratchBytes(int width, int passes) {
    ScratchCutter counter;
    Wave(std::max(width, 0), std::clamp(passes, 0, kMaxWave), counter);
    return counter.bytes();
}

void growByBoxPlane8(Plane8 plane, int passes, uint8_t* scratch, const BoxGrowKernels& kernels) {
    if (plane.width < 1 || plane.height < 3 || passes < 1) return;
    ScratchCutter cutter(scratch);
    const Wave wave(plane.width, std::min(passes, kMaxWave), cutter);
    for (int done = 0; done < passes;) {
        const int together = std::min(passes - done, kMaxWave);
        for (int step = 0; step < plane.height - 2 + together; ++step)
            for (int pass = std::max(step - plane.height + 2, 0); pass < together && pass <= step; ++pass)
                makeRow(plane, step - pass, pass, wave, kernels);
        done += together;
    }
}

}  // namespace QxFontEffect
