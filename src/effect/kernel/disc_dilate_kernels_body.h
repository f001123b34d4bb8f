// The loops of disc_dilate_kernels.h, included once per instruction set.

#include "effect/kernel/disc_dilate_kernels.h"
#include "effect/kernel/vectors.h"

namespace QxFontEffect {
namespace {

constexpr int kHalf = kDilateBlock / 2;

/// A block or half of one.
template <int kSamples>
struct Samples {
    static constexpr int kVectors = kSamples / kVectorBytes;
    U8s v[kVectors];
};
using Block = Samples<kDilateBlock>;
using Half = Samples<kHalf>;

template <int kSamples>
inline Samples<kSamples> loadSamples(const uint8_t* from) {
    Samples<kSamples> s;
    for (int i = 0; i < s.kVectors; ++i) s.v[i] = loadVector<U8s>(from + i * kVectorBytes);
    return s;
}

template <int kSamples>
inline void storeSamples(const Samples<kSamples>& s, uint8_t* to) {
    for (int i = 0; i < s.kVectors; ++i) storeVector(to + i * kVectorBytes, s.v[i]);
}

inline Block loadBlock(const uint8_t* from) {
    return loadSamples<kDilateBlock>(from);
}

template <int kSamples>
inline void raise(Samples<kSamples>& s, const Samples<kSamples>& other) {
    for (int i = 0; i < s.kVectors; ++i) s.v[i] = greater(s.v[i], other.v[i]);
}

template <int kSamples>
inline Samples<kSamples> lesserOf(const Samples<kSamples>& a, const Samples<kSamples>& b) {
    Samples<kSamples> s;
    for (int i = 0; i < s.kVectors; ++i) s.v[i] = lesser(a.v[i], b.v[i]);
    return s;
}

template <int kSamples>
inline bool isBlank(const Samples<kSamples>& s) {
    U8s together = s.v[0];
    for (int i = 1; i < s.kVectors; ++i) together |= s.v[i];
    return noBitsSet(together);
}

/// Whether no sample is below its goal.
template <int kSamples>
inline bool reaches(const Samples<kSamples>& s, const Samples<kSamples>& goal) {
    U8s together = lesser(s.v[0], goal.v[0]) ^ goal.v[0];
    for (int i = 1; i < s.kVectors; ++i) together |= lesser(s.v[i], goal.v[i]) ^ goal.v[i];
    return noBitsSet(together);
}

void copy(const uint8_t* from, int count, bool complement, uint8_t* to) {
    const uint8_t flip = complement ? 255 : 0;
    for (int i = 0; i < count; ++i) to[i] = static_cast<uint8_t>(from[i] ^ flip);
}

void countInk(const uint8_t* samples, int count, uint32_t* inkBefore) {
    inkBefore[0] = 0;
    for (int block = 0; block < count; ++block)
        inkBefore[block + 1] = inkBefore[block] + !isBlank(loadBlock(samples + ptrdiff_t{block} * kDilateBlock));
}

void runMaxima(const uint8_t* from, int step, int parts, int count, uint8_t* to) {
    for (int x = 0; x < count; x += kDilateBlock) {
        Block block = loadBlock(from + x);
        for (int k = 1; k < parts; ++k) raise(block, loadBlock(from + x + k * step));
        storeSamples(block, to + x);
    }
}

/// Where an output block takes its samples from.
///
/// Far enough left or right of the span samples are 0, and so is what lies at the limits: blocks near its ends read
/// there instead of beyond. Blocks within the span read where they are told to.
template <bool kInside>
struct Place {
    int block;
    int x;
    int width;

