#pragma once

#include <cstddef>
#include <cstdint>

#include "effect/kernel/narrow_bell.h"
#include "pixel/plane.h"

namespace QxFontEffect {

/// The inner loops of the blur by narrow bells, once per instruction set.
///
/// Rows are walked in units of 16 columns, and only in those that have something to add up: text leaves most of its
/// surroundings blank, and a narrow bell hardly reaches into them. Which units they are is kept in marks, a bit for
/// every half of a unit, so that 64 bits stand for 512 columns.
constexpr int kNarrowUnit = 16;
constexpr int kNarrowWordColumns = 64 * kNarrowUnit / 2;
constexpr uint64_t kNarrowLeftHalves = 0x5555555555555555u;

/// A strip of so many rows is made at once: what it takes to begin a pass is spread over them, and a pass reads what
/// the one before it has made a while ago.
constexpr int kNarrowRows = 16;

/// Marks of the rows of a strip. Loops that take them go by the bits of the left halves.
struct NarrowMarks {
    uint64_t* bits;  ///< of the first 512 columns: a word a row
    int words;       ///< to the right
    int step;        ///< words from those of one row to the ones right of them

    uint64_t& at(int word, int row) const { return bits[static_cast<ptrdiff_t>(word) * step + row]; }
};

/// Rows of words, one after the other.
struct NarrowLines {
    uint16_t* samples;
    ptrdiff_t stride;
};

/// Rows one below the other, unit by unit: the rows of a unit are neighbours in memory.
struct NarrowWindow {
    uint16_t* samples;
    ptrdiff_t unitStep;  ///< words from one unit to the next
};

/// A pass over a strip: the bell's place among the narrow ones, and the sum of nothing but zeros, which is 0 or, to
/// round up, one less than the weight sum.
struct NarrowPass {
    int bell;
    int32_t emptySum;
    NarrowMarks units;  ///< to be made
    int rows;           ///< to be made, kNarrowRows at most
};

struct NarrowKernels {
    const char* name;

    /// Marks the halves of units that hold a sample other than 0.
    /// @param src  rows of kNarrowWordColumns samples a word of marks.
    void (*findInk)(ConstPlane8 src, NarrowMarks marks);

    // The marked units of rows, widened to words.
    void (*widenToLines)(ConstPlane8 src, NarrowMarks units, NarrowLines to);
    void (*widenToWindow)(ConstPlane8 src, NarrowMarks units, NarrowWindow to);

    // The horizontal pass over rows of which as many words as the radius are read on both sides of a unit.
    void (*linesToBytes)(const NarrowPass& pass, NarrowLines lines, uint8_t* out, ptrdiff_t stride);
    void (*linesToWindow)(const NarrowPass& pass, NarrowLines lines, NarrowWindow to);

    // The vertical pass over a window that begins with the first row under the bell of the first output.
    void (*columnsToBytes)(const NarrowPass& pass, NarrowWindow window, uint8_t* out, ptrdiff_t stride);
    void (*columnsToLines)(const NarrowPass& pass, NarrowWindow window, NarrowLines to);
};

const NarrowKernels& narrowKernelsPortable();
/// Null where the program was not built for AVX2 or the processor has none.
const NarrowKernels* narrowKernelsAvx2();
const NarrowKernels& narrowKernels();

}  // namespace QxFontEffect
