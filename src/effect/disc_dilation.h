#pragma once

#include <cstdint>

#include "base/Scratch.h"
#include "effect/disc_dilation_extents.h"
#include "effect/disc_plan.h"
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

/// Grey dilation of an area by a disc: out = max over the disc's cells of max(sample - (255 - weight), 0).
///
/// Gives the result row by row; the plan and the area's coverage must outlive it.
class DiscDilation {
public:
    DiscDilation(const DiscPlan& plan, const DilateArea& area, const DilateKernels& kernels = dilateKernels());

    explicit operator bool() const { return mRing && mInk && mInkInReach && mInked && mRows && mExtents && mOpen; }

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
    void noteCovers(int row, const InkExtent& extent);
    void addInked(int row, const DilateSource& source);
    void leaveRow(int row);
    void countInk(int slot, uint32_t sign);
    SolidLine solidLine(int64_t y) const;
    void listRows(int64_t row, bool openOnly, DilateLine& line);
    void gatherOpen(int64_t y, const SolidResult& joined, const uint8_t* limit, uint8_t* dst);
    const InkedRow& firstInked() const { return mInked[static_cast<size_t>(mInkedBegin)]; }
    const InkedRow& lastInked() const { return mInked[static_cast<size_t>(mInkedEnd - 1)]; }
    bool isOpen(const InkedRow& row) const { return mOpen[static_cast<size_t>(row.row - firstInked().row)] != 0; }
    uint8_t* samplesIn(int slot);
    uint32_t* inkIn(int slot);
    void fillSamples(int row, uint8_t* samples) const;

    const DiscPlan& mPlan;
    const DiscPlan::Shape& mShape;
    DilateArea mArea;
    const DilateKernels& mKernels;
    int mInkMargin;  // units beside the span that the ink counts are kept for
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
    Scratch<uint32_t> mInk;         // for each ring row: inked units left of a unit
    Scratch<uint32_t> mInkInReach;  // the same summed over the rows in reach
    Scratch<InkedRow> mInked;       // those of the ring, from the top, at mInkedBegin..mInkedEnd - 1
    Scratch<DilateRow> mRows;
    InkExtents mExtents;
    InkExtent mLastEntered = kBlankExtent;
    Scratch<int32_t> mOpen;  // for the rows from the first inked one in reach on: whether they are to be gathered
    int mPivot = 0;          // see SolidLine
};

}  // namespace QxFontEffect
