#include "effect/kernel/gauss_rows.h"

#include <algorithm>

namespace QxFontEffect {
namespace {

/// The bell at position `at` of `count` samples that lie `step` apart, 0 on both sides of them.
uint8_t bellAt(const uint8_t* samples, ptrdiff_t step, int count, int64_t at, const GaussBell& bell,
               GaussRounding rounding) {
    int64_t total = 0;
    for (int b = 0; b < bell.boxCount; ++b) {
        const int64_t first = std::max<int64_t>(at - bell.boxes[b].reach, 0);
        const int64_t last = std::min<int64_t>(at + bell.boxes[b].reach, count - 1);
        int64_t box = 0;
        for (int64_t i = first; i <= last; ++i) box += samples[i * step];
        total += bell.boxes[b].height * box;
    }
    return static_cast<uint8_t>((rounding == GaussRounding::Up ? total + bell.sum - 1 : total) / bell.sum);
}

}  // namespace

int64_t GaussColumns::scratchBytes(int) {
    return 0;
}

GaussColumns::GaussColumns(ConstPlane8 src, const GaussBell& bell, GaussRounding rounding, int yStart, uint8_t*)
    : mSrc(src), mBell(bell), mRounding(rounding), mRow(yStart) {}

void GaussColumns::next(Plane8 dst) {
    for (int y = 0; y < dst.height; ++y, ++mRow)
        for (int x = 0; x < mSrc.width; ++x)
            dst.row(y)[x] = bellAt(mSrc.data + x, mSrc.stride, mSrc.height, mRow, mBell, mRounding);
}

int64_t gaussRowScratchBytes(const GaussBell&, int, int) {
    return 0;
}

void gaussRow8(const uint8_t* row, int width, const GaussBell& bell, GaussRounding rounding, int xStart, int count,
               uint8_t*, uint8_t* dst) {
    for (int i = 0; i < count; ++i) dst[i] = bellAt(row, 1, width, int64_t{xStart} + i, bell, rounding);
}

int64_t GaussRows::scratchBytes(const GaussJob& job) {
    return job.src.width + GaussColumns::scratchBytes(job.src.width) +
           gaussRowScratchBytes(*job.bell, job.src.width, job.out.xEnd - job.out.xStart);
}

GaussRows::GaussRows(const GaussJob& job, uint8_t* scratch)
    : mJob(job),
      mLine(scratch),
      mRowScratch(mLine + job.src.width),
      mColumns(job.src, *job.bell, job.columns, job.out.yStart, mRowScratch),
      mLeft(job.out.yEnd - job.out.yStart) {}

int GaussRows::next(Plane8 dst) {
    const int rows = std::max(std::min(mLeft, dst.height), 0);
    for (int y = 0; y < rows; ++y) {
        mColumns.next({mLine, mJob.src.width, 1, mJob.src.width});
        gaussRow8(mLine, mJob.src.width, *mJob.bell, mJob.rows, mJob.out.xStart, mJob.out.xEnd - mJob.out.xStart,
                  mRowScratch, dst.row(y));
    }
    mLeft -= rows;
    return rows;
}

}  // namespace QxFontEffect
