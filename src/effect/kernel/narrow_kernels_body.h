// The loops of narrow_kernels.h, included once per instruction set. Everything is internal to the including file, and
// nothing inline from another header is called: a copy of it compiled for a newer processor could replace the one that
// all processors run.

#include "effect/kernel/narrow_kernels.h"
#include "effect/kernel/vectors.h"

namespace QxFontEffect {
namespace {

constexpr int kUnitVectors = kNarrowUnit / kU16Lanes;

/// A unit of words.
struct Unit {
    U16s v[kUnitVectors];
};

inline Unit widened(const uint8_t* samples) {
    Unit unit;
#if defined(__AVX2__)
    // The compiler makes five operations of the conversion.
    unit.v[0] = (U16s)_mm256_cvtepu8_epi16(loadVector<__m128i>(samples));
#else
    using HalfBytes = uint8_t __attribute__((vector_size(kVectorBytes / 2)));
    for (int i = 0; i < kUnitVectors; ++i)
        unit.v[i] = __builtin_convertvector(loadVector<HalfBytes>(samples + i * kU16Lanes), U16s);
#endif
    return unit;
}

// Where a unit is put, by its row and its number.

struct LinesPlace {
    NarrowLines lines;

    void put(int row, ptrdiff_t unit, const Unit& words) const {
        uint16_t* at = lines.samples + row * lines.stride + unit * kNarrowUnit;
        for (int i = 0; i < kUnitVectors; ++i) storeVector(at + i * kU16Lanes, words.v[i]);
    }
};

struct WindowPlace {
    NarrowWindow window;

    void put(int row, ptrdiff_t unit, const Unit& words) const {
        uint16_t* at = window.samples + unit * window.unitStep + row * kNarrowUnit;
        for (int i = 0; i < kUnitVectors; ++i) storeVector(at + i * kU16Lanes, words.v[i]);
    }
};

struct BytePlace {
    uint8_t* out;
    ptrdiff_t stride;

    void put(int row, ptrdiff_t unit, const Unit& words) const {
        uint8_t* at = out + row * stride + unit * kNarrowUnit;
#if defined(__AVX2__)
        const __m256i both = (__m256i)words.v[0];
        storeVector(at, _mm_packus_epi16(_mm256_castsi256_si128(both), _mm256_extracti128_si256(both, 1)));
#elif defined(__SSE2__)
        storeVector(at, _mm_packus_epi16((__m128i)words.v[0], (__m128i)words.v[1]));
#else
        using HalfBytes = uint8_t __attribute__((vector_size(kVectorBytes / 2)));
        for (int i = 0; i < kUnitVectors; ++i)
            storeVector(at + i * kU16Lanes, __builtin_convertvector(words.v[i], HalfBytes));
#endif
    }
};

/// Calls `make` with the number of each marked unit of a row.
template <typename Make>
inline void forEachUnit(const NarrowMarks& units, int row, const Make& make) {
    for (int word = 0; word < units.words; ++word)
        for (uint64_t bits = units.bits[ptrdiff_t{word} * units.step + row] & kNarrowLeftHalves; bits != 0;
             bits &= bits - 1)
            make(ptrdiff_t{word} * 32 + __builtin_ctzll(bits) / 2);
}

template <typename Place>
inline void widen(const ConstPlane8& src, const NarrowMarks& units, const Place& place) {
    const uint8_t* samples = src.data;
    for (int row = 0; row < src.height; ++row, samples += src.stride)
        forEachUnit(units, row, [&](ptrdiff_t unit) { place.put(row, unit, widened(samples + unit * kNarrowUnit)); });
}

void widenToLines(ConstPlane8 src, NarrowMarks units, NarrowLines to) {
    widen(src, units, LinesPlace{to});
}

void widenToWindow(ConstPlane8 src, NarrowMarks units, NarrowWindow to) {
    widen(src, units, WindowPlace{to});
}

/// The high halves of the products.
inline U16s highProduct(U16s a, U16s b) {
#if defined(__AVX2__)
    return (U16s)_mm256_mulhi_epu16((__m256i)a, (__m256i)b);
#elif defined(__SSE2__)
    return (U16s)_mm_mulhi_epu16((__m128i)a, (__m128i)b);
#else
    const U32s even = ((U32s)a & 0xFFFFu) * ((U32s)b & 0xFFFFu);
    const U32s odd = ((U32s)a >> 16) * ((U32s)b >> 16);
    return (U16s)(even >> 16 | (odd & 0xFFFF0000u));
#endif
}

/// All bits where a is below b.
inline U16s isBelow(U16s a, U16s b) {
#if defined(__AVX2__)
    // Unsigned words are compared by their larger one; the compiler flips signs first.
    return ~(U16s)_mm256_cmpeq_epi16(_mm256_max_epu16((__m256i)a, (__m256i)b), (__m256i)a);
#else
    return (U16s)(a < b);
#endif
}

inline U16s inAllLanes(int value) {
    return U16s{} + static_cast<uint16_t>(value);
}

/// Sums by one bell, whose numbers the compiler knows.
template <int index>
class NarrowSum {
public:
    static constexpr int kRadius = kNarrowBell<index>.radius;

