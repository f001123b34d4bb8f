#include "effect/kernel/gauss_taps.h"

#include <algorithm>
#include <initializer_list>

namespace QxFontEffect {
namespace {

/// Finds a reciprocal for all sums up to `limit`. The quotients change at multiples of the divisor only.
bool findReciprocal(int32_t divisor, int32_t limit, GaussDirect& direct) {
    for (direct.before = 0; direct.before <= 1 && divisor % (1 << direct.before) == 0; ++direct.before) {
        // The finest that fits a word.
        direct.after = 0;
        while ((divisor >> direct.before) >> (direct.after + 1) != 0) ++direct.after;
        direct.multiplier = ((1 << (16 + direct.after + direct.before)) + divisor - 1) / divisor;
        if (direct.multiplier > 0xFFFF) direct.multiplier = 0xFFFF;
        const auto quotient = [&](int32_t n) {
            const uint32_t product =
                static_cast<uint32_t>(n >> direct.before) * static_cast<uint32_t>(direct.multiplier);
            return static_cast<int32_t>((product >> 16) >> direct.after);
        };
        bool isExact = direct.after > 0 && quotient(limit) == limit / divisor;
        for (int32_t n = divisor, q = 1; isExact && n <= limit; n += divisor, ++q)
            isExact = quotient(n - 1) == q - 1 && quotient(n) == q;
        if (isExact) return true;
    }
    return false;
}

}  // namespace

GaussDirect makeGaussDirect(const GaussBell& bell) {
    constexpr int32_t kMaxWord = 65535;
    GaussDirect direct{};
    direct.radius = bell.radius;
    if (bell.radius > GaussDirect::kMaxRadius || bell.sum % 2 != 0) return direct;

    // The largest sum, with what rounding up adds.
    const int32_t limit = 256 * bell.sum - 1;
    direct.isHalved = limit > kMaxWord;
    int32_t oddSum = 0, evenSum = 0;
    for (int d = 0; d <= bell.radius; ++d) {
        const int32_t weight = gaussWeight(bell.radius, bell.peak, d);
        direct.isOdd[d] = direct.isHalved && weight % 2 != 0;
        direct.weights[d] = direct.isHalved && !direct.isOdd[d] ? weight / 2 : weight;
        if (d > 0) (direct.isOdd[d] ? oddSum : evenSum) += 2 * direct.weights[d];
    }
    const int32_t largestOdd = 255 * oddSum + bell.sum - 1, largestEven = 255 * evenSum;
    const int32_t largestFirst = 255 * direct.weights[0] + (direct.isHalved ? largestOdd / 2 : bell.sum - 1);
    if (direct.isOdd[0] || std::max({largestOdd, largestEven, largestFirst}) > kMaxWord) return direct;

    const int32_t divisor = direct.isHalved ? bell.sum / 2 : bell.sum;
    const int32_t largest = direct.isHalved ? limit / 2 : limit;
    direct.mayWrap = largest > kMaxWord;
    direct.wrapped = (kMaxWord + 1) / divisor;
    direct.remainder = (kMaxWord + 1) % divisor;
    direct.isPossible = findReciprocal(divisor, std::min(largest, kMaxWord), direct);
    return direct;
}

int writeGaussDirectProgram(const GaussDirect& direct, const GaussPlaces& places, int32_t* program) {
    const auto placeOf = [&](int64_t position) {
        const bool isInside = position >= places.first && position <= places.last;
        return static_cast<int32_t>(isInside ? places.source[GaussTaps::kSamples] + position * places.step
                                             : places.zero);
    };
    program[0] = placeOf(0);
    int32_t* word = program + 3;
    for (const bool odd : {true, false}) {
        int32_t pairs = 0;
        for (int d = 1; d <= direct.radius; ++d) {
            if (direct.isOdd[d] != odd) continue;
            *word++ = direct.weights[d] * 0x10001;
            *word++ = placeOf(d);
            *word++ = placeOf(-d);
            ++pairs;
        }
        program[odd ? 1 : 2] = pairs;
    }
    return static_cast<int>(word - program);
}

}  // namespace QxFontEffect
