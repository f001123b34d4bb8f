// The loops of gauss_kernels.h, included once per instruction set. Everything is internal to the including file, and
// nothing inline from another header is called: a copy of it compiled for a newer processor could replace the one that
// all processors run.

#include "effect/kernel/gauss_program_body.h"

namespace QxFontEffect {
namespace {

using HalfBytes = uint8_t __attribute__((vector_size(kVectorBytes / 2)));

inline U16s widened(const uint8_t* at) {
#if defined(__AVX2__)
    // The compiler makes five operations of the conversion.
    return (U16s)_mm256_cvtepu8_epi16(loadVector<__m128i>(at));
#else
    return __builtin_convertvector(loadVector<HalfBytes>(at), U16s);
#endif
}

/// Stores some vectors of samples below 256 as bytes.
template <int vectors>
inline void storeSamples(uint8_t* at, const U16s* words) {
#if defined(__AVX2__)
    if (vectors % 2 == 0) {
        for (int i = 0; i + 1 < vectors; i += 2) {
            const __m256i packed = _mm256_packus_epi16((__m256i)words[i], (__m256i)words[i + 1]);
            storeVector(at + i * kU16Lanes, _mm256_permute4x64_epi64(packed, 0xD8));
        }
        return;
    }
#endif
    for (int i = 0; i < vectors; ++i) storeVector(at + i * kU16Lanes, __builtin_convertvector(words[i], HalfBytes));
}

/// Makes some vectors of one row of the vertical pass by running sums, which lie in `memory` between rows.
template <typename Sums, int vectors>
inline void makeColumns(const GaussPlan& plan, const int32_t* program, const uint16_t* base, Sums* memory,
                        uint8_t* out) {
    U16s words[vectors];
    runProgram<vectors>(plan.taps.isFlat, program, base, kU16Lanes, words);
    for (int i = 0; i < vectors; ++i) {
        Sums sums = memory[i];
        sums.add(words[i]);
        memory[i] = sums;
        words[i] = sums.quotients(plan.quotient);
    }
    storeSamples<vectors>(out, words);
}

template <typename Sums>
void columnsBySums(const GaussPlan& plan, const GaussColumnsBlock& block) {
    Sums* sums = reinterpret_cast<Sums*>(block.sums);
    for (int row = 0; row < block.rowCount; ++row) {
        const int32_t* program = block.rows[row].program;
        const uint16_t* base = block.window + block.rows[row].base;
        uint8_t* out = block.out + row * block.outStride;
        int column = 0;
        for (; column + (kVectors - 1) * kU16Lanes < block.columns; column += kVectors * kU16Lanes)
            makeColumns<Sums, kVectors>(plan, program, base + column, sums + column / kU16Lanes, out + column);
        for (; column < block.columns; column += kU16Lanes)
            makeColumns<Sums, 1>(plan, program, base + column, sums + column / kU16Lanes, out + column);
    }
}

/// Sets the sums of a block from `values`, in the order of the columns.
template <typename Sums>
void setSums(const int32_t* values, int32_t* memory) {
    Sums* sums = reinterpret_cast<Sums*>(memory);
    for (int i = 0; i < kGaussBlock / kU16Lanes; ++i) {
        I32s even{}, odd{};
        for (int lane = 0; lane < kFloatLanes; ++lane) {
            even[lane] = values[i * kU16Lanes + 2 * lane];
            odd[lane] = values[i * kU16Lanes + 2 * lane + 1];
        }
        sums[i] = Sums(even, odd);
    }
}

/// The sums of the rows at a column, by growing each box of the bell out of the one inside it.
template <typename Sums>
inline Sums sumsAt(const GaussBell& bell, const uint16_t* column, int columnWords, int32_t emptySum) {
    I32s boxEven = evenOf(wordsAt(column)), boxOdd = oddOf(wordsAt(column));
    I32s even = I32s{} + emptySum, odd = even;
    int reach = 0;
    for (int b = 0; b < bell.boxCount; ++b) {
        for (; reach < bell.boxes[b].reach; ++reach) {
            const ptrdiff_t step = ptrdiff_t{reach + 1} * columnWords;
            const U16s both = wordsAt(column + step) + wordsAt(column - step);
            boxEven += evenOf(both);
            boxOdd += oddOf(both);
        }
        even += boxEven * bell.boxes[b].height;
        odd += boxOdd * bell.boxes[b].height;
    }
    return Sums(even, odd);
}

/// Totals of the columns of a strip from left to right, and second totals where columns have room for them. They start
/// from 0 in the column before the first.
template <int columnWords>
class ColumnTotals {
public:
    ColumnTotals(uint16_t* strip, int64_t first) : mAt(strip + first * columnWords) {
        storeVector(mAt - columnWords + kGaussRows, mTotal);
        if (kSecond) storeVector(mAt - columnWords + 2 * kGaussRows, mTotal);
    }
    /// Takes in the next columns.
    void add(int64_t columns) {
        U16s total = mTotal, secondTotal = mSecondTotal;
        uint16_t* at = mAt;
        for (; columns > 0; --columns, at += columnWords) {
            total += wordsAt(at);
            storeVector(at + kGaussRows, total);
            if (!kSecond) continue;
            secondTotal += total;
            storeVector(at + 2 * kGaussRows, secondTotal);
        }
        mAt = at;
        mTotal = total;
        mSecondTotal = secondTotal;
    }

private:
    static constexpr bool kSecond = columnWords == 3 * kGaussRows;

