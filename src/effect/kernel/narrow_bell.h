#pragma once

#include <cstdint>

#include "effect/kernel/gauss_weights.h"

namespace QxFontEffect {

/// How a narrow bell is summed and divided in 16 bits.
///
/// Up to kMaxWholeRadius the sum of the weighted samples fits. Beyond it half of the sum is divided by half of the
/// weight sum, which is even: weights are halved downwards, and the pairs whose weight is odd are summed once more and
/// that sum is halved. Half of the sum may still pass 65535, once, and only when its two parts are added, the nearest
/// pairs and all else: then 65536, which is `wrapped` divisors and `remainder`, is missing.
struct NarrowBell {
    static constexpr int kMaxRadius = 10;
    static constexpr int kMaxWholeRadius = 2;
    /// Pairs next to the centre that are summed apart.
    static constexpr int kNearPairs = 2;

    bool isPossible;  ///< false: only peak and radius are set
    int peak;
    int radius;
    int sum;                      ///< of the weights
    int weights[kMaxRadius + 1];  ///< of the centre, then of the pairs, perhaps halved
    bool isOdd[kMaxRadius + 1];   ///< whether a halved weight was odd
    bool mayWrap;
    // q = (n >> before) * multiplier >> 16 >> after, checked for all sums
    int before;
    int multiplier;
    int after;  ///< above 0
    int wrapped;
    int remainder;
};

/// The bells there are: by peak, then by radius.
constexpr int kNarrowBells = 2 * (NarrowBell::kMaxRadius + 1);

/// The place of the narrow bell that has these weights, or -1 when there is none.
int narrowBellOf(const GaussBell& bell);

namespace {

/// gaussWeight of the narrow bells from the centre on, as numbers, so that the compiler makes a loop for each bell.
constexpr uint8_t kNarrowWeights[kNarrowBells][NarrowBell::kMaxRadius + 1] = {
    // kSoftPeak
    {100},
    {100, 1},
    {100, 32, 1},
    {100, 60, 13, 1},
    {100, 75, 32, 7, 1},
    {100, 83, 48, 19, 5, 1},
    {100, 88, 60, 32, 13, 4, 1},
    {100, 91, 69, 43, 22, 10, 3, 1},
    {100, 93, 75, 52, 32, 17, 7, 3, 1},
    {100, 94, 80, 60, 40, 24, 13, 6, 3, 1},
    {100, 95, 83, 66, 48, 32, 19, 10, 5, 2, 1},
    // kGlowPeak
    {128},
    {128, 1},
    {128, 40, 1},
    {128, 77, 17, 1},
    {128, 96, 40, 10, 1},
    {128, 106, 61, 24, 7, 1},
    {128, 113, 77, 40, 17, 5, 1},
    {128, 117, 88, 55, 28, 12, 4, 1},
    {128, 119, 96, 67, 40, 21, 10, 4, 1},
    {128, 121, 102, 77, 52, 31, 17, 8, 3, 1},
    {128, 122, 106, 85, 61, 40, 24, 13, 7, 3, 1},
};

constexpr int kMaxWord = 65535;

/// The quotient by a reciprocal.
constexpr int narrowQuotient(const NarrowBell& bell, int n) {
    const uint32_t product = static_cast<uint32_t>(n >> bell.before) * static_cast<uint32_t>(bell.multiplier);
    return static_cast<int>((product >> 16) >> bell.after);
}

/// Finds a reciprocal for all sums up to `limit`. The quotients change at multiples of the divisor only.
constexpr bool findNarrowReciprocal(int divisor, int limit, NarrowBell& bell) {
    for (bell.before = 0; bell.before <= 1 && divisor % (1 << bell.before) == 0; ++bell.before) {
        // The finest that fits a word.
        bell.after = 0;
        while ((divisor >> bell.before) >> (bell.after + 1) != 0) ++bell.after;
        bell.multiplier = ((1 << (16 + bell.after + bell.before)) + divisor - 1) / divisor;
        if (bell.multiplier > kMaxWord) bell.multiplier = kMaxWord;
        bool isExact = bell.after > 0 && narrowQuotient(bell, limit) == limit / divisor;
        for (int n = divisor, q = 1; isExact && n <= limit; n += divisor, ++q)
            isExact = narrowQuotient(bell, n - 1) == q - 1 && narrowQuotient(bell, n) == q;
        if (isExact) return true;
    }
    return false;
}

constexpr NarrowBell makeNarrowBell(int index) {
    NarrowBell bell{};
    bell.peak = kNarrowWeights[index][0];
    bell.radius = index % (NarrowBell::kMaxRadius + 1);
    bell.sum = bell.peak;
    for (int d = 1; d <= bell.radius; ++d) bell.sum += 2 * kNarrowWeights[index][d];
    if (bell.sum % 2 != 0) return bell;

    const bool isHalved = bell.radius > NarrowBell::kMaxWholeRadius;
    // The largest values of the parts of the sum: of the nearest pairs, of all else, and of odd pairs, with what
    // rounding up adds.
    int nearest = 0, others = 0, odd = bell.sum - 1;
    for (int d = 0; d <= bell.radius; ++d) {
        const int weight = kNarrowWeights[index][d], samples = d == 0 ? 255 : 2 * 255;
        bell.isOdd[d] = isHalved && weight % 2 != 0;
        bell.weights[d] = isHalved ? weight / 2 : weight;
        if (bell.isOdd[d]) odd += samples;
        (d > 0 && d <= NarrowBell::kNearPairs ? nearest : others) += bell.weights[d] * samples;
    }
    others += isHalved ? odd / 2 : odd;
    const int limit = nearest + others;
    if (nearest > kMaxWord || others > kMaxWord || (!isHalved && limit > kMaxWord)) return bell;

    const int divisor = isHalved ? bell.sum / 2 : bell.sum;
    bell.mayWrap = limit > kMaxWord;
    bell.wrapped = (kMaxWord + 1) / divisor;
    bell.remainder = (kMaxWord + 1) % divisor;
    // A sum that has passed 65535 comes back with the remainder added.
    if (limit - (kMaxWord + 1) + bell.remainder > kMaxWord) return bell;
    bell.isPossible = findNarrowReciprocal(divisor, limit < kMaxWord ? limit : kMaxWord, bell);
    return bell;
}

template <int index>
constexpr NarrowBell kNarrowBell = makeNarrowBell(index);

}  // namespace

}  // namespace QxFontEffect
