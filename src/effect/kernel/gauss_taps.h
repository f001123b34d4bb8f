#pragma once

#include <cstdint>

#include "effect/kernel/gauss_weights.h"

namespace QxFontEffect {

/// What has to be added when a bell moves on by one sample.
///
/// A sum over the bell's boxes changes at the box ends only: from position n - 1 to n by
///
///     D(n) = sum over k of h(k) * (s[n + k] - s[n - 1 - k])
///
/// with h(k) the height of the box that reaches k samples, or 0: an addition and a subtraction per box where the plain
/// sum has a product per sample. With Q the running totals of the samples, and R the running totals of Q, a sum over
/// many k may be taken from fewer places, where the heights or their slope change:
///
///     D(n) = - sum over k of c(k) * (Q[n - 1 + k] + Q[n - 1 - k])        with c(k) = h(k) - h(k - 1)
///          =   sum over k of e(k) * (R[n - 2 + k] - R[n - 1 - k])        with e(k) = c(k) - c(k - 1)
///
/// Heights that keep their value, or fall evenly, cost nothing on the way. A bell's heights do either but for a
/// sprinkling of ones left by rounding, so h is split: a base whose c or e is mostly 0 is taken from Q or R, and what
/// is left at single places from the samples or from Q. All of it is exact in 16 bits: D lies within +-128 * 255, and
/// what overflows on the way cancels.
struct GaussTaps {
    enum Source : int32_t { kSamples, kTotals, kSecondTotals };

    struct Tap {
        int32_t distance;  ///< k
        int32_t factor;    ///< h, c or e, not 0
        Source source;
    };

    // As many as a bell has boxes at most, and some more, since only cheaper splits are taken.
    static constexpr int kMaxTaps = 160;
    // Second totals are for bells up to this radius: wider ones are not smooth enough to be worth it.
    static constexpr int kMaxSecondRadius = 64;

    Tap taps[kMaxTaps];  ///< the largest absolute factors first
    int32_t count;
    int32_t radius;
    Source highest;  ///< what is needed
    bool isFlat;     ///< a product per tap is cheaper than taps gathered by factor
};

GaussTaps makeGaussTaps(const GaussBell& bell);

/// Taps as a list of places in memory, laid out for a loop that walks it once. Places count samples from a base that
/// the loop is given; factors stand twice in their word, in both halves.
///
/// Gathered by factor:
///
///     levels, then for each level: step, additions, subtractions, places to add, places to subtract
///
/// The places of all levels so far are summed up; after each level the sum is added `step` times to the change.
///
/// Flat:
///
///     sums, differences, then for each of both: factor, place, place
struct GaussProgram {
    /// 32-bit words that a program for a bell fills at most.
    static int maxWords(const GaussBell& bell) { return 3 + 5 * (bell.boxCount + kSpareTaps); }

    // A cheaper split has fewer operations, but may have this many more taps than there are boxes.
    static constexpr int kSpareTaps = 16;
};

/// Where a program finds what it reads around the position it makes, position 0.
struct GaussPlaces {
    int64_t step;       ///< from one position to the next
    int64_t source[3];  ///< of position 0, by GaussTaps::Source
    int64_t first;      ///< before this position everything is 0
    int64_t last;       ///< behind this position samples are 0 and totals stay; second totals are not asked for there
    int64_t zero;       ///< where 0 is found; kNoPlace when nothing lies outside
};

constexpr int64_t kNoPlace = INT32_MIN;

/// Writes the program for one position and returns its length in words.
int writeGaussProgram(const GaussTaps& taps, const GaussPlaces& places, int32_t* program);

}  // namespace QxFontEffect
