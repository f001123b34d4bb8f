#include "effect/disc_plan.h"

#include <algorithm>

#include "effect/kernel/disc_dilate.h"

namespace QxFontEffect {
namespace {

constexpr int64_t kLeastTile = int64_t{2} * kDilateBlock;

// Sides beyond any bitmap; sums of a few of them fit 32 bits.
constexpr int64_t kFarthest = int64_t{1} << 28;

}  // namespace

bool canDilate(int areaWidth, int areaHeight, const DilateRange& out) {
    return out.x0 < out.x1 && out.y0 < out.y1 && areaWidth <= kFarthest && areaHeight <= kFarthest &&
           out.x0 >= -kFarthest && out.y0 >= -kFarthest && out.x1 <= kFarthest && out.y1 <= kFarthest;
}

DiscPlan::DiscPlan(float radius, int areaWidth, int areaHeight, const DilateRange& out, int64_t budget)
    : mShape(shapeOf(radius, areaWidth, areaHeight, out, budget)),
      mRows(mShape.rows),
      mSides(mRows ? sidesStride() : -1, 2),
      mTaps(findRuns(radius)),
      mEdges(edgeCells()) {
    if (!*this) return;
    makeRows(radius);
    listSides();
}

/// In front of a table's column 0 are zeros, which are those behind the table before it as well, and the maxima that
/// begin to the left of it.
void DiscPlan::layOut(Shape& shape, int areaWidth, int64_t tileWidth) {
    shape.tileWidth = static_cast<int>(tileWidth);
    // One block more than the area has, because blocks are counted from the tile on.
    const int64_t seen = tileWidth / kDilateBlock + 2 * int64_t{shape.maxBlocks};
    shape.spanBlocks = static_cast<int>(std::min(blocksOf(areaWidth) + 1, seen));
    int64_t at = 0;
    for (int table = 0; table < shape.tables; ++table) {
        const int covered = shape.covered[table];
        at += wholeBlocks(std::max(covered + std::max(kDilateBlock, covered), shape.nextCovered(table)));
        shape.tableAt[table] = at;
        at += int64_t{shape.spanBlocks} * kDilateBlock;
    }
    // An odd number of blocks, so that the same column of all rows is spread over the whole cache.
    shape.rowStride = ((at / kDilateBlock + 1) | 1) * kDilateBlock;
}

/// Maxima over the largest power of two within the widest run cover the disc's wide rows with two loads each. A quarter
/// of that takes up to four for the narrower rows; the few that are narrower still are put together from samples.
void DiscPlan::chooseTables(Shape& shape) {
    int widest = 1;
    while (2 * widest <= 2 * shape.maxDx + 1) widest *= 2;
    shape.tables = 0;
    for (const int covered : {1, widest / 4, widest})
        if (shape.tables == 0 || covered > shape.covered[shape.tables - 1]) shape.covered[shape.tables++] = covered;
}

DiscPlan::Shape DiscPlan::shapeOf(float radius, int areaWidth, int areaHeight, const DilateRange& out, int64_t budget) {
    Shape shape{};
    shape.rows = -1;
    const int64_t reach = discReach(radius);
    if (reach < 0 || !canDilate(areaWidth, areaHeight, out)) return shape;
    shape.maxDx = static_cast<int>(std::min(reach, std::max(out.x1 - 1, areaWidth - 1 - out.x0)));
    shape.maxBlocks = static_cast<int>(blocksOf(shape.maxDx));
    shape.rows = static_cast<int>(std::min(reach, std::max(out.y1 - 1, areaHeight - 1 - out.y0))) + 1;
    shape.ringRows = std::min(2 * shape.rows - 1, areaHeight);

    chooseTables(shape);

    const int64_t width = wholeBlocks(out.x1 - out.x0);
    layOut(shape, areaWidth, width);
    if (shape.ringBytes() <= budget) return shape;
    const int64_t zeros = shape.rowStride - shape.tableBytes();
    const int64_t perRow = (budget / shape.ringRows - zeros) / shape.tables - 2 * int64_t{shape.maxDx};
    layOut(shape, areaWidth, std::clamp(perRow / kDilateBlock * kDilateBlock, std::min(kLeastTile, width), width));
    return shape;
}

int DiscPlan::tableFor(int length) const {
    int table = mShape.tables - 1;
    while (mShape.covered[table] > length) --table;
    return table;
}

/// Measures the disc's rows and returns the number of rim cells. Weights fall along a row and from row to row, but for
/// the centre cell of a disc narrower than a pixel, which has no run at all.
int64_t DiscPlan::findRuns(float radius) {
    if (!mRows) return -1;
    int64_t taps = 0;
    int run = mShape.maxDx + 1, end = run;
    for (int row = 0; row < mShape.rows; ++row) {
        while (run > 0 && discCell(radius, row, run - 1) != 255) --run;
        while (end > 0 && discCell(radius, row, end - 1) == 0) --end;
        mRows[static_cast<size_t>(row)] = {
            1 - run, run, 0, 0, nullptr, end - run, nullptr, nullptr, inkUnitsOf(run - 1), inkUnitsOf(end - 1)};
        taps += end - run;
    }
    return taps;
}

int64_t DiscPlan::edgeCells() const {
    if (!mRows) return -1;
    int64_t cells = 0;
    for (int row = 0; row < mShape.rows; ++row)
        cells += 2 * (int64_t{mRows[static_cast<size_t>(row)].tapCount} + int64_t{2} * kEdgeMargin);
    return cells;
}

void DiscPlan::makeRows(float radius) {
    DiscTap* tap = mTaps.data();
    uint8_t* edges = mEdges.data();
    for (int row = 0; row < mShape.rows; ++row) {
        DiscRow& disc = mRows[static_cast<size_t>(row)];
        const int run = disc.last;
        if (run > 0) {
            const int table = tableFor(2 * run - 1);
            disc.covered = mShape.covered[table];
            disc.last = run - disc.covered;
            disc.table = mShape.tableFrom(table);
        }
        disc.taps = tap;
        for (int i = 0; i < disc.tapCount; ++i) *tap++ = {run + i, 255 - discCell(radius, row, run + i)};
        if (run == 0) continue;
        makeEdges(disc, edges);
        edges += 2 * (ptrdiff_t{disc.tapCount} + ptrdiff_t{2} * kEdgeMargin);
    }
}

/// A rim between blank cells and full ones, and its mirror image.
void DiscPlan::makeEdges(DiscRow& disc, uint8_t* cells) {
    uint8_t* cell = cells;
    cell = std::fill_n(cell, kEdgeMargin, uint8_t{0});
    for (int i = disc.tapCount; i-- > 0;) *cell++ = static_cast<uint8_t>(255 - disc.taps[i].loss);
    cell = std::fill_n(cell, kEdgeMargin, uint8_t{255});
    std::reverse_copy(cells, cell, cell);
    disc.leftEdge = cells;
    disc.rightEdge = cell;
}

void DiscPlan::listSides() {
    const int64_t stride = sidesStride(), centre = mShape.rows - 1;
    int32_t* runs = mSides.data();
    int32_t* reaches = runs + stride;
    std::fill_n(runs, 2 * stride, -kBeyondColumns);
    for (int64_t row = 0; row <= centre; ++row) {
        const DiscRow& disc = mRows[static_cast<size_t>(row)];
        if (disc.covered != 0) runs[centre - row] = runs[centre + row] = -disc.first;
        const int cells = disc.tapCount - disc.first;
        if (cells >= 0) reaches[centre - row] = reaches[centre + row] = cells;
    }
}

}  // namespace QxFontEffect
