#pragma once

#include <cstddef>
#include <cstdint>

namespace QxFontEffect {

/// The inner loops of the grey dilation by a disc, once per instruction set, behind one table.
///
/// A dilation distributes over the maximum, so each row of the disc is dilated on its own and the rows are joined. In
/// a row the cells of full weight are one run around the centre: their part is a running maximum, read from tables of
/// maxima over 1, 2, 4, ... samples by a few overlapping loads. What is left is the rim: cells that take a loss off
/// the sample, in pairs left and right of the centre and above and below it.
///
/// Samples and outputs are counted in blocks of kDilateBlock, both from the same column on.
constexpr int kDilateBlock = 64;

/// Columns for which it is known whether a source row has ink in them.
constexpr int kInkUnit = 32;
constexpr int kUnitsInBlock = kDilateBlock / kInkUnit;

/// A source row: its samples under column 0, and for each unit the inked units left of it. Samples are 0 and readable
/// for a block's width and a maximum's beside the span; ink counts are readable as far as the disc reaches beyond the
/// output, which may lie beside the span.
struct DilateSource {
    const uint8_t* samples;
    const uint32_t* inkBefore;
};

/// Two rim cells, `dx` columns left and right of the centre.
struct DiscTap {
    int32_t dx;
    int32_t loss;  ///< 255 - weight
};

/// One row of a disc. Its run of full weight is `covered` by maxima of one table: from `first` on, columns from the
/// centre, at every other `covered` and at `last`.
struct DiscRow {
    int32_t first;
    int32_t last;
    int32_t covered;  ///< 0 without a run
    ptrdiff_t table;  ///< from a source row's samples to the maxima
    const DiscTap* taps;
    int32_t tapCount;
    const uint8_t* leftEdge;   ///< weights from kEdgeMargin columns before the rim to as many behind it
    const uint8_t* rightEdge;  ///< the same of the right-hand rim; both null without a run
    int32_t runUnits;          ///< to the run's end, rounded up
    int32_t rimUnits;          ///< to the last tap, rounded up
};

/// A row of the disc, and the source rows above and below the output row that it is laid on; null for one that has no
/// ink or does not exist.
struct DilateRow {
    const DilateSource* above;
    const DilateSource* below;
    const DiscRow* disc;
};

/// A part of a row of output, in its columns; empty where begin == end.
struct DilatedPart {
    int begin;
    int end;
};

/// One row of output.
struct DilateLine {
    const DilateRow* rows;  ///< nearest source rows first
    int rowCount;
    DilatedPart full;           ///< of the output, 255 already
    const uint32_t* inkBefore;  ///< of all source rows together
    int reach;                  ///< columns that the whole disc reaches to each side
    int inkUnits;               ///< the same in units, rounded up
    int width;                  ///< of the span
    int firstBlock;             ///< of the output
    int blockCount;
    const uint8_t* limit;  ///< null, or what the output is limited to; no work is spent where it is 0
};

struct InkExtent;
struct SolidLine;
struct SolidResult;
struct SmallLine;
enum class SmallSource;

struct DilateKernels {
    const char* name;

    /// to[i] = from[i], or 255 - from[i] for the complement.
    void (*copy)(const uint8_t* from, int count, bool complement, uint8_t* to);

    /// inkBefore[i] = units among the first i that have a sample above 0, for all of `count` blocks and one more.
    /// @param widestGap  rows with a longer gap are never solid.
    void (*measureInk)(const uint8_t* samples, int count, int widestGap, uint32_t* inkBefore, InkExtent* extent);

    /// to[i] = maximum of from[i + k * step], k = 0 .. parts - 1. `count` is rounded up to blocks; reads and writes
    /// that much.
    void (*runMaxima)(const uint8_t* from, int step, int parts, int count, uint8_t* to);

    /// Writes a row of output as far as solid rows make it; see disc_dilate_solid.h.
    /// @param open  for each row: not 0 where it has to be gathered; room for kRowsTogether - 1 more. Not written
    ///              where nothing is solid.
    SolidResult (*joinSolid)(const SolidLine& line, int32_t* open, uint8_t* out);

    /// Raises `blockCount` blocks by the rows of the line, up to its limit at least.
    void (*gather)(const DilateLine& line, uint8_t* out);

    /// Lowers samples to the limit. `count` is rounded up to blocks.
    void (*lower)(const uint8_t* limit, int count, uint8_t* samples);

    /// The marks of the units of a source row; see disc_dilate_small.h.
    void (*markSmall)(SmallSource source, const uint8_t* samples, const uint8_t* inside, int units, int reach,
                      uint8_t* marks);

    /// Writes all units of the line.
    DilatedPart (*gatherSmall)(const SmallLine& line, uint8_t* out);
};

/// What every processor runs.
const DilateKernels& dilateKernelsPortable();
/// Null where the program was not built for AVX2 or the processor has none.
const DilateKernels* dilateKernelsAvx2();
/// The fastest of them here.
const DilateKernels& dilateKernels();

}  // namespace QxFontEffect
