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
    int unit, units;
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

/// Whether there is ink in the place's columns or in as many units to the left or right of them.
template <bool kInside>
inline bool hasInk(const uint32_t* inkBefore, const Place<kInside>& place, int units) {
    return inkBefore[place.unit + place.units + units] != inkBefore[place.unit - units];
}

template <bool kInside>
inline bool seesInk(const DilateSource* source, const Place<kInside>& place, int units) {
    return source != nullptr && hasInk(source->inkBefore, place, units);
}

/// Joins the rims of all rows.
template <int kSamples, bool kInside>
inline void gatherRims(const DilateLine& line, const Place<kInside>& place, Samples<kSamples>& s) {
    for (int i = 0; i < line.rowCount; ++i) {
        const DilateRow& row = line.rows[i];
        const bool above = seesInk(row.above, place, row.disc->rimUnits);
        const bool below = seesInk(row.below, place, row.disc->rimUnits);
        if (above)
            raiseByTaps(s, place, row.above->samples, below ? row.below->samples : nullptr, *row.disc);
        else if (below)
            raiseByTaps(s, place, row.below->samples, nullptr, *row.disc);
    }
}

/// Raises by the run of one row.
template <bool kInside>
inline void raiseByRun(Block& s, const Place<kInside>& place, const DilateSource* source, const DiscRow& disc) {
    if (!seesInk(source, place, disc.runUnits)) return;
    const uint8_t* maxima = source->samples + disc.table;
    raise(s, place.template load<kDilateBlock>(maxima, disc.last, disc.covered));
    for (int dx = disc.first; dx < disc.last; dx += disc.covered)
        raise(s, place.template load<kDilateBlock>(maxima, dx, disc.covered));
}

/// Joins the runs of all rows to what is there, or as many as it takes to reach the goal.
template <bool kInside>
inline void gatherRuns(const DilateLine& line, const Place<kInside>& place, const Block& goal, Block& samples) {
    constexpr int kRowsBetweenChecks = 4;
    for (int i = 0; i < line.rowCount; ++i) {
        const DilateRow& row = line.rows[i];
        if (row.disc->covered != 0) {
            raiseByRun(samples, place, row.above, *row.disc);
            raiseByRun(samples, place, row.below, *row.disc);
        }
        if (i % kRowsBetweenChecks == 0 && reaches(samples, goal)) break;
    }
}

/// Whether the half at a place is still to be raised.
template <bool kInside>
inline bool isOpen(const DilateLine& line, const Place<kInside>& place, const uint8_t* samples, const uint8_t* goal) {
    return hasInk(line.inkBefore, place, line.inkUnits) &&
           !reaches(loadSamples<kHalf>(samples), loadSamples<kHalf>(goal));
}

template <int kSamples, bool kInside>
void gatherRimsAt(const DilateLine& line, const Place<kInside>& place, uint8_t* out) {
    Samples<kSamples> samples = loadSamples<kSamples>(out);
    gatherRims(line, place, samples);
    storeSamples(samples, out);
}

/// Runs first: most blocks are full or nearly so after them, and the rims are needed for the halves that are not.
template <bool kInside>
void gatherBlock(const DilateLine& line, const Place<kInside>& place, const Block& goal, uint8_t* out) {
    Block samples = loadBlock(out);
    gatherRuns(line, place, goal, samples);
    storeSamples(samples, out);

    uint8_t goals[kDilateBlock];
    storeSamples(goal, goals);
    constexpr int kUnits = kHalf / kInkUnit;
    const Place<kInside> left{place.unit, kUnits, place.x, place.width};
    const Place<kInside> right{place.unit + kUnits, kUnits, place.x + kHalf, place.width};
    const bool leftOpen = isOpen(line, left, out, goals);
    const bool rightOpen = isOpen(line, right, out + kHalf, goals + kHalf);
    if (leftOpen && rightOpen)
        gatherRimsAt<kDilateBlock>(line, place, out);
    else if (leftOpen)
        gatherRimsAt<kHalf>(line, left, out);
    else if (rightOpen)
        gatherRimsAt<kHalf>(line, right, out + kHalf);
}

void gather(const DilateLine& line, uint8_t* out) {
    Block full;
    for (U8s& v : full.v) v = ~U8s{};
    for (int i = 0; i < line.blockCount; ++i, out += kDilateBlock) {
        if (i * kDilateBlock >= line.full.begin && (i + 1) * kDilateBlock <= line.full.end) continue;
        const int x = (line.firstBlock + i) * kDilateBlock;
        const Place<true> place{x / kInkUnit, kUnitsInBlock, x, line.width};
        const Block goal = line.limit == nullptr ? full : loadBlock(line.limit + i * kDilateBlock);
        if (isBlank(goal) || !hasInk(line.inkBefore, place, line.inkUnits)) continue;
        if (x >= line.reach && x + kDilateBlock + line.reach <= line.width)
            gatherBlock(line, place, goal, out);
        else
            gatherBlock(line, Place<false>{place.unit, place.units, x, line.width}, goal, out);
    }
}

void lower(const uint8_t* limit, int count, uint8_t* samples) {
    for (int x = 0; x < count; x += kDilateBlock)
        storeSamples(lesserOf(loadBlock(limit + x), loadBlock(samples + x)), samples + x);
}

}  // namespace
}  // namespace QxFontEffect
