// The loops of disc_dilate_solid.h, included once per instruction set, after disc_dilate_kernels_body.h.

#include "effect/kernel/disc_dilate_solid.h"

namespace QxFontEffect {
namespace {

constexpr int kRowLanes = kVectorBytes / 4;
static_assert(kRowLanes <= kRowsTogether, "rows are readable for as many");

/// A bit for each sample of a block that equals `value`.
inline uint64_t bitsEqualTo(const Block& block, uint8_t value) {
    uint64_t bits = 0;
    for (int i = 0; i < Block::kVectors; ++i) {
        const U8s equal = (U8s)(block.v[i] == U8s{} + value);
#if defined(__AVX2__)
        const uint64_t found = static_cast<uint32_t>(_mm256_movemask_epi8((__m256i)equal));
#elif defined(__SSE2__)
        const uint64_t found = static_cast<uint32_t>(_mm_movemask_epi8((__m128i)equal));
#else
        // The product brings the lowest bits of eight bytes together in the highest byte.
        const U64s ones = (U64s)(equal & (U8s{} + uint8_t{1})) * 0x0102040810204080u >> 56;
        const uint64_t found = ones[0] | ones[1] << 8;
#endif
        bits |= found << (i * kVectorBytes);
    }
    return bits;
}

/// Adds the full samples of a block that begins at column x.
void addFull(uint64_t full, int x, InkExtent& extent) {
    int at = x;
    while (full != 0) {
        const int gap = __builtin_ctzll(full);
        full >>= gap;
        const int run = full == ~uint64_t{0} ? kDilateBlock : __builtin_ctzll(~full);
        const int before = at + gap - extent.fullEnd;
        if (before > extent.gap) extent.gap = before;
        if (extent.fullBegin == kBeyondColumns) extent.fullBegin = at + gap;
        at += gap + run;
        extent.fullEnd = at;
        full = run == kDilateBlock ? 0 : full >> run;
    }
}

/// Counts the units of a block on.
inline uint32_t* countUnits(uint64_t ink, uint32_t* inkBefore) {
    constexpr uint64_t kUnit = ~uint64_t{0} >> (kDilateBlock - kInkUnit);
    for (int i = 0; i < kUnitsInBlock; ++i, ++inkBefore)
        inkBefore[1] = inkBefore[0] + ((ink >> (i * kInkUnit) & kUnit) != 0);
    return inkBefore;
}

void measureInk(const uint8_t* samples, int count, int widestGap, uint32_t* inkBefore, InkExtent* measured) {
    InkExtent extent = kBlankExtent;
    inkBefore[0] = 0;
    for (int x = 0; x < count * kDilateBlock; x += kDilateBlock) {
        const Block block = loadBlock(samples + x);
        const uint64_t ink = ~bitsEqualTo(block, 0);
        inkBefore = countUnits(ink, inkBefore);
        if (ink == 0) continue;
        if (extent.inkBegin == kBeyondColumns) {
            extent.inkBegin = extent.fullEnd = x + __builtin_ctzll(ink);
            extent.gap = 0;
        }
        extent.inkEnd = x + kDilateBlock - __builtin_clzll(ink);
        if (extent.gap <= widestGap) addFull(bitsEqualTo(block, 255), x, extent);
    }
    const int before = extent.fullBegin - extent.inkBegin, behind = extent.inkEnd - extent.fullEnd;
    if (behind > extent.gap) extent.gap = behind;
    if (before > kEdgeSamples || behind > kEdgeSamples || extent.gap > widestGap) extent.gap = kNeverSolid;
    *measured = extent;
}

/// The least lane.
inline int leastOf(I32s v) {
    using Lanes4 = int32_t __attribute__((vector_size(16)));
    Lanes4 parts[kVectorBytes / sizeof(Lanes4)];
    __builtin_memcpy(parts, &v, sizeof v);
    Lanes4 all = parts[0];
    for (const Lanes4& part : parts) all = all < part ? all : part;
    const int low = all[0] < all[1] ? all[0] : all[1], high = all[2] < all[3] ? all[2] : all[3];
    return low < high ? low : high;
}

/// What a few source rows leave, with the disc's rows laid on them.
struct LaidRows {
    I32s inkBegin, inkEnd;
    I32s fullBegin, fullEnd;  // of a row without gaps; else it begins behind its end
};

inline LaidRows laidRows(const SolidLine& line, int row) {
    const I32s run = loadVector<I32s>(line.run + row), reach = loadVector<I32s>(line.reach + row);
    const I32s closed = loadVector<I32s>(line.gap + row) <= run + run;
    const I32s none = I32s{} + kNeverSolid;
    return {loadVector<I32s>(line.inkBegin + row) - reach, loadVector<I32s>(line.inkEnd + row) + reach,
            closed ? loadVector<I32s>(line.fullBegin + row) - run : none,
            closed ? loadVector<I32s>(line.fullEnd + row) + run : -none};
}

inline I32s areJoined(const LaidRows& rows, int pivot) {
    return (rows.fullBegin <= pivot) & (rows.fullEnd > pivot);
}

struct SolidBounds {
    DilatedPart ink;    // of all rows, in columns of the span
    DilatedPart loose;  // of the rows without gaps
    DilatedPart full;   // of those among them that have the pivot
};

inline DilatedPart inkBounds(const SolidLine& line) {
    I32s begin = I32s{} + kNeverSolid, end = I32s{} + kNeverSolid;
    for (int row = 0; row < line.rowCount; row += kRowLanes) {
        const I32s reach = loadVector<I32s>(line.reach + row);
        begin = lesser(begin, loadVector<I32s>(line.inkBegin + row) - reach);
        end = lesser(end, -loadVector<I32s>(line.inkEnd + row) - reach);
    }
    return {leastOf(begin), -leastOf(end)};
}

inline SolidBounds boundsOf(const SolidLine& line) {
    const I32s none = I32s{} + kNeverSolid;
    // Ends are negative, so that the least is the last.
    I32s inkBegin = none, inkEnd = none, looseBegin = none, looseEnd = none, fullBegin = none, fullEnd = none;
    for (int row = 0; row < line.rowCount; row += kRowLanes) {
        const LaidRows rows = laidRows(line, row);
        const I32s joined = areJoined(rows, line.pivot);
        inkBegin = lesser(inkBegin, rows.inkBegin);
        inkEnd = lesser(inkEnd, -rows.inkEnd);
        looseBegin = lesser(looseBegin, rows.fullBegin);
        looseEnd = lesser(looseEnd, -rows.fullEnd);
        fullBegin = lesser(fullBegin, joined ? rows.fullBegin : none);
        fullEnd = lesser(fullEnd, joined ? -rows.fullEnd : none);
    }
    return {{leastOf(inkBegin), -leastOf(inkEnd)},
            {leastOf(looseBegin), -leastOf(looseEnd)},
            {leastOf(fullBegin), -leastOf(fullEnd)}};
}

/// What samples first..last of a row leave in columns begin..end - 1 of the span.
struct Edge {
    const uint8_t* samples;
    int first, last;
    const uint8_t* cells;
    int centre;  // place of the centre in the cells, which need not have it
    int begin, end;
};

inline void spreadEdge(const SolidLine& line, const Edge& edge, uint8_t* out) {
    const int left = line.firstColumn, right = left + line.columns;
    const int end = edge.end < right ? edge.end : right;
    for (int x = edge.begin > left ? edge.begin : left; x < end; x += kEdgeColumns) {
        const int at = x < right - kEdgeColumns ? x : right - kEdgeColumns;
        Half result = loadSamples<kEdgeColumns>(out + (at - left));
        for (int from = edge.first; from <= edge.last; ++from) {
            Half cells = loadSamples<kEdgeColumns>(edge.cells + (at - from + edge.centre));
            const U8s loss = U8s{} + static_cast<uint8_t>(255 - edge.samples[from]);
            for (U8s& v : cells.v) v = lessened(v, loss);
            raise(result, cells);
        }
        storeSamples(result, out + (at - left));
    }
}

/// Draws edges of a solid row as far as they stick out of the full part.
void spreadEdges(const SolidLine& line, int row, int edges, const DilatedPart& full, uint8_t* out) {
    const int slot = line.slot + row < line.slots ? line.slot + row : line.slot + row - line.slots;
    const uint8_t* samples = line.samples + line.sampleStride * slot;
    const DiscRow& disc = line.discRows[row < line.centre ? line.centre - row : row - line.centre];
    const int run = line.run[row], reach = line.reach[row];
    if ((edges & kLeftEdge) != 0)
        spreadEdge(line,
                   {samples, line.inkBegin[row], line.fullBegin[row], disc.leftEdge, reach + kEdgeMargin,
                    line.inkBegin[row] - reach, full.begin},
                   out);
    if ((edges & kRightEdge) != 0)
        spreadEdge(line,
                   {samples, line.fullEnd[row] - 1, line.inkEnd[row] - 1, disc.rightEdge, kEdgeMargin - 1 - run,
                    full.end, line.inkEnd[row] + reach},
                   out);
}

/// The edges that nearer rows cover.
inline I32s coveredEdges(const SolidLine& line, int row) {
    I32s rows;
    for (int i = 0; i < kRowLanes; ++i) rows[i] = row + i;
    const I32s covers = loadVector<I32s>(line.covers + row);
    const I32s none{};
    return (rows > line.centre ? covers >> kByAbove : none) | (rows < line.centre ? covers >> kByBelow : none);
}

inline DilatedPart withinLine(const SolidLine& line, const DilatedPart& span) {
    const int begin = span.begin - line.firstColumn, end = span.end - line.firstColumn;
    const DilatedPart part{begin > 0 ? begin : 0, end < line.columns ? end : line.columns};
    return part.begin < part.end ? part : DilatedPart{0, 0};
}

/// Draws the edges of the joined rows, and marks the others that stick out of the full part.
bool joinRows(const SolidLine& line, const DilatedPart& full, int32_t* open, uint8_t* out) {
    I32s anyOpen{};
    for (int row = 0; row < line.rowCount; row += kRowLanes) {
        const LaidRows rows = laidRows(line, row);
        const I32s joined = areJoined(rows, line.pivot);
        const I32s left = rows.inkBegin < full.begin;
        const I32s right = rows.inkEnd > full.end;
        const I32s isOpen = (left | right) & ~joined;
        storeVector(open + row, isOpen);
        anyOpen |= isOpen;
        const I32s edges = joined & ((left & kLeftEdge) | (right & kRightEdge)) & ~coveredEdges(line, row);
        if (noBitsSet((U8s)edges)) continue;
        for (int i = 0; i < kRowLanes; ++i)
            if (edges[i] != 0) spreadEdges(line, row + i, edges[i], full, out);
    }
    return !noBitsSet((U8s)anyOpen);
}

SolidResult joinSolid(const SolidLine& line, int32_t* open, uint8_t* out) {
    __builtin_memset(out, 0, static_cast<size_t>(line.columns));
    SolidResult result{{0, 0}, false, {0, 0}, true, line.pivot};
    if (!line.anySolid) {
        result.part = withinLine(line, inkBounds(line));
        return result;
    }
    const SolidBounds bounds = boundsOf(line);
    result.part = withinLine(line, bounds.ink);
    if (bounds.loose.begin < bounds.loose.end) result.pivot = (bounds.loose.begin + bounds.loose.end) / 2;
    // Edges are done in steps that run into the full part.
    result.solid = bounds.full.end - bounds.full.begin >= kDilateBlock;
    if (!result.solid) return result;
    result.open = joinRows(line, bounds.full, open, out);
    result.full = withinLine(line, bounds.full);
    __builtin_memset(out + result.full.begin, 255, static_cast<size_t>(result.full.end - result.full.begin));
    return result;
}

}  // namespace
}  // namespace QxFontEffect
