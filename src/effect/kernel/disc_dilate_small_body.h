// The loops of disc_dilate_small.h, included once per instruction set.

#include "effect/kernel/disc_dilate_small.h"
#include "effect/kernel/vectors.h"

namespace QxFontEffect {
namespace {

/// The greater of two vectors of samples as they spread.
template <bool kComplement>
[[gnu::always_inline]] inline U8s joined(const uint8_t* above, const uint8_t* below, U8s inside) {
    const U8s a = loadVector<U8s>(above), b = loadVector<U8s>(below);
    return kComplement ? inside & ~lesser(a, b) : greater(a, b);
}

#if defined(__AVX2__)
static_assert(kSmallUnit == kVectorBytes, "a bit for each sample of a unit");

/// A bit for each sample of a unit that spreads.
template <bool kComplement>
inline uint32_t inkBits(const uint8_t* samples, const uint8_t* inside) {
    const U8s unit = loadVector<U8s>(samples);
    const U8s ink = kComplement ? loadVector<U8s>(inside) & ~unit : unit;
    return static_cast<uint32_t>(_mm256_movemask_epi8((__m256i)(ink != 0)));
}

template <bool kComplement>
void markUnits(const uint8_t* samples, const uint8_t* inside, int units, int reach, uint8_t* marks) {
    const int columns = reach < kSmallEdge ? reach : kSmallEdge;
    const uint32_t firsts = (uint32_t{1} << columns) - 1, lasts = ~(~uint32_t{0} >> columns);
    for (int i = 0; i < units; ++i, samples += kSmallUnit, inside += kSmallUnit) {
        const uint32_t ink = inkBits<kComplement>(samples, inside);
        marks[i] = static_cast<uint8_t>((ink != 0 ? kInkMark : 0) | ((ink & firsts) != 0 ? kFirstMark : 0) |
                                        ((ink & lasts) != 0 ? kLastMark : 0));
    }
}
#else
/// Samples of a unit as they spread, eight at a time.
template <bool kComplement>
inline uint64_t eightOf(const uint8_t* samples, const uint8_t* inside) {
    uint64_t eight, area;
    __builtin_memcpy(&eight, samples, sizeof eight);
    __builtin_memcpy(&area, inside, sizeof area);
    return kComplement ? area & ~eight : eight;
}

template <bool kComplement>
void markUnits(const uint8_t* samples, const uint8_t* inside, int units, int reach, uint8_t* marks) {
    // A column at least: a word cannot be shifted by all of its bits.
    const int columns = reach < 1 ? 1 : reach < kSmallEdge ? reach : kSmallEdge;
    const int beyond = 8 * (kSmallEdge - columns);
    const uint64_t firsts = ~uint64_t{0} >> beyond, lasts = ~uint64_t{0} << beyond;
    __builtin_memset(marks, 0, static_cast<size_t>(units));
    for (int i = 0; i < units; ++i, samples += kSmallUnit, inside += kSmallUnit) {
        const uint64_t first = eightOf<kComplement>(samples, inside);
        const uint64_t last = eightOf<kComplement>(samples + 24, inside + 24);
        const uint64_t any = first | last | eightOf<kComplement>(samples + 8, inside + 8) |
                             eightOf<kComplement>(samples + 16, inside + 16);
        // Not a conditional value: of that GCC makes vectors that are slower than words.
        if (any == 0) continue;
        marks[i] = static_cast<uint8_t>(kInkMark | ((first & firsts) != 0 ? kFirstMark : 0) |
                                        ((last & lasts) != 0 ? kLastMark : 0));
    }
}
#endif

void markSmall(SmallSource source, const uint8_t* samples, const uint8_t* inside, int units, int reach,
               uint8_t* marks) {
    if (source == SmallSource::Complement)
        markUnits<true>(samples, inside, units, reach, marks);
    else
        markUnits<false>(samples, inside, units, reach, marks);
}

/// Marks the units that ink may reach with 1.
void openUnits(const SmallLine& line) {
    const int reach = line.disc->reach, units = line.units;
    uint8_t* near = line.near;
    for (int i = 0; i < units + kUnitsBefore + 1; i += kVectorBytes) {
        U8s together{};
        for (int row = -reach; row <= reach; ++row) together |= loadVector<U8s>(line.marks[row] + i);
        storeVector(near + i, together);
    }
    const bool edges = reach <= kSmallEdge;
    const uint8_t last = edges ? kLastMark : kInkMark, first = edges ? kFirstMark : kInkMark;
    const U8s before = U8s{} + last, behind = U8s{} + first;
    for (int i = 0; i < units; i += kVectorBytes) {
        const U8s any = (loadVector<U8s>(near + i) & before) | (loadVector<U8s>(near + i + 1) & kInkMark) |
                        (loadVector<U8s>(near + i + 2) & behind);
        storeVector(line.open + i, reinterpret_cast<U8s>(any != 0) & 1);
    }
    // Behind the last unit nothing is wanted.
    storeVector(line.open + units, U8s{});
}

/// The first stretch of marked units from `from` on; empty at the end.
struct UnitRun {
    int begin, end;
};

inline UnitRun nextRun(const uint8_t* open, int from, int units) {
    int begin = from;
    for (uint64_t eight; begin < units; begin += 8) {
        __builtin_memcpy(&eight, open + begin, sizeof eight);
        if (eight == 0) continue;
        // The processors we run on keep the first byte in the low bits.
        begin += __builtin_ctzll(eight) / 8;
        break;
    }
    if (begin >= units) return {units, units};
    int end = begin;
    while (open[end] != 0) ++end;
    return {begin, end};
}

/// The columns of a disc, unrolled. Inlining is forced: GCC gives up on it in so large a file, and a function of its
/// own that takes vectors makes it forget to clear their upper halves, which slows down all that follows.
///
/// Discs of one reach differ within a ring of cells only: those within it are known to be full,
/// those beyond to weigh nothing. Up to a radius of 1.5 any cell may be weak.
template <int kReach>
struct Columns {
    static constexpr int reach = kReach;
    const SmallDisc& disc;

