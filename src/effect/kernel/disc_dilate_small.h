#pragma once

#include <cstddef>
#include <cstdint>

#include "effect/kernel/disc_dilate_kernels.h"

namespace QxFontEffect {

/// The grey dilation by a small disc, column by column of the disc.
///
/// A disc is the same above and below its centre, and left and right of it. So the source rows at the same distance
/// are joined first; out of these pairs comes, for each distance d of a column of the disc, what that column makes of
/// the samples above and below. The result is the maximum over all d of those, d columns to the left and to the right.
/// The work does not depend on the samples.
///
/// Outputs are counted in units of kSmallUnit. Units that see no ink, or whose own samples are full, are left out.
constexpr int kSmallUnit = 32;

/// Largest number of cells on each side of the centre: the loops over the cells are unrolled for each number up to it.
constexpr int kMaxSmallReach = 10;

struct SmallDisc {
    int reach = 0;  ///< cells on each side of the centre
    /// What the cell of a column and a row, both from the centre, takes off a vector of samples: 255 - weight.
    alignas(kSmallUnit) uint8_t loss[kMaxSmallReach + 1][kMaxSmallReach + 1][kSmallUnit];
};

/// What spreads: the samples, their complement inside the area, or both, with the lesser of the two results.
enum class SmallSource { Ink, Complement, Both };

/// What is known of a unit of a source row: whether it has ink, or for the complement anything but ink, at all and in
/// as many of its first and last columns as the disc reaches, where that is kSmallEdge at most. For both sources these
/// are the samples' own marks.
constexpr uint8_t kInkMark = 1, kFirstMark = 2, kLastMark = 4;
constexpr int kSmallEdge = 8;

/// Units that a source row has more than the output, on the left and on the right.
constexpr int kUnitsBefore = 1, kUnitsBehind = 2;

/// Bytes that are readable and writable behind the marks of a row.
constexpr int kMarkSlack = 64;

/// One row of output. Source rows are those from `reach` above to `reach` below it, all of them readable from
/// kUnitsBefore in front of the output's first column on.
struct SmallLine {
    const SmallDisc* disc;
    SmallSource source;
    const uint8_t* const* rows;    ///< 0 outside the area
    const uint8_t* const* closed;  ///< the same with rows of 255 for those outside the area, for the complement
    const uint8_t* const* marks;   ///< of the rows
    const uint8_t* inside;         ///< 255 for columns inside the area, else 0
    int units;                     ///< of the output
    uint8_t* columns;              ///< working memory: reach + 1 rows for each source that spreads
    ptrdiff_t columnStride;
    uint8_t* near;  ///< working memory for the marks of all rows together
    uint8_t* open;  ///< the same for units that need work
};

}  // namespace QxFontEffect