    uint16_t* mAt;
    U16s mTotal = {};
    U16s mSecondTotal = {};
};

// Vectors of 32 bytes are used as two of 16 bytes side by side: that is what their processors shuffle cheaply.
#if defined(__AVX2__)
inline U16s interleavedLow(U16s a, U16s b) {
    return __builtin_shufflevector(a, b, 0, 16, 1, 17, 2, 18, 3, 19, 8, 24, 9, 25, 10, 26, 11, 27);
}
inline U16s interleavedHigh(U16s a, U16s b) {
    return __builtin_shufflevector(a, b, 4, 20, 5, 21, 6, 22, 7, 23, 12, 28, 13, 29, 14, 30, 15, 31);
}
/// The even bytes of each half, then its odd ones.
inline U8s evenThenOdd(U8s v) {
    return __builtin_shufflevector(v, v, 0, 2, 4, 6, 8, 10, 12, 14, 1, 3, 5, 7, 9, 11, 13, 15, 16, 18, 20, 22, 24, 26,
                                   28, 30, 17, 19, 21, 23, 25, 27, 29, 31);
}
#else
inline U16s interleavedLow(U16s a, U16s b) {
    return __builtin_shufflevector(a, b, 0, 8, 1, 9, 2, 10, 3, 11);
}
inline U16s interleavedHigh(U16s a, U16s b) {
    return __builtin_shufflevector(a, b, 4, 12, 5, 13, 6, 14, 7, 15);
}
inline U8s evenThenOdd(U8s v) {
    return __builtin_shufflevector(v, v, 0, 2, 4, 6, 8, 10, 12, 14, 1, 3, 5, 7, 9, 11, 13, 15);
}
#endif

/// Transposes the 8 x 8 words of eight vectors, in each half of them: three rounds of interleaving the first four with
/// the last four bring lane i of vector j to lane j of vector i.
inline void transpose8(U16s* v) {
    for (int round = 0; round < 3; ++round) {
        U16s mixed[8];
        for (int i = 0; i < 4; ++i) {
            mixed[2 * i] = interleavedLow(v[i], v[i + 4]);
            mixed[2 * i + 1] = interleavedHigh(v[i], v[i + 4]);
        }
        for (int i = 0; i < 8; ++i) v[i] = mixed[i];
    }
}

constexpr int kTile = 16;

/// Writes kTile columns of quotients, a row a lane, as rows of bytes.
inline void storeTile(const U16s* columns, uint8_t* out, ptrdiff_t stride) {
    // Columns j and j + 8 share the words of a vector; once transposed, a row is c0 c8 c1 c9 ... c7 c15.
    U16s rows[8];
    for (int j = 0; j < 8; ++j) rows[j] = columns[j] | columns[j + 8] << 8;
    transpose8(rows);
    for (int i = 0; i < 8; ++i) {
        const U8s bytes = evenThenOdd((U8s)rows[i]);
        std::memcpy(out + i * stride, &bytes, kTile);
        if (kVectorBytes == 32)
            std::memcpy(out + (i + 8) * stride, reinterpret_cast<const uint8_t*>(&bytes) + kVectorBytes / 2, kTile);
    }
}

/// Writes the first `width` columns and `rows` rows of a tile.
inline void storeTilePart(const U16s* columns, int width, int rows, uint8_t* out, ptrdiff_t stride) {
    if (width >= kTile && rows >= kU16Lanes) {
        storeTile(columns, out, stride);
        return;
    }
    uint8_t tile[kU16Lanes * kTile];
    storeTile(columns, tile, kTile);
    const size_t bytes = static_cast<size_t>(width < kTile ? width : kTile);
    for (int y = 0; y < rows && y < kU16Lanes; ++y) std::memcpy(out + y * stride, tile + y * kTile, bytes);
}

template <typename Sums, int columnWords>
void linesBySums(const GaussPlan& plan, const GaussLinesRun& run) {
    const int64_t radius = plan.bell.radius;
    const bool isTotalled = plan.taps.highest != GaussTaps::kSamples;
    for (int first = 0; first < run.rows; first += kU16Lanes) {
        uint16_t* columns = run.samples + first;
        // Totals run ahead of the outputs by the radius, so that what they are made of and what is made of them meet
        // in the cache.
        ColumnTotals<columnWords> totals(columns, -2 - radius);
        if (isTotalled) totals.add(2 * radius + 2);
        Sums sums = run.isFirst ? sumsAt<Sums>(plan.bell, columns - columnWords, columnWords, run.emptySum)
                                : Sums(run.emptySum);
        for (int x = 0; x < run.count; x += kTile) {
            if (isTotalled) totals.add(kTile);
            U16s quotients[kTile];
            for (int column = 0; column < kTile; column += kVectors) {
                const uint16_t* base = columns + ptrdiff_t{x + column} * columnWords;
                U16s change[kVectors];
                runProgram<kVectors>(plan.taps.isFlat, run.program, base, columnWords, change);
                for (int i = 0; i < kVectors; ++i) {
                    sums.add(change[i]);
                    quotients[column + i] = sums.quotients(plan.quotient);
                }
            }
            storeTilePart(quotients, run.count - x, run.rows - first, run.out + first * run.outStride + x,
                          run.outStride);
        }
    }
}

inline bool anyOf(const uint8_t* src, int count) {
    U8s seen = {};
    int x = 0;
    for (; x + kVectorBytes <= count; x += kVectorBytes) seen |= loadVector<U8s>(src + x);
    uint8_t any = 0;
    for (; x < count; ++x) any = static_cast<uint8_t>(any | src[x]);
    return any != 0 || !noBitsSet(seen);
}

void countInk(const uint8_t* src, ptrdiff_t stride, int columns, int rows, int32_t* before) {
    const int whole = columns / kGaussBlock * kGaussBlock;
    const ptrdiff_t step = ptrdiff_t{rows} + 1;
    for (int x = 0; x < columns; x += kGaussBlock) before[x / kGaussBlock * step] = 0;
    // Row by row, as the samples lie in memory: they are looked at for the first time.
    for (int y = 0; y < rows; ++y, src += stride) {
        int32_t* count = before + y + 1;
        // Whole blocks apart: a count that the compiler knows leaves no loops.
        for (int x = 0; x < whole; x += kGaussBlock, count += step)
            *count = count[-1] + (anyOf(src + x, kGaussBlock) ? 1 : 0);
        if (whole < columns) *count = count[-1] + (anyOf(src + whole, columns - whole) ? 1 : 0);
    }
}

/// Rows of a block one below the other, with what has to be totalled up.
template <GaussTaps::Source highest>
class BlockRows {
public:
    explicit BlockRows(uint16_t* dst) : mRow(dst) {}

