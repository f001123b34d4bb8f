#pragma once

#include <cstdint>

#include "effect/kernel/gauss.h"
#include "effect/kernel/gauss_weights.h"
#include "pixel/plane.h"

namespace QxFontEffect {

/// Which way the division by the weight sum goes. A blur of the complement is the complement of a blur that rounds
/// the other way, trunc((255 * sum - S) / sum) = 255 - ceil(S / sum): effects that blur what the glyphs leave free
/// blur the coverage, round up, and need no plane of 255s around it.
enum class GaussRounding { Down, Up };

/// The vertical pass of a blur, a few rows at a time from top to bottom.
class GaussColumns {
public:
    /// Bytes of scratch for planes of `width` columns, in 64 bits because a job may want more than there is.
    static int64_t scratchBytes(int width);

    /// @param src      samples above and below it count as 0.
    /// @param bell     used while the object lives, like src and scratch.
    /// @param yStart   first row to be taken; may lie outside the plane.
    /// @param scratch  scratchBytes(src.width) bytes, contents undefined before and after.
    GaussColumns(ConstPlane8 src, const GaussBell& bell, GaussRounding rounding, int yStart, uint8_t* scratch);

    /// Writes the next `dst.height` rows. @param dst  as wide as src, must not overlap it.
    void next(Plane8 dst);

private:
    ConstPlane8 mSrc;
    const GaussBell& mBell;
    GaussRounding mRounding;
    int mRow;
};

/// Bytes of scratch that `gaussRow8` wants.
int64_t gaussRowScratchBytes(const GaussBell& bell, int width, int count);

/// The horizontal pass of one row: dst[i] is the blur at column xStart + i.
///
/// @param row      `width` samples; those left and right of them count as 0.
/// @param count    columns wanted; any of them may lie outside the row.
/// @param scratch  gaussRowScratchBytes(bell, width, count) bytes, contents undefined before and after.
/// @param dst      `count` samples, must not overlap the others.
void gaussRow8(const uint8_t* row, int width, const GaussBell& bell, GaussRounding rounding, int xStart, int count,
               uint8_t* scratch, uint8_t* dst);

/// Both passes over a plane and its surroundings, columns first.
struct GaussJob {
    ConstPlane8 src;  ///< samples outside it count as 0
    const GaussBell* bell;
    GaussRange out;         ///< wanted part in the coordinates of src; may reach beyond it
    GaussRounding columns;  ///< of the vertical pass
    GaussRounding rows;     ///< of the horizontal pass
};

/// Runs a job, a few rows at a time, so that nobody needs memory for the whole result.
class GaussRows {
public:
    static int64_t scratchBytes(const GaussJob& job);

    /// @param scratch  scratchBytes(job) bytes, used while the object lives.
    GaussRows(const GaussJob& job, uint8_t* scratch);

    /// Writes the next rows of the wanted part, at most `dst.height` of them, and returns their number: 0 at the end.
    /// @param dst  as wide as the part, must not overlap source or scratch.
    int next(Plane8 dst);

private:
    GaussJob mJob;
    uint8_t* mLine;
    uint8_t* mRowScratch;
    GaussColumns mColumns;
    int mLeft;
};

}  // namespace QxFontEffect
