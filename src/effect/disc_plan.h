#pragma once

#include <algorithm>
#include <cstdint>

#include "base/Scratch.h"
#include "effect/kernel/disc_dilate_solid.h"

namespace QxFontEffect {

/// Columns x0..x1 - 1 and rows y0..y1 - 1 of the result, counted from the area's top-left pixel; they may lie outside
/// it.
struct DilateRange {
    int64_t x0, y0, x1, y1;
};

/// Whether there is a part and its places can be counted, which they can in any picture.
bool canDilate(int areaWidth, int areaHeight, const DilateRange& out);

/// Blocks that hold so many columns, and their width.
inline int64_t blocksOf(int64_t columns) {
    return (columns + kDilateBlock - 1) / kDilateBlock;
}
inline int64_t wholeBlocks(int64_t columns) {
    return blocksOf(columns) * kDilateBlock;
}

/// Units that hold so many columns.
inline int inkUnitsOf(int columns) {
    return (columns + kInkUnit - 1) / kInkUnit;
}

/// A disc made ready for an area and the wanted part of the result: its rows as runs and rims, without the cells that
/// are too far out to connect the two.
///
/// The part is done in tiles of `tileWidth` columns, one after the other, since the work on a tile keeps all source
/// rows that a row of output sees: narrow tiles keep that within the processor's cache and the memory it may take.
class DiscPlan {
public:
    /// @param budget  bytes that the source rows of one dilation should stay within; a narrow tile may take more.
    DiscPlan(float radius, int areaWidth, int areaHeight, const DilateRange& out, int64_t budget);

    /// False where there is no disc, no memory, or no part.
    explicit operator bool() const { return mRows && mSides && mTaps && mEdges; }

    /// A multiple of kDilateBlock.
    int tileWidth() const { return mShape.tileWidth; }

private:
    friend class DiscDilation;

    struct Shape {
        int rows;       // of the disc from its centre on; -1 without a disc
        int maxDx;      // cells that matter, on each side of the centre
        int maxBlocks;  // the same in blocks, rounded up
        int tileWidth;
        int spanBlocks;  // source blocks that a tile sees, at most
        int ringRows;    // source rows that an output row sees, at most
        int tables;
        int covered[3];      // samples behind the maxima of each table; the first holds the samples themselves
        int64_t tableAt[3];  // place of column 0 in a source row
        int64_t rowStride;

        int64_t ringBytes() const { return ringRows * rowStride; }
        int64_t tableBytes() const { return int64_t{tables} * spanBlocks * kDilateBlock; }
        int64_t tableFrom(int table) const { return tableAt[table] - tableAt[0]; }
        int nextCovered(int table) const { return table + 1 < tables ? covered[table + 1] : 0; }
        int zerosBehind(int table) const { return std::max(kDilateBlock, nextCovered(table)); }
    };

    static Shape shapeOf(float radius, int areaWidth, int areaHeight, const DilateRange& out, int64_t budget);
    static void chooseTables(Shape& shape);
    static void layOut(Shape& shape, int areaWidth, int64_t tileWidth);
    int64_t sidesStride() const { return 2 * int64_t{mShape.rows} - 1 + kRowsTogether - 1; }
    int64_t findRuns(float radius);
    int64_t edgeCells() const;
    void makeRows(float radius);
    static void makeEdges(DiscRow& disc, uint8_t* cells);
    void listSides();
    int tableFor(int length) const;

    const Shape mShape;
    Scratch<DiscRow> mRows;
    Scratch<int32_t> mSides;  // of the whole disc's rows from the topmost on, see SolidLine: run, then reach
    Scratch<DiscTap> mTaps;
    Scratch<uint8_t> mEdges;  // both edges of each row
};

}  // namespace QxFontEffect