    explicit NarrowSum(int32_t emptySum) : mStart(inAllLanes(emptySum)) { setFactors<0>(); }

    /// @param centre  samples under the centre of the bell.
    /// @param step    words from one sample under the bell to the next.
    inline U16s operator()(const uint16_t* centre, ptrdiff_t step) const {
        Parts parts = {{}, times<0>(loadVector<U16s>(centre)), mStart};
        addPairs<1>(centre, step, parts);
        const U16s sum = parts.nearest + parts.others + (kIsHalved ? parts.odd >> 1 : parts.odd);
        if (!kNarrowBell<index>.mayWrap) return quotient(sum);
        const U16s wraps = isBelow(sum, parts.nearest);
        return quotient(sum + (wraps & inAllLanes(kNarrowBell<index>.remainder))) +
               (wraps & inAllLanes(kNarrowBell<index>.wrapped));
    }

private:
    static constexpr bool kIsHalved = kRadius > NarrowBell::kMaxWholeRadius;
    template <int distance>
    static constexpr uint16_t kWeight = kNarrowBell<index>.weights[distance];

    struct Parts {
        U16s nearest;
        U16s others;
        U16s odd;
    };

    static constexpr bool isPowerOfTwo(int value) { return (value & (value - 1)) == 0; }

    /// Left alone, the compiler makes a product with a number it knows out of shifts and additions, which takes longer.
    template <int distance>
    inline void setFactors() {
        if constexpr (distance <= kRadius) {
            int factor = kWeight<distance>;
            __asm__("" : "+r"(factor));
            mFactors[distance] = inAllLanes(factor);
            setFactors<distance + 1>();
        }
    }

    template <int distance>
    inline U16s times(U16s samples) const {
        return isPowerOfTwo(kWeight<distance>) ? samples * kWeight<distance> : samples * mFactors[distance];
    }

    template <int distance>
    inline void addPairs(const uint16_t* centre, ptrdiff_t step, Parts& parts) const {
        if constexpr (distance <= kRadius) {
            const U16s pair = loadVector<U16s>(centre + distance * step) + loadVector<U16s>(centre - distance * step);
            if constexpr (kWeight<distance> != 0)
                (distance <= NarrowBell::kNearPairs ? parts.nearest : parts.others) += times<distance>(pair);
            if constexpr (kNarrowBell<index>.isOdd[distance]) parts.odd += pair;
            addPairs<distance + 1>(centre, step, parts);
        }
    }

    static inline U16s quotient(U16s sums) {
        constexpr NarrowBell kBell = kNarrowBell<index>;
        return highProduct(sums >> kBell.before, inAllLanes(kBell.multiplier)) >> kBell.after;
    }

