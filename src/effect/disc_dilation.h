#pragma once

#include <cstdint>

#include "base/Scratch.h"
#include "effect/kernel/disc_dilate_kernels.h"
#include "pixel/plane.h"

namespace QxFontEffect {

/// What is dilated: a blank area with coverage somewhere in it, or the area's complement. Nothing outside the area
/// spreads.
struct DilateArea {
    ConstPlane8 ink;
    int inkX, inkY;  ///< of the coverage, in the area
    int width, height;
    bool complement;
};

/// Columns x0..x1 - 1 and rows y0..y1 - 1 of the result, counted from the area's top-left pixel; they may lie outside
/// it.
struct DilateRange {
    int64_t x0, y0, x1, y1;
};

/// Whether there is a part and its places can be counted, which they can in any picture.
bool canDilate(int areaWidth, int areaHeight, const DilateRange& out);

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
    explicit operator bool() const { return mRows && mTaps; }

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
        int covered[3];  // samples behind the maxima of each table; the first holds the samples themselves
        int margin;      // zeros on both sides of a table
        int64_t tableStride;

        int64_t ringBytes() const { return int64_t{ringRows} * tables * tableStride; }
    };

    static Shape shapeOf(float radius, int areaWidth, int areaHeight, const DilateRange& out, int64_t budget);
    static void chooseTables(Shape& shape);
    static void layOut(Shape& shape, int areaWidth, int64_t tileWidth);
    int64_t findRuns(float radius);
    void makeRows(float radius);
    int tableFor(int length) const;

    const Shape mShape;
    Scratch<DiscRow> mRows;
    Scratch<DiscTap> mTaps;
};

/// Grey dilation of an area by a disc: out = max over the disc's cells of max(sample - (255 - weight), 0).
///
/// Gives the result row by row; the plan and the area's coverage must outlive it.
class DiscDilation {
public:
    DiscDilation(const DiscPlan& plan, const DilateArea& area, const DilateKernels& kernels = dilateKernels());

    explicit operator bool() const { return mRing && mInk && mInkInReach && mInked && mRows; }

    /// Begins a tile of at most `tileWidth` columns from x0 on, above output row y0.
    void start(int64_t x0, int64_t x1, int64_t y0);

    /// The next row of the tile.
    ///
    /// @param limit  null, or a row that limits the result: dst is the lesser of both, and no work is spent where the
    ///               limit is 0. As long as dst.
    /// @param dst    as many samples as the tile has columns, rounded up to kDilateBlock, written.
    /// @return the part of the row outside of which it is blank.
    DilatedPart nextRow(const uint8_t* limit, uint8_t* dst);

private:
    // A source row with ink.
    struct InkedRow {
        DilateSource source;
        int row;
    };

    void enterRow(int row);
    void addInked(int row, const DilateSource& source);
    void leaveRow(int row);
    void countInk(int slot, uint32_t sign);
    void listRows(DilateLine& line);
    uint8_t* samplesIn(int slot);
    uint32_t* inkIn(int slot);
    void fillSamples(int row, uint8_t* samples) const;

    const DiscPlan& mPlan;
    const DiscPlan::Shape& mShape;
    DilateArea mArea;
    const DilateKernels& mKernels;
    int mInkMargin;  // blocks beside the span that the ink counts are kept for
    int mInkStride;
    int mColumns = 0;
    int64_t mY = 0;                  // of the next row
    int64_t mSpanLeft = 0;           // area column of the span's first; whole blocks away from the tile's first
    int mSpan = 0, mBlocks = 0;      // the span's columns and blocks
    int mFirstBlock = 0;             // of the tile, in the span
    int mEntered = 0, mLeaving = 0;  // source rows mLeaving..mEntered - 1 reach the current output row
    int mInkedBegin = 0, mInkedEnd = 0;
    int mInkedBelow = 0;  // first inked row below the output row
    Scratch<uint8_t> mRing;
    Scratch<uint32_t> mInk;         // for each ring row: inked blocks left of a block
    Scratch<uint32_t> mInkInReach;  // the same summed over the rows in reach
    Scratch<InkedRow> mInked;       // those of the ring, from the top, at mInkedBegin..mInkedEnd - 1
    Scratch<DilateRow> mRows;
};

}  // namespace QxFontEffect