    void add(const uint8_t* samples) {
        for (int i = 0; i < kCount; ++i) put(i, widened(samples + i * kU16Lanes));
        mRow += kGaussBlockRow;
    }
    void addZeros() {
        for (int i = 0; i < kCount; ++i) put(i, U16s{});
        mRow += kGaussBlockRow;
    }

private:
    static constexpr int kCount = kGaussBlock / kU16Lanes;

    void put(int i, U16s words) {
        uint16_t* first = mRow + i * kU16Lanes;
        uint16_t* second = first + kGaussBlock;
        if (highest == GaussTaps::kSamples) {
            storeVector(first, words);
            return;
        }
        mTotals[i] += words;
        mSecondTotals[i] += mTotals[i];
        storeVector(first, highest == GaussTaps::kTotals ? words : mTotals[i]);
        storeVector(second, highest == GaussTaps::kTotals ? mTotals[i] : mSecondTotals[i]);
    }

    uint16_t* mRow;
    U16s mTotals[kCount] = {};
    U16s mSecondTotals[kCount] = {};
};

template <GaussTaps::Source highest>
void widenRows(const uint8_t* src, ptrdiff_t stride, int columns, int rows, int moreRows, uint16_t* dst) {
    BlockRows<highest> block(dst);
    if (columns == kGaussBlock) {
        for (int y = 0; y < rows; ++y) block.add(src + y * stride);
    } else {
        uint8_t whole[kGaussBlock];
        std::memset(whole, 0, sizeof whole);
        for (int y = 0; y < rows; ++y) {
            std::memcpy(whole, src + y * stride, static_cast<size_t>(columns));
            block.add(whole);
        }
    }
    for (int y = 0; y < moreRows; ++y) block.addZeros();
}

void widenBlock(const uint8_t* src, ptrdiff_t stride, int columns, int rows, int moreRows, GaussTaps::Source highest,
                uint16_t* dst) {
    if (highest == GaussTaps::kSamples)
        widenRows<GaussTaps::kSamples>(src, stride, columns, rows, 0, dst);
    else if (highest == GaussTaps::kTotals)
        widenRows<GaussTaps::kTotals>(src, stride, columns, rows, 0, dst);
    else
        widenRows<GaussTaps::kSecondTotals>(src, stride, columns, rows, moreRows, dst);
}

/// Turns kGaussRows rows of kGaussBlock bytes, a tile of 16 columns at a time.
inline void turnRows(const uint8_t* src, ptrdiff_t stride, uint16_t* strip, int columnWords) {
    for (int x = 0; x < kGaussBlock; x += kTile)
        for (int first = 0; first < kGaussRows; first += kU16Lanes) {
            U8s rows[8];
            for (int i = 0; i < 8; ++i) {
                const uint8_t* row = src + (first + i) * stride + x;
                uint8_t* halves = reinterpret_cast<uint8_t*>(&rows[i]);
                std::memcpy(halves, row, kTile);
                if (kVectorBytes == 32) std::memcpy(halves + kVectorBytes / 2, row + 8 * stride, kTile);
            }
            // Words are pairs of neighbouring columns until they are transposed.
            U16s pairs[8];
            for (int i = 0; i < 8; ++i) pairs[i] = (U16s)rows[i];
            transpose8(pairs);
            for (int i = 0; i < 8; ++i) {
                uint16_t* column = strip + (x + 2 * i) * columnWords + first;
                storeVector(column, pairs[i] & 255);
                storeVector(column + columnWords, pairs[i] >> 8);
            }
        }
}

void turnBlock(const uint8_t* src, ptrdiff_t stride, int columns, int rows, uint16_t* strip, int columnWords) {
    if (columns == kGaussBlock && rows == kGaussRows) {
        turnRows(src, stride, strip, columnWords);
        return;
    }
    uint8_t whole[kGaussRows * kGaussBlock];
    std::memset(whole, 0, sizeof whole);
    for (int y = 0; y < rows; ++y) std::memcpy(whole + y * kGaussBlock, src + y * stride, static_cast<size_t>(columns));
    turnRows(whole, kGaussBlock, strip, columnWords);
}

void columnsBlock(const GaussPlan& plan, const GaussColumnsBlock& block) {
    if (plan.quotient.isSmall)
        columnsBySums<SmallSums>(plan, block);
    else
        columnsBySums<LargeSums>(plan, block);
}

template <typename Sums>
void linesOf(const GaussPlan& plan, const GaussLinesRun& run) {
    if (plan.taps.highest == GaussTaps::kSecondTotals)
        linesBySums<Sums, 3 * kGaussRows>(plan, run);
    else
        linesBySums<Sums, 2 * kGaussRows>(plan, run);
}

void linesRun(const GaussPlan& plan, const GaussLinesRun& run) {
    if (plan.quotient.isSmall)
        linesOf<SmallSums>(plan, run);
    else
        linesOf<LargeSums>(plan, run);
}

void startSums(const GaussPlan& plan, const int32_t* values, int32_t* sums) {
    if (plan.quotient.isSmall)
        setSums<SmallSums>(values, sums);
    else
        setSums<LargeSums>(values, sums);
}

}  // namespace
}  // namespace QxFontEffect
