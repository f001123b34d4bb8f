// The loops of distance_kernels.h, included once per instruction set.

#include "effect/kernel/distance_kernels.h"
#include "effect/kernel/vector_root.h"
#include "effect/kernel/vectors.h"

namespace QxFontEffect {
namespace {

/// One more, up to 255.
inline U8s longer(U8s runs) {
    return runs - reinterpret_cast<U8s>(runs != 255);
}

inline uint8_t longerOne(uint8_t run) {
    return static_cast<uint8_t>(run + (run != 255));
}

void growRuns(const uint8_t* coverage, bool inside, int count, const uint8_t* before, uint8_t* runs) {
    // All bits of a pixel that is no seed.
    const uint8_t flip = inside ? 0 : 255;
    int i = 0;
    for (; i + kVectorBytes <= count; i += kVectorBytes) {
        U8s grown = longer(loadVector<U8s>(before + i));
        if (coverage != nullptr) grown &= reinterpret_cast<U8s>(loadVector<U8s>(coverage + i) != 0) ^ flip;
        storeVector(runs + i, grown);
    }
    for (; i < count; ++i) {
        const bool seed = coverage != nullptr && (coverage[i] != 0) != inside;
        runs[i] = seed ? uint8_t{0} : longerOne(before[i]);
    }
}

void joinRuns(const uint8_t* after, int count, uint8_t* runs) {
    int i = 0;
    for (; i + kVectorBytes <= count; i += kVectorBytes)
        storeVector(runs + i, lesser(longer(loadVector<U8s>(after + i)), loadVector<U8s>(runs + i)));
    for (; i < count; ++i) {
        const uint8_t run = longerOne(after[i]);
        runs[i] = run < runs[i] ? run : runs[i];
    }
}

void squareRuns(const uint8_t* runs, int count, int radius, uint16_t* squares) {
    const uint16_t far = static_cast<uint16_t>(radius * radius + 1);
    for (int i = 0; i < count; ++i) {
        const uint16_t run = runs[i];
        squares[i] = run <= radius ? static_cast<uint16_t>(run * run) : far;
    }
}

constexpr int kSquareVectors = kDistanceBlock / kU16Lanes;

struct Squares {
    U16s v[kSquareVectors];
};

inline Squares loadSquares(const uint16_t* from) {
    Squares s;
    for (int i = 0; i < kSquareVectors; ++i) s.v[i] = loadVector<U16s>(from + i * kU16Lanes);
    return s;
}

/// Whether all squares are at most `limit`.
inline bool allWithin(const Squares& s, U16s limit) {
    U16s above = greater(s.v[0], limit) ^ limit;
    for (int i = 1; i < kSquareVectors; ++i) above |= greater(s.v[i], limit) ^ limit;
    return noBitsSet(reinterpret_cast<U8s>(above));
}

void leastOfBlocks(const uint16_t* squares, int count, uint16_t* least) {
    for (int block = 0; block < count; ++block, squares += kDistanceBlock) {
        const Squares s = loadSquares(squares);
        U16s lanes = s.v[0];
        for (int i = 1; i < kSquareVectors; ++i) lanes = lesser(lanes, s.v[i]);
        uint16_t values[kU16Lanes];
        storeVector(values, lanes);
        uint16_t lowest = values[0];
        for (int i = 1; i < kU16Lanes; ++i) lowest = values[i] < lowest ? values[i] : lowest;
        least[block] = lowest;
    }
}

/// Roots of squares up to radius^2, `radius` for larger ones.
inline void storeRoots(const Squares& squares, int radius, float* dst) {
    uint16_t values[kDistanceBlock];
    std::memcpy(values, &squares, sizeof values);
    const F32s limit = F32s{} + static_cast<float>(radius * radius), far = F32s{} + static_cast<float>(radius);
    for (int i = 0; i < kDistanceBlock; i += kFloatLanes) {
        using HalfU16s = uint16_t __attribute__((vector_size(kVectorBytes / 2)));
        const F32s square =
            __builtin_convertvector(__builtin_convertvector(loadVector<HalfU16s>(values + i), I32s), F32s);
        storeVector(dst + i, square > limit ? far : fastRoot(square));
    }
}

inline void fillBlock(float value, float* dst) {
    for (int i = 0; i < kDistanceBlock; i += kFloatLanes) storeVector(dst + i, F32s{} + value);
}

inline void lowerTo(Squares& least, const uint16_t* squares, int dx) {
    const U16s more = U16s{} + static_cast<uint16_t>(dx * dx);
    const Squares left = loadSquares(squares - dx), right = loadSquares(squares + dx);
    for (int i = 0; i < kSquareVectors; ++i) least.v[i] = lesser(least.v[i], lesser(left.v[i], right.v[i]) + more);
}

/// The least square + dx^2 of a block.
/// @param lowest  of all squares that the search can meet: what is found at dx or farther is at least lowest + dx^2.
inline Squares leastAlong(const uint16_t* squares, int radius, int lowest) {
    Squares least = loadSquares(squares);
    int dx = 1;
    // Two at a time, since to ask whether to go on costs as much as a step.
    for (; lowest + dx * dx <= radius * radius && dx < radius; dx += 2) {
        if (allWithin(least, U16s{} + static_cast<uint16_t>(lowest + dx * dx))) return least;
        lowerTo(least, squares, dx);
        lowerTo(least, squares, dx + 1);
    }
    if (dx == radius) lowerTo(least, squares, dx);
    return least;
}

void searchRow(const uint16_t* squares, const uint16_t* least, int blocks, int radius, float* dst) {
    const int reach = (radius + kDistanceBlock - 1) / kDistanceBlock;
    const U16s zero{};
    for (int block = 0; block < blocks; ++block, squares += kDistanceBlock, dst += kDistanceBlock) {
        int lowest = least[block];
        for (int i = block - reach; i <= block + reach; ++i) lowest = least[i] < lowest ? least[i] : lowest;
        if (lowest > radius * radius)
            fillBlock(static_cast<float>(radius), dst);
        else if (allWithin(loadSquares(squares), zero))
            fillBlock(0.0f, dst);
        else
            storeRoots(leastAlong(squares, radius, lowest), radius, dst);
    }
}

/// A little below 255, so that full coverage is past 1 however the quotient rounds.
constexpr float kFull = 254.99f;

using ByteLanes = uint8_t __attribute__((vector_size(kFloatLanes)));

inline F32s offsetsOf(ByteLanes coverage, float far) {
    const F32s covered = __builtin_convertvector(__builtin_convertvector(coverage, I32s), F32s) / kFull;
    const F32s near = covered < 1.0f ? 1.0f - covered : F32s{};
    return covered <= 0.001f ? F32s{} + far : near;
}

inline void storeOffsets(const uint8_t* coverage, uint8_t flip, float far, float* dst) {
    for (int i = 0; i < kDistanceBlock; i += kFloatLanes)
        storeVector(dst + i, offsetsOf(loadVector<ByteLanes>(coverage + i) ^ flip, far));
}

inline bool allEqual(const uint8_t* bytes, uint8_t value) {
    U8s difference = loadVector<U8s>(bytes) ^ value;
    for (int i = kVectorBytes; i < kDistanceBlock; i += kVectorBytes) difference |= loadVector<U8s>(bytes + i) ^ value;
    return noBitsSet(difference);
}

void startRow(const uint8_t* coverage, bool complement, int count, float far, float* dst) {
    const uint8_t flip = complement ? 255 : 0;
    for (int x = 0; x < count; x += kDistanceBlock) {
        const int end = count - x < kDistanceBlock ? count : x + kDistanceBlock;
        const bool whole = end - x == kDistanceBlock;
        if (whole && allEqual(coverage + x, flip)) {
            fillBlock(far, dst + x);
        } else if (whole && allEqual(coverage + x, static_cast<uint8_t>(255 - flip))) {
            fillBlock(0.0f, dst + x);
        } else if (whole) {
            storeOffsets(coverage + x, flip, far, dst + x);
        } else {
            uint8_t bytes[kDistanceBlock] = {};
            float offsets[kDistanceBlock];
            for (int i = x; i < end; ++i) bytes[i - x] = coverage[i];
            storeOffsets(bytes, flip, far, offsets);
            for (int i = x; i < end; ++i) dst[i] = offsets[i - x];
        }
    }
}

void markOutline(const uint8_t* above, const uint8_t* here, const uint8_t* below, int count, bool complement,
                 OutlineRule rule, uint8_t* marks) {
    const uint8_t flip = complement ? 255 : 0;
    for (int i = 0; i < count; ++i) {
        const uint8_t c = here[i] ^ flip;
        const uint8_t up = above[i] ^ flip, down = below[i] ^ flip;
        const uint8_t left = here[i - 1] ^ flip, right = here[i + 1] ^ flip;
        const uint8_t vertical = up < down ? up : down, horizontal = left < right ? left : right;
        const uint8_t least = vertical < horizontal ? vertical : horizontal;
        const uint8_t enough = rule == OutlineRule::BesideLess ? 255 : 1;
        const bool within = (c == 255) & (least >= enough);
        marks[i] = static_cast<uint8_t>((c != 0) & !within);
    }
}

constexpr int kFloatVectors = kDistanceBlock / kFloatLanes;

struct Distances {
    F32s v[kFloatVectors];
};

inline Distances loadDistances(const float* from) {
    Distances d;
    for (int i = 0; i < kFloatVectors; ++i) d.v[i] = loadVector<F32s>(from + i * kFloatLanes);
    return d;
}

inline float largestOf(const Distances& d) {
    F32s most = d.v[0];
    for (int i = 1; i < kFloatVectors; ++i) most = greater(most, d.v[i]);
    float largest = most[0];
    for (int i = 1; i < kFloatLanes; ++i) largest = most[i] > largest ? most[i] : largest;
    return largest;
}

inline float storeDistances(const Distances& d, float* to) {
    for (int i = 0; i < kFloatVectors; ++i) storeVector(to + i * kFloatLanes, d.v[i]);
    return largestOf(d);
}

float spreadSources(const OutlineSource* sources, int count, const float* roots, int x, float* block) {
    Distances d = loadDistances(block);
    for (int s = 0; s < count; ++s) {
        const float* root = roots + (x - sources[s].x);
        for (int i = 0; i < kFloatVectors; ++i)
            d.v[i] = lesser(sources[s].offset + loadVector<F32s>(root + i * kFloatLanes), d.v[i]);
    }
    return storeDistances(d, block);
}

inline void scatterVectors(const OutlineSource& source, const ScatterRow& row, int from, int count) {
    float* distances = row.distances + from;
    const float* roots = row.roots + (from - source.x);
    for (int i = 0; i < count * kFloatLanes; i += kFloatLanes)
        storeVector(distances + i,
                    lesser(source.offset + loadVector<F32s>(roots + i), loadVector<F32s>(distances + i)));
}

/// Vectors are counted from column 0, whatever the source's column: neighbouring sources overlap, and a vector that was
/// just stored can be read again at once where it was stored, at another offset only after a while. And a row takes
/// the same number of them wherever the source lies, so that the processor can foresee the end of the loop.
void scatterSources(const OutlineSource* sources, int count, const ScatterRow* rows, int rowCount, int width) {
    for (int s = 0; s < count; ++s) {
        const OutlineSource source = sources[s];
        for (int r = 0; r < rowCount; ++r) {
            const int left = source.x - rows[r].reach, right = source.x + rows[r].reach;
            const int from = left < 0 ? 0 : left / kFloatLanes * kFloatLanes;
            if (left >= 0 && right < width)
                scatterVectors(source, rows[r], from, (2 * rows[r].reach + 2 * kFloatLanes) / kFloatLanes);
            else if (right >= 0 && left < width)
                scatterVectors(source, rows[r], from,
                               ((right < width ? right + 1 : width) - from + kFloatLanes - 1) / kFloatLanes);
        }
    }
}

float spreadPieces(const OutlinePiece* pieces, int count, int x, int y, float* block) {
    F32s lanes{};
    for (int i = 0; i < kFloatLanes; ++i) lanes[i] = static_cast<float>(i);
    Distances d = loadDistances(block);
    for (int p = 0; p < count; ++p) {
        const OutlinePiece& piece = pieces[p];
        const float dy = static_cast<float>(y - piece.y);
        for (int i = 0; i < kFloatVectors; ++i) {
            const F32s dx = lanes + static_cast<float>(x + i * kFloatLanes - piece.x);
            const F32s across = dx * piece.nx + (dy * piece.ny - piece.place);
            const F32s along = dx * piece.ny - dy * piece.nx;
            const F32s beyond = greater(greater(along, -along) - piece.halfLength, F32s{});
            d.v[i] = lesser(across * across + beyond * beyond, d.v[i]);
        }
    }
    return storeDistances(d, block);
}

float largest(const float* block) {
    return largestOf(loadDistances(block));
}

void bandHeights(const uint8_t* coverage, int blocks, float half, float* heights) {
    for (int i = 0; i < blocks * kDistanceBlock; ++i) {
        const float distance = __builtin_sqrtf(heights[i]);
        const float height = half + (coverage[i] > 127 ? -distance : distance);
        const float raised = height > 0.0f ? height : 0.0f;
        heights[i] = raised < 2.0f * half ? raised : 2.0f * half;
    }
}

constexpr DistanceKernels kernelsNamed(const char* name) {
    return {name,        growRuns,      joinRuns,       squareRuns,   leastOfBlocks, searchRow,  startRow,
            markOutline, spreadSources, scatterSources, spreadPieces, largest,       bandHeights};
}

}  // namespace
}  // namespace QxFontEffect
