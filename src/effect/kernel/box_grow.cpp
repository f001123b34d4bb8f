#include "effect/kernel/box_grow.h"

#include <algorithm>
#include <cstring>

#include "effect/kernel/box_grow_body.h"
#include "pixel/kernel/cpu.h"

namespace QxFontEffect {
namespace {

// Rows of a band. More are fewer rows read twice, fewer are smaller blocks and less memory on the way.
constexpr int kBandRows = 16;
// Passes that follow one another down the plane, so that their rows stay in the cache.
constexpr int kMaxWave = 64;
// The columns beside the first and the last block are read too.
constexpr int64_t kSide = 64;

int blocksOf(int width) {
    return (width + BoxGrowKernels::kColumns - 1) / BoxGrowKernels::kColumns;
}

/// Samples from one row to the next.
int64_t strideOf(int width) {
    const int64_t stride = int64_t{blocksOf(width)} * BoxGrowKernels::kColumns + kSide;
    // Rows at a distance of a power of two would drive one another out of the cache.
    return stride % 1024 == 0 ? stride + kSide : stride;
}

GrowState both(GrowState a, GrowState b) {
    return static_cast<GrowState>(a & b);
}

}  // namespace

extern const BoxGrowKernels* const kBoxGrowKernelsForAvx2;

const BoxGrowKernels& boxGrowKernelsPortable() {
    static constexpr BoxGrowKernels kKernels = {"portable", growBlock, lookAtBlock};
    return kKernels;
}

const BoxGrowKernels* boxGrowKernelsAvx2() {
    return kernel::cpuHasAvx2() ? kBoxGrowKernelsForAvx2 : nullptr;
}

const BoxGrowKernels& boxGrowKernels() {
    const BoxGrowKernels* fast = boxGrowKernelsAvx2();
    return fast != nullptr ? *fast : boxGrowKernelsPortable();
}

BoxGrowth::Memory::Memory(int width, int height, int passes, ScratchCutter& cutter) : stride(strideOf(width)) {
    for (uint8_t*& plane : planes) {
        plane = cutter.take<uint8_t>(stride * height);
        if (plane != nullptr) plane += kSide / 2;
    }
    const int64_t blocks = blocksOf(width);
    states = cutter.take<GrowState>((std::clamp(passes, 0, kMaxWave) + 1) * 2 * blocks);
    top = cutter.take<GrowState>(blocks);
    bottom = cutter.take<GrowState>(blocks);
}

int64_t BoxGrowth::scratchBytes(int width, int height, int passes) {
    return scratchBytesOf<Memory>(std::max(width, 0), std::max(height, 0), passes);
}

BoxGrowth::BoxGrowth(int width, int height, int passes, uint8_t* scratch, const BoxGrowKernels& kernels)
    : mWidth(width),
      mHeight(height),
      mPasses(passes),
      mBlocks(blocksOf(width)),
      mFrom(0),
      mKernels(kernels),
      mMemory(cutFrom<Memory>(scratch, width, height, passes)) {}

Plane8 BoxGrowth::start() const {
    return {mMemory.planes[0], mWidth, mHeight, mMemory.stride};
}

Plane8 BoxGrowth::grown() {
    if (mWidth > 0 && mHeight >= 3 && mPasses > 0) {
        // What lies beside the columns only ever reaches the edge columns, which a pass makes 0.
        const int64_t columns = int64_t{mBlocks} * BoxGrowKernels::kColumns;
        for (int y = 0; y < mHeight; ++y) {
            std::memset(rowOf(0, y) + mWidth, 0, static_cast<size_t>(columns - mWidth));
            for (const int plane : {0, 1}) rowOf(plane, y)[-1] = rowOf(plane, y)[columns] = 0;
        }
        for (const int y : {0, mHeight - 1}) std::memcpy(rowOf(1, y), rowOf(0, y), static_cast<size_t>(columns));
        for (int done = 0; done < mPasses; done += kMaxWave) runWave(std::min(mPasses - done, kMaxWave));
    }
    return {mMemory.planes[mFrom], mWidth, mHeight, mMemory.stride};
}

/// What is known of a band's blocks. Band b of pass p, counted from 1, are the rows from b * kBandRows - (p - 1) on:
/// what they are made of are rows of the bands b - 1 and b of the pass before. Pass 0 is what the wave begins with.
GrowState* BoxGrowth::statesOf(int pass, int64_t band) const {
    return mMemory.states + (2 * int64_t{pass} + (band & 1)) * mBlocks;
}

void BoxGrowth::startStates(int passes) {
    for (int block = 0; block < mBlocks; ++block) {
        const int64_t column = int64_t{block} * BoxGrowKernels::kColumns;
        mMemory.top[block] = mKernels.look(rowOf(mFrom, 0) + column, mMemory.stride, 1);
        mMemory.bottom[block] = mKernels.look(rowOf(mFrom, mHeight - 1) + column, mMemory.stride, 1);
    }
    std::copy_n(mMemory.top, mBlocks, statesOf(0, -1));
    for (int pass = 1; pass <= passes; ++pass) std::fill_n(statesOf(pass, -1), mBlocks, kGrowEmpty);
}

void BoxGrowth::runWave(int passes) {
    startStates(passes);
    for (int64_t band = 0; band * kBandRows - (passes - 1) < mHeight - 1; ++band) {
        lookAtBand(band);
        for (int pass = 1; pass <= passes; ++pass) makeBand(pass, band);
    }
    mFrom = (mFrom + passes) % 2;
}

void BoxGrowth::lookAtBand(int64_t band) {
    const int64_t from = std::min<int64_t>(band * kBandRows + 1, mHeight);
    const int64_t to = std::min<int64_t>(from + kBandRows, mHeight);
    for (int block = 0; block < mBlocks; ++block)
        statesOf(0, band)[block] = mKernels.look(rowOf(mFrom, from) + int64_t{block} * BoxGrowKernels::kColumns,
                                                 mMemory.stride, static_cast<int>(to - from));
}

void BoxGrowth::makeBand(int pass, int64_t band) {
    const int64_t from = band * kBandRows - (pass - 1), to = from + kBandRows;
    const GrowState* above = statesOf(pass - 1, band - 1);
    const GrowState* same = statesOf(pass - 1, band);
    GrowState before = kGrowEmpty, here = both(above[0], same[0]);
    for (int block = 0; block < mBlocks; ++block) {
        const GrowState after = block + 1 < mBlocks ? both(above[block + 1], same[block + 1]) : kGrowEmpty;
        const GrowState made = makeBlock(pass, block, both(both(before, here), after), std::max<int64_t>(from, 1),
                                         std::min<int64_t>(to, mHeight - 1));
        statesOf(pass, band)[block] = withEdges(made, block, from, to);
        before = here;
        here = after;
    }
}

/// Makes the rows from .. to - 1 of a block.
/// @param around  what is known of all that they are made of.
GrowState BoxGrowth::makeBlock(int pass, int block, GrowState around, int64_t from, int64_t to) {
    if (from >= to) return kGrowEmpty;
    const int64_t column = int64_t{block} * BoxGrowKernels::kColumns;
    const int plane = (mFrom + pass) % 2, rows = static_cast<int>(to - from);
    const auto fill = [&](int value) {
        for (int64_t y = from; y < to; ++y) std::memset(rowOf(plane, y) + column, value, BoxGrowKernels::kColumns);
    };
    if ((around & kGrowBlank) != 0) {
        // From the second pass on the plane holds what was there two passes ago, which was blank too.
        if (pass == 1) fill(0);
        return kGrowBlank;
    }
    const bool isFirst = block == 0, isLast = block == mBlocks - 1;
    if ((around & kGrowFull) != 0 && !isFirst && !isLast) {
        fill(255);
        return kGrowFull;
    }
    const bool full =
        mKernels.grow(rowOf(1 - plane, from - 1) + column, mMemory.stride, rows, rowOf(plane, from) + column);
    for (int64_t y = from; y < to && isFirst; ++y) rowOf(plane, y)[0] = 0;
    for (int64_t y = from; y < to && isLast; ++y) rowOf(plane, y)[mWidth - 1] = 0;
    return full && !isFirst && !isLast ? kGrowFull : kGrowMixed;
}

/// Takes in the first and the last row, which no pass makes, where they lie in a band.
GrowState BoxGrowth::withEdges(GrowState state, int block, int64_t from, int64_t to) const {
    if (from <= 0 && to > 0) state = both(state, mMemory.top[block]);
    if (from <= mHeight - 1 && to > mHeight - 1) state = both(state, mMemory.bottom[block]);
    return state;
}

void growByBoxPlane8(Plane8 plane, int passes, uint8_t* scratch, const BoxGrowKernels& kernels) {
    BoxGrowth growth(plane.width, plane.height, passes, scratch, kernels);
    const Plane8 start = growth.start();
    const size_t width = static_cast<size_t>(plane.width);
    for (int y = 0; y < plane.height; ++y) std::memcpy(start.row(y), plane.row(y), width);
    const Plane8 grown = growth.grown();
    for (int y = 0; y < plane.height; ++y) std::memcpy(plane.row(y), grown.row(y), width);
}

}  // namespace QxFontEffect
