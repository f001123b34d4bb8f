#pragma once

#include <cstdint>

#include "base/Scratch.h"
#include "effect/disc_dilation.h"
#include "effect/kernel/disc_dilate_small.h"

namespace QxFontEffect {

/// A disc of a few pixels made ready for an area and the wanted part of the result. Like `DiscPlan`, in tiles as well.
class SmallDiscPlan {
public:
    /// Whether there is such a disc and it is small.
    static bool suits(float radius);

    /// @param radius  one that suits.
    SmallDiscPlan(float radius, int areaWidth, int areaHeight, const DilateRange& out);

    /// False where there is no part.
    explicit operator bool() const { return mTileWidth > 0; }

    /// A multiple of kSmallUnit.
    int tileWidth() const { return mTileWidth; }

private:
    friend class SmallDiscDilation;

    SmallDisc mDisc;
    int mTileWidth = 0;
    int mRingRows;  // source rows that an output row sees, at most
};

/// Grey dilation of an area by a small disc: what `DiscDilation` gives for the coverage or for its complement, or the
/// lesser of both.
class SmallDiscDilation {
public:
    /// @param area  its `complement` is not looked at.
    SmallDiscDilation(const SmallDiscPlan& plan, const DilateArea& area, SmallSource source,
                      const DilateKernels& kernels = dilateKernels());

    explicit operator bool() const { return mRing && mClosedRow && mInside && mMarks && mWork && mColumnRows; }

    /// Begins a tile of at most `tileWidth` columns from x0 on, above output row y0.
    void start(int64_t x0, int64_t x1, int64_t y0);

    /// The next row of the tile.
    ///
    /// @param dst  as many samples as the tile has columns, rounded up to kSmallUnit, written.
    /// @return the part of the row outside of which it is blank.
    DilatedPart nextRow(uint8_t* dst);

private:
    void enterRow(int row);
    size_t inSource(int64_t column) const;
    uint8_t* samplesIn(int64_t slot) { return mRing.data() + slot * mStride; }
    uint8_t* marksIn(int64_t slot) { return mMarks.data() + slot * mMarkStride; }

    const SmallDiscPlan& mPlan;
    const DilateArea mArea;
    const SmallSource mSource;
    const DilateKernels& mKernels;
    const int mSourceUnits;  // of a tile
    const int mStride;       // of its samples
    const int mMarkStride;
    int mColumns = 0;
    int64_t mLeft = 0;               // area column of the source's first
    int64_t mY = 0;                  // of the next row
    int mEntered = 0, mLeaving = 0;  // source rows mLeaving..mEntered - 1 reach the current output row
    // The last row of samples and of marks is blank and stands for all rows beside the area; so does a row of 255.
    Scratch<uint8_t> mRing;
    Scratch<uint8_t> mClosedRow;
    Scratch<uint8_t> mInside;
    Scratch<uint8_t> mMarks;
    Scratch<uint8_t> mWork;
    Scratch<uint8_t> mColumnRows;
};

}  // namespace QxFontEffect
