#pragma once

#include <cstddef>
#include <cstdint>

namespace QxFontEffect {

/// The inner loops of the distance maps, once per instruction set, behind one table. All of them work on single rows.
///
/// Two maps are made with them. The exact one is a Euclidean distance transform in two steps: distances along the
/// columns, as run lengths in bytes, then for each pixel the least of run^2 + dx^2 along its row, as far as the band
/// goes. The local one spreads the places of the outline within its pixels, row by row, with a table of rounded roots.
constexpr int kDistanceBlock = 32;

/// The largest band of the exact map: twice its square fits 16 bits, and the runs fit a byte.
constexpr int kMaxSearchRadius = 178;

/// A place of the outline that distances are measured from.
struct OutlineSource {
    int32_t x;
    float offset;  ///< of the pixel's centre from the outline, 0 up to 1
};

/// Rows of a map that sources of one row are spread over, and how far along each of them.
struct ScatterRow {
    float* distances;    ///< at column 0; readable and writable for kDistanceBlock beyond the width
    const float* roots;  ///< of squared distances to the sources' row, from far enough left to far enough right
    int32_t reach;       ///< columns to either side
};

/// A piece of the outline, relative to its pixel so that pictures do not depend on where in the map it lies: the unit
/// normal, how far along it from the pixel's centre the piece runs, and half its length.
struct OutlinePiece {
    int32_t x, y;
    float nx, ny;
    float place;
    float halfLength;
};

/// How the pixels that lie on the outline are told from the rest, from coverage or its complement.
enum class OutlineRule {
    BesideLess,  ///< any coverage, but no full pixel among full pixels
    BesideNone   ///< partial coverage, and full pixels beside one without any
};

struct DistanceKernels {
    const char* name;

    /// Runs of one row from those of the row before: 0 on a seed, else one more, up to 255. Seeds are the pixels with
    /// coverage or, for `inside`, those without; a null row of coverage has none of the first kind.
    void (*growRuns)(const uint8_t* coverage, bool inside, int count, const uint8_t* before, uint8_t* runs);

    /// runs[i] = min(runs[i], after[i] + 1).
    void (*joinRuns)(const uint8_t* after, int count, uint8_t* runs);

    /// Squares of runs up to `radius`, radius^2 + 1 for longer ones.
    void (*squareRuns)(const uint8_t* runs, int count, int radius, uint16_t* squares);

    /// The least square of each of `count` blocks.
    void (*leastOfBlocks)(const uint16_t* squares, int count, uint16_t* least);

    /// Distances along a row of squares: the fast root of the least square + dx^2, `radius` for what lies beyond it.
    ///
    /// @param squares  at column 0; readable for `reach` blocks to either side of the row's blocks, with reach =
    ///                 radius / kDistanceBlock rounded up.
    /// @param least    leastOfBlocks, at block 0; readable as far.
    /// @param blocks   blocks of the row; dst is written in whole blocks.
    void (*searchRow)(const uint16_t* squares, const uint16_t* least, int blocks, int radius, float* dst);

    /// Distances before anything is spread: 0 for full coverage, 1 - coverage where it is partial, `far` for none.
    void (*startRow)(const uint8_t* coverage, bool complement, int count, float far, float* dst);

    /// marks[i] is not 0 where a pixel lies on the outline. Rows are coverage, readable one pixel to either side.
    void (*markOutline)(const uint8_t* above, const uint8_t* here, const uint8_t* below, int count, bool complement,
                        OutlineRule rule, uint8_t* marks);

    /// Lowers a block of distances to those from `count` sources of one row, and returns the largest of the block.
    /// @param roots  of the squared distances to this row: roots[dx], dx from far enough left to far enough right.
    /// @param x      the block's first column.
    float (*spreadSources)(const OutlineSource* sources, int count, const float* roots, int x, float* block);

    /// Lowers distances to those from `count` sources, over all rows. @param width  columns of the rows.
    void (*scatterSources)(const OutlineSource* sources, int count, const ScatterRow* rows, int rowCount, int width);

    /// spreadSources with squared distances to pieces of the outline. @param y  the block's row.
    float (*spreadPieces)(const OutlinePiece* pieces, int count, int x, int y, float* block);

    float (*largest)(const float* block);

    /// Heights of a band that straddles the outline: the squared distance's root, negative where coverage is more than
    /// half, limited to `half` on both sides and counted from the inner end. Rows of whole blocks, in place.
    void (*bandHeights)(const uint8_t* coverage, int blocks, float half, float* heights);
};

/// What every processor runs.
const DistanceKernels& distanceKernelsPortable();
/// Null where the program was not built for AVX2 or the processor has none.
const DistanceKernels* distanceKernelsAvx2();
/// The fastest of them here.
const DistanceKernels& distanceKernels();

}  // namespace QxFontEffect