    explicit Columns(const SmallDisc& d) : disc(d) {}

    /// What each column makes of the vector of samples at `at` in all rows.
    template <bool kComplement>
    [[gnu::always_inline]] inline void spread(const uint8_t* const* rows, U8s inside, ptrdiff_t at, uint8_t* to,
                                              ptrdiff_t stride) const {
        U8s pairs[kReach + 1], runs[kReach + 1];
        runs[0] = pairs[0] = joined<kComplement>(rows[0] + at, rows[0] + at, inside);
        for (int row = 1; row <= kReach; ++row) {
            pairs[row] = joined<kComplement>(rows[-row] + at, rows[row] + at, inside);
            runs[row] = greater(runs[row - 1], pairs[row]);
        }
        spreadFrom<0>(pairs, runs, to, stride);
    }

private:
    // By four times the squared distance from the centre; the radius is from reach - 0.5 to reach + 0.5.
    static constexpr int fourfold(int row, int column) { return 4 * (row * row + column * column); }
    static constexpr bool isFull(int row, int column) {
        return kReach > 1 && fourfold(row, column) < (2 * kReach - 1) * (2 * kReach - 1);
    }
    static constexpr bool isRim(int row, int column) {
        return !isFull(row, column) && fourfold(row, column) < (2 * kReach + 3) * (2 * kReach + 3);
    }
    static constexpr int fullRows(int column) {
        int rows = 0;
        while (rows <= kReach && isFull(rows, column)) ++rows;
        return rows;
    }

    template <int kColumn>
    [[gnu::always_inline]] inline void spreadFrom(const U8s* pairs, const U8s* runs, uint8_t* to,
                                                  ptrdiff_t stride) const {
        constexpr int kFull = fullRows(kColumn);
        U8s samples{};
        if constexpr (kFull > 0) samples = runs[kFull - 1];
        storeVector(to, withRim<kColumn, kFull>(pairs, samples));
        if constexpr (kColumn < kReach) spreadFrom<kColumn + 1>(pairs, runs, to + stride, stride);
    }