    template <int kSamples>
    Samples<kSamples> load(const uint8_t* samples, int dx, int covered) const {
        const int at = x + dx, low = -kDilateBlock - covered;
        return loadSamples<kSamples>(samples + (kInside ? at : at < low ? low : at > width ? width : at));
    }
};

/// Raises by the cells of one rim row: the same columns left and right of the centre, in one source row or two.
template <int kSamples, bool kInside>
inline void raiseByTaps(Samples<kSamples>& s, const Place<kInside>& place, const uint8_t* samples, const uint8_t* other,
                        const DiscRow& disc) {
    for (int i = 0; i < disc.tapCount; ++i) {
        const int dx = disc.taps[i].dx;
        Samples<kSamples> cells = place.template load<kSamples>(samples, -dx, 0);
        raise(cells, place.template load<kSamples>(samples, dx, 0));
        if (other != nullptr) {
            raise(cells, place.template load<kSamples>(other, -dx, 0));
            raise(cells, place.template load<kSamples>(other, dx, 0));
        }
        const U8s loss = U8s{} + static_cast<uint8_t>(disc.taps[i].loss);
        for (int v = 0; v < s.kVectors; ++v) cells.v[v] = lessened(cells.v[v], loss);
        raise(s, cells);
    }
}

inline bool hasInk(const uint32_t* inkBefore, int block, int blocks) {
    return inkBefore[block + blocks + 1] != inkBefore[block - blocks];
}

inline bool seesInk(const DilateSource* source, int block, int blocks) {
    return source != nullptr && hasInk(source->inkBefore, block, blocks);
}

/// Joins the rims of all rows.
template <int kSamples, bool kInside>
inline void gatherRims(const DilateLine& line, const Place<kInside>& place, Samples<kSamples>& s) {
    for (int i = 0; i < line.rowCount; ++i) {
        const DilateRow& row = line.rows[i];
        const bool above = seesInk(row.above, place.block, row.disc->rimBlocks);
        const bool below = seesInk(row.below, place.block, row.disc->rimBlocks);
        if (above)
            raiseByTaps(s, place, row.above->samples, below ? row.below->samples : nullptr, *row.disc);
        else if (below)
            raiseByTaps(s, place, row.below->samples, nullptr, *row.disc);
    }
}

/// Raises by the run of one row.
template <bool kInside>
inline void raiseByRun(Block& s, const Place<kInside>& place, const DilateSource* source, const DiscRow& disc) {
    if (!seesInk(source, place.block, disc.runBlocks)) return;
    const uint8_t* maxima = source->samples + disc.table;
    raise(s, place.template load<kDilateBlock>(maxima, disc.last, disc.covered));
    for (int dx = disc.first; dx < disc.last; dx += disc.covered)
        raise(s, place.template load<kDilateBlock>(maxima, dx, disc.covered));
}

/// Joins the runs of all rows, or as many as it takes to reach the goal.
template <bool kInside>
inline Block gatherRuns(const DilateLine& line, const Place<kInside>& place, const Block& goal) {
    constexpr int kRowsBetweenChecks = 4;
    Block samples{};
    for (int i = 0; i < line.rowCount; ++i) {
        const DilateRow& row = line.rows[i];
        if (row.disc->covered != 0) {
            raiseByRun(samples, place, row.above, *row.disc);
            raiseByRun(samples, place, row.below, *row.disc);
        }
        if (i % kRowsBetweenChecks == 0 && reaches(samples, goal)) break;
    }
    return samples;
}

/// Runs first: most blocks are full or nearly so after them, and the rims are needed for the halves that are not.
template <bool kInside>
void gatherBlock(const DilateLine& line, Place<kInside> place, const Block& goal, uint8_t* out) {
    Block samples = gatherRuns(line, place, goal);
    storeSamples(samples, out);

    uint8_t goals[kDilateBlock];
    storeSamples(goal, goals);
    Half left = loadSamples<kHalf>(out), right = loadSamples<kHalf>(out + kHalf);
    const bool leftOpen = !reaches(left, loadSamples<kHalf>(goals));
    const bool rightOpen = !reaches(right, loadSamples<kHalf>(goals + kHalf));
    if (leftOpen && rightOpen) {
        gatherRims(line, place, samples);
        storeSamples(samples, out);
    } else if (leftOpen) {
        gatherRims(line, place, left);
        storeSamples(left, out);
    } else if (rightOpen) {
        place.x += kHalf;
        gatherRims(line, place, right);
        storeSamples(right, out + kHalf);
    }
}

DilatedPart gather(const DilateLine& line, uint8_t* out) {
    Block full;
    for (U8s& v : full.v) v = ~U8s{};
    DilatedPart part{0, 0};
    for (int i = 0; i < line.blockCount; ++i, out += kDilateBlock) {
        const int block = line.firstBlock + i;
        const Block goal = line.limit == nullptr ? full : loadBlock(line.limit + i * kDilateBlock);
        if (isBlank(goal) || !hasInk(line.inkBefore, block, line.inkBlocks)) {
            storeSamples(Block{}, out);
            continue;
        }
        const int x = block * kDilateBlock;
        if (x >= line.reach && x + kDilateBlock + line.reach <= line.width)
            gatherBlock(line, Place<true>{block, x, line.width}, goal, out);
        else
            gatherBlock(line, Place<false>{block, x, line.width}, goal, out);
        if (line.limit != nullptr) storeSamples(lesserOf(loadBlock(out), goal), out);
        if (part.end == 0) part.begin = i * kDilateBlock;
        part.end = (i + 1) * kDilateBlock;
    }
    return part;
}

}  // namespace
}  // namespace QxFontEffect
