#pragma once

#include <cstdint>

#include "effect/kernel/gauss_weights.h"

namespace QxFontEffect {

/// What has to be added when a bell moves on by one sample.
///
/// A sum over the bell's boxes changes at the box ends only: from position n - 1 to n by
///
///     sum over the boxes of height * (s[n + reach] - s[n - 1 - reach]),
///
/// one addition and one subtraction per box where the plain sum has a product per sample. The heights as a function of
/// the reach, h(0), h(1), ... h(radius), come in long stretches of nearly equal values; with Q the running totals of
/// the samples, a stretch of equal heights costs its two ends only, because
///
///     sum over all k of h(k) * (s[n + k] - s[n - 1 - k]) = - sum over j of (h(j) - h(j - 1)) * (Q[n - 1 + j] + Q[n - 1
///     - j]).
///
/// So the heights are split into a base of stretches, taken from Q, and what is left at single reaches, taken from the
/// samples. All of it is exact in 16 bits, since the change lies within +-128 * 255: carries beyond may be dropped on
/// the way.
struct GaussTaps {
    struct Tap {
        int32_t distance;  ///< reach k, or place j where the base changes
        int32_t height;    ///< not 0
        bool ofTotals;     ///< of Q, else of the samples
    };

    // As many boxes as the bell has at most, since only cheaper splits are taken.
    static constexpr int kMaxTaps = 160;

    Tap taps[kMaxTaps];  ///< the largest absolute heights first
    int32_t count;
    int32_t radius;
    bool usesTotals;
};

GaussTaps makeGaussTaps(const GaussBell& bell);

/// Taps as a list of places in memory, laid out for a loop that walks it once:
///
///     levels, then for each level: factor, additions, subtractions, places to add, places to subtract
///
/// The places of all levels so far are summed up; after each level the sum is added `factor` times to the change.
/// Places count samples from a base that the loop is given. Factors stand twice in their word, in both halves.
///
/// Narrow bells are summed afresh for every output instead, which is cheaper than to carry sums along when there are
/// few taps. Their program is
///
///     place of the centre, odd pairs, even pairs, then for each pair: weight, place, place
struct GaussProgram {
    /// 32-bit words that a program for a bell fills at most.
    static int maxWords(const GaussBell& bell) { return 3 + 5 * (bell.boxCount + kSpareTaps); }

    // A cheaper split has fewer operations, but may have this many more taps than there are boxes.
    static constexpr int kSpareTaps = 16;
};

/// Where a program finds the samples and the totals around the position it makes, position 0.
struct GaussPlaces {
    int64_t step;    ///< from one position to the next
    int64_t sample;  ///< of position 0
    int64_t total;   ///< of position 0
    int64_t first;   ///< positions outside first .. last have the sample 0, the total 0 before and
    int64_t last;    ///< that of `last` behind; first > last: all are 0
};

/// Writes the program for one position and returns its length in words. Places that hold 0 are left out.
int writeGaussProgram(const GaussTaps& taps, const GaussPlaces& places, int32_t* program);

/// How a narrow bell is summed and divided in 16 bits.
///
/// The weight sum is even. Where 255 times it does not fit, half of the sum is divided by half of the weight sum: the
/// pairs of odd weight are summed apart and halved afterwards, the even weights are halved before.
struct GaussDirect {
    static constexpr int kMaxRadius = 6;

    bool isPossible;
    bool isHalved;
    int32_t radius;
    int32_t weights[kMaxRadius + 1];  ///< of the centre, then of the pairs
    bool isOdd[kMaxRadius + 1];       ///< which of them are in the sum that is halved afterwards
    // q = (n >> before) * multiplier >> 16 >> after, checked for all sums
    int32_t before;
    int32_t multiplier;
    int32_t after;
};

GaussDirect makeGaussDirect(const GaussBell& bell);

/// The same for a narrow bell. Positions outside first .. last find the sample 0 at `zero`.
int writeGaussDirectProgram(const GaussDirect& direct, const GaussPlaces& places, int64_t zero, int32_t* program);

}  // namespace QxFontEffect