    template <int kColumn, int kRow>
    [[gnu::always_inline]] inline U8s withRim(const U8s* pairs, U8s samples) const {
        if constexpr (kRow <= kReach && isRim(kRow, kColumn))
            return withRim<kColumn, kRow + 1>(
                pairs, greater(samples, lessened(pairs[kRow], loadVector<U8s>(disc.loss[kColumn][kRow]))));
        else
            return samples;
    }
};

/// The output at a column: the greatest of what the disc's columns see d samples to the left and to the right.
template <typename DiscColumns>
[[gnu::always_inline]] inline U8s joinColumns(const DiscColumns& disc, const uint8_t* column, ptrdiff_t stride) {
    U8s samples = loadVector<U8s>(column);
    for (int d = 1; d <= disc.reach; ++d) {
        column += stride;
        samples = greater(samples, greater(loadVector<U8s>(column - d), loadVector<U8s>(column + d)));
    }
    return samples;
}

/// Units whose own samples are full come out full. They are written and closed; returns the written part.
template <bool kComplement>
inline DilatedPart closeFullUnits(const SmallLine& line, uint8_t* out) {
    DilatedPart part{0, 0};
    const uint8_t* own = (kComplement ? line.closed : line.rows)[0] + kUnitsBefore * kSmallUnit;
    const uint8_t* inside = line.inside + kUnitsBefore * kSmallUnit;
    for (int unit = 0; unit < line.units; ++unit) {
        if (line.open[unit] == 0) continue;
        const ptrdiff_t at = ptrdiff_t{unit} * kSmallUnit;
        U8s all = ~U8s{};
        for (int i = 0; i < kSmallUnit; i += kVectorBytes) {
            const U8s samples = loadVector<U8s>(own + at + i);
            all &= kComplement ? loadVector<U8s>(inside + at + i) & ~samples : samples;
        }
        if (!allBitsSet(all)) continue;
        __builtin_memset(out + at, 255, kSmallUnit);
        line.open[unit] = 0;
        if (part.end == 0) part.begin = static_cast<int>(at);
        part.end = static_cast<int>(at) + kSmallUnit;
    }
    return part;
}

template <typename DiscColumns, SmallSource kSource>
[[gnu::noinline]] DilatedPart gatherOpen(const SmallLine& line, uint8_t* out) {
    const DiscColumns disc(*line.disc);
    const uint8_t *open = line.open, *inside = line.inside;
    const uint8_t *const *rows = line.rows, *const *closed = line.closed;
    const int units = line.units;
    const ptrdiff_t stride = line.columnStride;
    uint8_t* columns = line.columns;
    uint8_t* complements = kSource == SmallSource::Both ? columns + (disc.reach + 1) * stride : columns;

    const UnitRun first = nextRun(open, 0, units);
    DilatedPart part{first.begin * kSmallUnit, first.end * kSmallUnit};
    for (UnitRun run = first; run.begin < run.end; run = nextRun(open, run.end, units)) {
        // From the run's first column that the disc reaches to the last.
        const ptrdiff_t end = (run.end + kUnitsBefore) * kSmallUnit + disc.reach;
        for (ptrdiff_t at = (run.begin + kUnitsBefore) * kSmallUnit - disc.reach; at < end; at += kVectorBytes) {
            const U8s area = kSource == SmallSource::Ink ? U8s{} : loadVector<U8s>(inside + at);
            if constexpr (kSource != SmallSource::Complement)
                disc.template spread<false>(rows, area, at, columns + at, stride);
            if constexpr (kSource != SmallSource::Ink)
                disc.template spread<true>(closed, area, at, complements + at, stride);
        }
        part.end = run.end * kSmallUnit;
    }
    for (UnitRun run = first; run.begin < run.end; run = nextRun(open, run.end, units))
        for (ptrdiff_t at = run.begin * kSmallUnit; at < run.end * kSmallUnit; at += kVectorBytes) {
            const ptrdiff_t from = at + kUnitsBefore * kSmallUnit;
            U8s samples = joinColumns(disc, columns + from, stride);
            if constexpr (kSource == SmallSource::Both)
                samples = lesser(samples, joinColumns(disc, complements + from, stride));
            storeVector(out + at, samples);
        }
    return part;
}

template <SmallSource kSource>
DilatedPart gatherFrom(const SmallLine& line, uint8_t* out) {
    static_assert(kMaxSmallReach == 10, "a case for each");
    switch (line.disc->reach) {
        case 0:
            return gatherOpen<Columns<0>, kSource>(line, out);
        case 1:
            return gatherOpen<Columns<1>, kSource>(line, out);
        case 2:
            return gatherOpen<Columns<2>, kSource>(line, out);
        case 3:
            return gatherOpen<Columns<3>, kSource>(line, out);
        case 4:
            return gatherOpen<Columns<4>, kSource>(line, out);
        case 5:
            return gatherOpen<Columns<5>, kSource>(line, out);
        case 6:
            return gatherOpen<Columns<6>, kSource>(line, out);
        case 7:
            return gatherOpen<Columns<7>, kSource>(line, out);
        case 8:
            return gatherOpen<Columns<8>, kSource>(line, out);
        case 9:
            return gatherOpen<Columns<9>, kSource>(line, out);
        default:
            return gatherOpen<Columns<10>, kSource>(line, out);
    }
}

inline DilatedPart bothOf(DilatedPart a, DilatedPart b) {
    if (a.begin == a.end) return b;
    if (b.begin == b.end) return a;
    return {a.begin < b.begin ? a.begin : b.begin, a.end > b.end ? a.end : b.end};
}

DilatedPart gatherSmall(const SmallLine& line, uint8_t* out) {
    __builtin_memset(out, 0, static_cast<size_t>(line.units) * kSmallUnit);
    openUnits(line);
    // Discs narrower than a pixel weaken what they spread.
    const bool fills = line.disc->loss[0][0][0] == 0;
    DilatedPart full{0, 0};
    switch (line.source) {
        case SmallSource::Ink:
            if (fills) full = closeFullUnits<false>(line, out);
            return bothOf(full, gatherFrom<SmallSource::Ink>(line, out));
        case SmallSource::Complement:
            if (fills) full = closeFullUnits<true>(line, out);
            return bothOf(full, gatherFrom<SmallSource::Complement>(line, out));
        default:
            return gatherFrom<SmallSource::Both>(line, out);
    }
}

}  // namespace
}  // namespace QxFontEffect
