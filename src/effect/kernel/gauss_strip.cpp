#include "effect/kernel/gauss_strip.h"

#include <algorithm>
#include <cstring>

namespace QxFontEffect {
namespace {

/// Words that a column takes at most; whether second totals are worth it is not known before the taps are made.
int maxColumnWords(const GaussBell& bell) {
    return (bell.radius <= GaussTaps::kMaxSecondRadius ? 3 : 2) * kGaussRows;
}

int64_t wholeBlocks(int64_t columns) {
    return (columns + kGaussBlock - 1) / kGaussBlock * kGaussBlock;
}

}  // namespace

GaussStripLayout::GaussStripLayout(const GaussBell& bell, int width, int xStart, int outputs) : count(outputs) {
    const int64_t firstTap = int64_t{xStart} - 1 - bell.radius;
    const int64_t endTap = int64_t{xStart} + outputs + bell.radius;
    from = static_cast<int>(std::clamp<int64_t>(firstTap, 0, width));
    to = static_cast<int>(std::clamp<int64_t>(endTap, from, width));
    blocks = static_cast<int>(wholeBlocks(to - from) / kGaussBlock);
    // Two columns more before the first tap: totals and second totals start from 0 there.
    start = int64_t{bell.radius} + 3;
    origin = from == to ? 0 : start + from - xStart;
    length = std::max(origin + int64_t{blocks} * kGaussBlock, start + wholeBlocks(outputs) + bell.radius);
}

GaussStrip::Memory::Memory(const GaussBell& bell, const GaussStripLayout& layout, ScratchCutter& cutter)
    : samples(cutter.take<uint16_t>(layout.length * maxColumnWords(bell))),
      program(cutter.take<int32_t>(GaussProgram::maxWords(bell))),
      runs(cutter.take<Run>(layout.maxRuns())),
      inked(cutter.take<uint8_t>(layout.blocks)) {}

int64_t GaussStrip::scratchBytes(const GaussBell& bell, const GaussStripLayout& layout) {
    return scratchBytesOf<Memory>(bell, layout);
}

GaussStrip::GaussStrip(const GaussPlan& plan, GaussRounding rounding, const GaussStripLayout& layout, uint8_t* scratch)
    : mPlan(plan),
      mEmptySum(plan.emptySum(rounding)),
      mLayout(layout),
      mMemory(cutFrom<Memory>(scratch, plan.bell, layout)) {
    const int64_t reach = int64_t{plan.bell.radius} + 3;
    writeGaussProgram(plan.taps, {plan.columnWords(), {0, kGaussRows, 2 * kGaussRows}, -reach, reach, kNoPlace},
                      mMemory.program);
    std::fill_n(mMemory.samples, layout.length * plan.columnWords(), uint16_t{0});
    std::memset(mMemory.inked, 0, static_cast<size_t>(layout.blocks));
}

/// Of the first row.
uint16_t* GaussStrip::sampleAt(int64_t column) const {
    return mMemory.samples + column * mPlan.columnWords();
}

void GaussStrip::setBlock(int block, const uint8_t* src, ptrdiff_t stride, int columns, int rows) {
    const bool wasInked = mMemory.inked[block] != 0;
    mMemory.inked[block] = src != nullptr ? 1 : 0;
    if (src == nullptr && !wasInked) return;
    uint16_t* place = sampleAt(mLayout.origin + int64_t{block} * kGaussBlock);
    if (src != nullptr)
        mPlan.kernels->turn(src, stride, columns, rows, place, mPlan.columnWords());
    else
        std::fill_n(place, kGaussBlock * mPlan.columnWords(), uint16_t{0});
}

int GaussStrip::findRuns() {
    const int64_t radius = mPlan.bell.radius;
    int count = 0;
    for (int block = 0; block < mLayout.blocks; ++block) {
        if (mMemory.inked[block] == 0) continue;
        const int64_t ink = mLayout.origin - mLayout.start + int64_t{block} * kGaussBlock;
        const int64_t first = std::max<int64_t>(ink - radius, 0) / kGaussBlock * kGaussBlock;
        const int64_t last = std::min<int64_t>(ink + kGaussBlock - 1 + radius, mLayout.count - 1);
        if (first > last) continue;
        const int32_t end = static_cast<int32_t>(std::min<int64_t>(wholeBlocks(last + 1), mLayout.count));
        if (count > 0 && first <= mMemory.runs[count - 1].end)
            mMemory.runs[count - 1].end = std::max(end, mMemory.runs[count - 1].end);
        else
            mMemory.runs[count++] = {static_cast<int32_t>(first), end};
    }
    return count;
}

void GaussStrip::blur(Plane8 dst) {
    const auto blank = [&](int from, int to) {
        for (int y = 0; y < dst.height; ++y) std::memset(dst.row(y) + from, 0, static_cast<size_t>(to - from));
    };
    const int runCount = findRuns();
    int done = 0;
    for (int i = 0; i < runCount; ++i) {
        const Run run = mMemory.runs[i];
        blank(done, run.start);
        // A run that follows a blank block starts from nothing.
        const bool isFirst = run.start == 0;
        mPlan.kernels->lines(mPlan, {mMemory.program, sampleAt(mLayout.start + run.start), run.end - run.start,
                                     dst.height, mEmptySum, isFirst, dst.data + run.start, dst.stride});
        done = run.end;
    }
    blank(done, mLayout.count);
}

}  // namespace QxFontEffect
