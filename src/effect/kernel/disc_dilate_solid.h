#pragma once

#include <cstddef>
#include <cstdint>

#include "effect/kernel/disc_dilate_kernels.h"

/// The short way of the grey dilation: source rows that the disc fills from end to end.
///
/// Where no stretch of a source row between two full samples is longer than twice the disc's run, the dilated row is
/// 255 from its first full sample less the run to its last one plus the run. What is left of it are its two edges, a
/// few columns each, which depend on the samples at the row's ends alone: weights fall with the distance, so that for a
/// column beyond the first full sample nothing behind that one counts. Such rows are solid. Those of them that have a
/// column in common make one full stretch, which is nearly all of what a wide disc leaves.
namespace QxFontEffect {

/// Where a source row has ink, in columns of the span.
struct InkExtent {
    int32_t inkBegin;
    int32_t inkEnd;
    int32_t fullBegin;  ///< of the samples of 255
    int32_t fullEnd;
    /// The longest stretch within the ink, ends included, that has no sample of 255; or kNeverSolid, and then what is
    /// said of the full samples need not hold.
    int32_t gap;
};

/// Beyond all columns, and small enough to be added up.
constexpr int32_t kBeyondColumns = int32_t{1} << 29;
constexpr int32_t kNeverSolid = 2 * kBeyondColumns;
constexpr InkExtent kBlankExtent = {kBeyondColumns, -kBeyondColumns, kBeyondColumns, -kBeyondColumns, kNeverSolid};

/// Samples in front of the first full one of a solid row, and behind its last, at most.
constexpr int kEdgeSamples = 7;

/// Columns of an edge that are done at once.
constexpr int kEdgeColumns = 32;

/// Cells kept on both sides of a rim. The columns done at once and an edge's samples may lie as far beside it: a step
/// begins before its edge where it would reach beyond the output, and runs on into the full part.
constexpr int kEdgeMargin = kEdgeColumns + kEdgeSamples + 1;

/// Source rows looked at together, at most. The arrays of a SolidLine are readable for so many more, less one.
constexpr int kRowsTogether = 8;

/// The edges of a row.
constexpr int kLeftEdge = 1, kRightEdge = 2;

/// Where the edges are held that the row above covers, having no less in their columns, and those that the row below
/// does: what comes from that side need not come from this row as well.
constexpr int kByAbove = 0, kByBelow = 2;

/// One row of output, and the source rows in reach from the topmost on.
struct SolidLine {
    /// The members of InkExtent; kBlankExtent behind the last row.
    const int32_t* inkBegin;
    const int32_t* inkEnd;
    const int32_t* fullBegin;
    const int32_t* fullEnd;
    const int32_t* gap;
    const int32_t* covers;  ///< edges from kByAbove and from kByBelow on

    /// Of the disc's rows that are laid on them, columns on each side of the centre: of full weight, and of any.
    /// -kBeyondColumns without such columns and behind the disc's last row.
    const int32_t* run;
    const int32_t* reach;

    int rowCount;
    int centre;               ///< the row at the output's own height; may lie above the first or below the last
    const DiscRow* discRows;  ///< from the centre on

    const uint8_t* samples;  ///< of the rows' ring, under column 0
    ptrdiff_t sampleStride;
    int slots;  ///< rows of the ring
    int slot;   ///< of the topmost row

    int firstColumn;  ///< of the output, in the span
    int columns;      ///< of the output, whole blocks
    bool anySolid;    ///< whether a row can be
    int pivot;        ///< a column of the span that most rows are likely to fill: those that do are joined
};

struct SolidResult {
    DilatedPart part;  ///< the rest of the row is blank
    bool solid;        ///< whether rows were joined; else all are left to be gathered
    DilatedPart full;  ///< 255
    bool open;         ///< whether there are rows left to be gathered
    int pivot;         ///< for the next row of output
};

}  // namespace QxFontEffect
