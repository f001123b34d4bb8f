#include "effect/kernel/narrow_blur.h"

#include <algorithm>
#include <cstring>

namespace QxFontEffect {
namespace {

static_assert(NarrowBell::kMaxRadius <= kNarrowUnit, "a unit on either side of the outputs is enough");

int unitsOf(int outputs) {
    return (outputs + kNarrowUnit - 1) / kNarrowUnit;
}

/// Words of marks for the units of the outputs and one on either side.
int wordsOf(int outputs) {
    return (unitsOf(outputs) + 2 + 31) / 32;
}

/// Of marks of halves, the units.
uint64_t unitsIn(uint64_t halves) {
    return (halves | halves >> 1) & kNarrowLeftHalves;
}

/// Makes the units that are marked now all that is marked: `clear` gets the row and the number of each unit that was
/// marked and is not any more.
template <typename Clear>
void replaceMarks(NarrowMarks before, NarrowMarks now, int rows, const Clear& clear) {
    for (int word = 0; word < now.words; ++word)
        for (int row = 0; row < rows; ++row) {
            uint64_t left = unitsIn(before.at(word, row)) & ~unitsIn(now.at(word, row));
            for (; left != 0; left &= left - 1) clear(row, ptrdiff_t{word} * 32 + __builtin_ctzll(left) / 2);
            before.at(word, row) = now.at(word, row);
        }
}

/// Brings the mark of a unit to its left half.
void markUnits(NarrowMarks marks, int rows) {
    for (int word = 0; word < marks.words; ++word)
        for (int row = 0; row < rows; ++row) marks.at(word, row) = unitsIn(marks.at(word, row));
}

}  // namespace

NarrowBlur::Memory::Memory(int radius, int outputs, ScratchCutter& cutter)
    : words(wordsOf(outputs)),
      windowRows(2 * radius + kNarrowRows),
      source(cutter.take<uint8_t>(columns() * kNarrowRows)),
      out(cutter.take<uint8_t>(columns() * kNarrowRows)),
      lines(cutter.take<uint16_t>(columns() * kNarrowRows)),
      window(cutter.take<uint16_t>((int64_t{unitsOf(outputs)} + 2) * kNarrowUnit * windowRows)),
      wanted(cutter.take<uint64_t>(words)),
      marks(cutter.take<uint64_t>(int64_t{words} * kNarrowRows)),
      inOut(cutter.take<uint64_t>(int64_t{words} * kNarrowRows)),
      inLines(cutter.take<uint64_t>(int64_t{words} * kNarrowRows)),
      inWindow(cutter.take<uint64_t>(int64_t{words} * windowRows)) {}

int64_t NarrowBlur::scratchBytes(int radius, int outputs) {
    return scratchBytesOf<Memory>(radius, outputs);
}

NarrowBlur::NarrowBlur(const GaussJob& job, uint8_t* scratch, const NarrowKernels& kernels)
    : mSrc(job.src),
      mBell(narrowBellOf(*job.bell)),
      mRadius(job.bell->radius),
      mOrder(job.order),
      mKernels(kernels),
      mEmptyColumn(emptySumOf(job.columns, job.bell->sum)),
      mEmptyLine(emptySumOf(job.rows, job.bell->sum)),
      mCount(outputsOf(job)),
      mMemory(cutFrom<Memory>(scratch, mRadius, mCount)),
      mFrom(static_cast<int>(std::clamp<int64_t>(int64_t{job.out.xStart} - mRadius, 0, job.src.width))),
      mTo(static_cast<int>(std::clamp<int64_t>(int64_t{job.out.xStart} + mCount + mRadius, mFrom, job.src.width))),
      mPlace(mFrom == mTo ? 0 : kNarrowUnit + mFrom - job.out.xStart),
      mEntering(int64_t{job.out.yStart} - mRadius),
      mLeft(std::max(job.out.yEnd - job.out.yStart, 0)),
      mHasWindow(false) {
    clear();
    for (int row = 0; row < 2 * mRadius; row += kNarrowRows) enterRows(row, std::min(kNarrowRows, 2 * mRadius - row));
}

void NarrowBlur::clear() {
    const Memory& m = mMemory;
    std::memset(m.source, 0, static_cast<size_t>(m.columns() * kNarrowRows));
    std::memset(m.out, 0, static_cast<size_t>(m.columns() * kNarrowRows));
    std::fill_n(m.lines, m.columns() * kNarrowRows, uint16_t{0});
    std::fill_n(m.window, (unitsOf(mCount) + 2) * window().unitStep, uint16_t{0});
    std::fill_n(m.wanted, m.words, uint64_t{0});
    for (uint64_t* marks : {m.inOut, m.inLines}) std::fill_n(marks, m.words * kNarrowRows, uint64_t{0});
    std::fill_n(m.inWindow, m.words * m.windowRows, uint64_t{0});
    for (int unit = 1; unit <= unitsOf(mCount); ++unit) m.wanted[unit / 32] |= uint64_t{1} << (unit % 32 * 2);
}

/// The last rows of a window are the first of the next.
void NarrowBlur::moveWindow() const {
    const Memory& m = mMemory;
    const ptrdiff_t kept = 2 * mRadius, step = window().unitStep;
    for (int word = 0; word < m.words; ++word) {
        uint64_t* marks = m.inWindow + ptrdiff_t{word} * m.windowRows;
        uint64_t any = 0;
        for (int row = 0; row < m.windowRows; ++row) any |= marks[row];
        for (any = unitsIn(any); any != 0; any &= any - 1) {
            uint16_t* unit = m.window + (ptrdiff_t{word} * 32 + __builtin_ctzll(any) / 2) * step;
            std::memmove(unit, unit + kNarrowRows * kNarrowUnit, static_cast<size_t>(kept) * kNarrowUnit * 2);
        }
        std::memmove(marks, marks + kNarrowRows, static_cast<size_t>(kept) * sizeof *marks);
    }
}

/// Brings the next rows of the source onto the grid.
void NarrowBlur::readRows(int rows) {
    const ptrdiff_t stride = mMemory.columns();
    uint8_t* to = mMemory.source;
    for (int row = 0; row < rows; ++row, ++mEntering, to += stride) {
        const size_t columns = static_cast<size_t>(mTo - mFrom);
        if (columns == 0) continue;
        if (mEntering >= 0 && mEntering < mSrc.height)
            std::memcpy(to + mPlace, mSrc.row(static_cast<int>(mEntering)) + mFrom, columns);
        else
            std::memset(to + mPlace, 0, columns);
    }
    mKernels.findInk({mMemory.source, static_cast<int>(stride), rows, stride}, marksOf(mMemory.marks));
}

/// Keeps the marks of rows of the window, from `first` on.
void NarrowBlur::takeWindow(int first, int rows) const {
    const NarrowWindow to = window();
    const NarrowMarks all = windowMarks();
    replaceMarks({all.bits + first, all.words, all.step}, marksOf(mMemory.marks), rows, [&](int row, ptrdiff_t unit) {
        std::fill_n(to.samples + unit * to.unitStep + ptrdiff_t{kNarrowUnit} * (first + row), kNarrowUnit, uint16_t{0});
    });
}

void NarrowBlur::takeLines(int rows) const {
    const NarrowLines to = lines();
    replaceMarks(marksOf(mMemory.inLines), marksOf(mMemory.marks), rows, [&](int row, ptrdiff_t unit) {
        std::fill_n(to.samples + row * to.stride + unit * kNarrowUnit, kNarrowUnit, uint16_t{0});
    });
}

void NarrowBlur::takeOut(int rows) const {
    replaceMarks(marksOf(mMemory.inOut), marksOf(mMemory.marks), rows, [&](int row, ptrdiff_t unit) {
        std::memset(mMemory.out + row * mMemory.columns() + unit * kNarrowUnit, 0, kNarrowUnit);
    });
}

/// Adds the halves of units that the bell reaches sideways from those marked, and leaves the units of outputs.
void NarrowBlur::markSpread(int rows) const {
    const NarrowMarks marks = marksOf(mMemory.marks);
    for (int row = 0; row < rows; ++row) {
        for (int columns = mRadius; columns > 0; columns -= kNarrowUnit / 2) {
            uint64_t before = 0;
            for (int word = 0; word < marks.words; ++word) {
                const uint64_t here = marks.at(word, row);
                const uint64_t after = word + 1 < marks.words ? marks.at(word + 1, row) : 0;
                marks.at(word, row) = here | here << 1 | before >> 63 | here >> 1 | after << 63;
                before = here;
            }
        }
        for (int word = 0; word < marks.words; ++word)
            marks.at(word, row) = unitsIn(marks.at(word, row)) & mMemory.wanted[word];
    }
}

/// Marks what lies under the bell in the vertical pass.
void NarrowBlur::markColumns(int rows) const {
    const NarrowMarks marks = marksOf(mMemory.marks), seen = windowMarks();
    for (int word = 0; word < marks.words; ++word)
        for (int row = 0; row < rows; ++row) {
            uint64_t any = 0;
            for (int under = 0; under <= 2 * mRadius; ++under) any |= seen.at(word, row + under);
            marks.at(word, row) = any;
        }
}

/// Brings the next rows of the source into the window from row `first` on: their samples, or what the horizontal pass
/// makes of them.
void NarrowBlur::enterRows(int first, int rows) {
    const NarrowMarks marks = marksOf(mMemory.marks);
    NarrowWindow to = window();
    to.samples += ptrdiff_t{first} * kNarrowUnit;
    const ConstPlane8 source = {mMemory.source, static_cast<int>(mMemory.columns()), rows, mMemory.columns()};
    readRows(rows);
    if (mOrder == GaussOrder::ColumnsFirst) {
        takeWindow(first, rows);
        markUnits(marks, rows);
        mKernels.widenToWindow(source, marks, to);
        return;
    }
    takeLines(rows);
    markUnits(marksOf(mMemory.inLines), rows);
    mKernels.widenToLines(source, marksOf(mMemory.inLines), lines());
    markSpread(rows);
    takeWindow(first, rows);
    mKernels.linesToWindow({mBell, mEmptyLine, marks, rows}, lines(), to);
}

ConstPlane8 NarrowBlur::next() {
    const int rows = std::min(mLeft, kNarrowRows);
    const ptrdiff_t stride = mMemory.columns();
    const ConstPlane8 made = {mMemory.out + kNarrowUnit, mCount, rows, stride};
    if (rows == 0) return made;
    const NarrowMarks marks = marksOf(mMemory.marks);
    // The rows that the last strip ended with are needed again.
    if (mHasWindow) moveWindow();
    mHasWindow = true;
    enterRows(2 * mRadius, rows);
    markColumns(rows);
    if (mOrder == GaussOrder::RowsFirst) {
        takeOut(rows);
        markUnits(marks, rows);
        mKernels.columnsToBytes({mBell, mEmptyColumn, marks, rows}, window(), mMemory.out, stride);
    } else {
        takeLines(rows);
        markUnits(marksOf(mMemory.inLines), rows);
        mKernels.columnsToLines({mBell, mEmptyColumn, marksOf(mMemory.inLines), rows}, window(), lines());
        markSpread(rows);
        takeOut(rows);
        mKernels.linesToBytes({mBell, mEmptyLine, marks, rows}, lines(), mMemory.out, stride);
    }
    mLeft -= rows;
    return made;
}

}  // namespace QxFontEffect