    U16s mStart;
    U16s mFactors[kRadius + 1];
};

template <int index>
struct LinesBy {
    template <typename Place>
    static void run(const NarrowPass& pass, const NarrowLines& lines, const Place& place) {
        const NarrowSum<index> sum(pass.emptySum);
        for (int row = 0; row < pass.rows; ++row) {
            const uint16_t* samples = lines.samples + row * lines.stride;
            forEachUnit(pass.units, row, [&](ptrdiff_t unit) {
                Unit made;
                for (int i = 0; i < kUnitVectors; ++i) made.v[i] = sum(samples + unit * kNarrowUnit + i * kU16Lanes, 1);
                place.put(row, unit, made);
            });
        }
    }
};

template <int index>
struct ColumnsBy {
    template <typename Place>
    static void run(const NarrowPass& pass, const NarrowWindow& window, const Place& place) {
        const NarrowSum<index> sum(pass.emptySum);
        for (int row = 0; row < pass.rows; ++row) {
            const uint16_t* centre = window.samples + (row + NarrowSum<index>::kRadius) * kNarrowUnit;
            forEachUnit(pass.units, row, [&](ptrdiff_t unit) {
                Unit made;
                for (int i = 0; i < kUnitVectors; ++i)
                    made.v[i] = sum(centre + unit * window.unitStep + i * kU16Lanes, kNarrowUnit);
                place.put(row, unit, made);
            });
        }
    }
};

/// Runs the pass that is made for the bell.
template <template <int> class By, int index = 0, typename Source, typename Place>
inline void run(const NarrowPass& pass, const Source& source, const Place& place) {
    if constexpr (index < kNarrowBells) {
        if (pass.bell != index) return run<By, index + 1>(pass, source, place);
        if constexpr (kNarrowBell<index>.isPossible) By<index>::run(pass, source, place);
    }
}

void linesToBytes(const NarrowPass& pass, NarrowLines lines, uint8_t* out, ptrdiff_t stride) {
    run<LinesBy>(pass, lines, BytePlace{out, stride});
}

void linesToWindow(const NarrowPass& pass, NarrowLines lines, NarrowWindow to) {
    run<LinesBy>(pass, lines, WindowPlace{to});
}

void columnsToBytes(const NarrowPass& pass, NarrowWindow window, uint8_t* out, ptrdiff_t stride) {
    run<ColumnsBy>(pass, window, BytePlace{out, stride});
}

void columnsToLines(const NarrowPass& pass, NarrowWindow window, NarrowLines to) {
    run<ColumnsBy>(pass, window, LinesPlace{to});
}

/// Bits of the 8-byte groups of a vector that are not all 0.
inline uint64_t groupsSet(const uint8_t* at) {
    const U64s groups = loadVector<U64s>(at);
#if defined(__AVX2__)
    const __m256i blank = _mm256_cmpeq_epi64((__m256i)groups, __m256i{});
    return static_cast<uint64_t>(_mm256_movemask_pd((__m256d)blank)) ^ 15;
#else
    return uint64_t{groups[0] != 0} | uint64_t{groups[1] != 0} << 1;
#endif
}

void findInk(ConstPlane8 src, NarrowMarks marks) {
    for (int row = 0; row < src.height; ++row) {
        const uint8_t* samples = src.data + row * src.stride;
        for (int word = 0; word < marks.words; ++word) {
            uint64_t bits = 0;
            for (int group = 0; group < 64; group += kVectorBytes / 8, samples += kVectorBytes)
                bits |= groupsSet(samples) << group;
            marks.bits[ptrdiff_t{word} * marks.step + row] = bits;
        }
    }
}

constexpr NarrowKernels narrowKernelsNamed(const char* name) {
    return {name, findInk, widenToLines, widenToWindow, linesToBytes, linesToWindow, columnsToBytes, columnsToLines};
}

}  // namespace
}  // namespace QxFontEffect
