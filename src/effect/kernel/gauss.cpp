#include "effect/kernel/gauss.h"

#include <algorithm>

#include "effect/kernel/gauss_rows.h"

namespace QxFontEffect {
namespace {

/// The columns that the range computes: those beside them are 0 to the horizontal pass.
GaussJob jobOf(ConstPlane8 src, const GaussBell& bell, GaussRange range) {
    const int width = std::max(range.xEnd - range.xStart, 0);
    const ConstPlane8 columns = {src.data + range.xStart, width, src.height, src.stride};
    const GaussRange out = {0, width, range.yStart, range.yEnd};
    return {columns, &bell, out, GaussRounding::Down, GaussRounding::Down};
}

}  // namespace

int64_t gaussScratchBytes(const GaussBell& bell, int width, int height) {
    const ConstPlane8 plane = {nullptr, std::max(width, 0), std::max(height, 0), 0};
    return GaussRows::scratchBytes(jobOf(plane, bell, {0, plane.width, 0, plane.height}));
}

void gaussBlurPlane8(ConstPlane8 src, const GaussBell& bell, GaussRange range, uint8_t* scratch, Plane8 dst) {
    const int width = range.xEnd - range.xStart;
    if (width <= 0 || range.yStart >= range.yEnd) return;
    GaussRows rows(jobOf(src, bell, range), scratch);
    uint8_t* out = dst.row(range.yStart) + range.xStart;
    while (const int taken = rows.next(out, dst.stride)) out += taken * dst.stride;
}

}  // namespace QxFontEffect
