#pragma once

#include <cstdint>

#include "effect/kernel/gauss_weights.h"
#include "pixel/plane.h"

namespace QxFontEffect {

/// Part of a plane that a blur writes; the far edges lie outside.
struct GaussRange {
    int xStart;
    int xEnd;
    int yStart;
    int yEnd;
};

/// Bytes of scratch that `gaussBlurPlane8` wants, in 64 bits because a job may want more than there is.
int64_t gaussScratchBytes(const GaussBell& bell, int width, int height);

/// Blurs a part of an 8-bit plane with one integer bell, columns first, then rows.
///
/// Both divisions by the weight sum truncate; rounding would change the pixels. The result of the vertical pass is a
/// byte, and it is 0 left of `range.xStart` and from `range.xEnd` on: the horizontal pass sees nothing but the columns
/// that the range computes. With radius 0 the part is copied.
///
/// @param src      W x H samples; those outside the plane count as 0.
/// @param range    within 0..W, 0..H; an empty one writes nothing.
/// @param scratch  gaussScratchBytes(bell, W, H) bytes, contents undefined before and after.
/// @param dst      W x H, must not overlap src. Pixels outside the range are left as they were.
///
/// Glows look their colour up instead of storing a grey, the inner glow truncates towards white, and the inner shadow
/// runs rows first: they use the passes of gauss_rows.h beneath this function.
void gaussBlurPlane8(ConstPlane8 src, const GaussBell& bell, GaussRange range, uint8_t* scratch, Plane8 dst);

}  // namespace QxFontEffect
