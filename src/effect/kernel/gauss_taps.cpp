#include "effect/kernel/gauss_taps.h"

#include <algorithm>
#include <cstdlib>

namespace QxFontEffect {
namespace {

// Wider bells have their steps so far apart that no two of them share a stretch.
constexpr int kMaxBaseRadius = 255;
// Bells narrower than this have no stretches either.
constexpr int kMinBaseRadius = 7;
constexpr int kMaxHeight = 36;

/// Boxes by reach, 0 where there is none, and a base to be taken off them.
struct Heights {
    int radius;
    int box[kMaxBaseRadius + 1];
    int base[kMaxBaseRadius + 1];
};

/// Taps of a split in no order; -1 when there are too many.
int collectTaps(const Heights& heights, GaussTaps::Tap* taps) {
    int count = 0;
    const auto add = [&](int distance, int height, bool ofTotals) {
        if (height != 0 && count < GaussTaps::kMaxTaps) taps[count++] = {distance, height, ofTotals};
    };
    int base = 0;
    for (int k = 0; k <= heights.radius; ++k) {
        add(k, heights.base[k] - base, true);
        base = heights.base[k];
        add(k, heights.box[k] - base, false);
    }
    add(heights.radius + 1, -base, true);
    return count < GaussTaps::kMaxTaps ? count : -1;
}

void sortTaps(GaussTaps::Tap* taps, int count) {
    std::sort(taps, taps + count, [](const GaussTaps::Tap& a, const GaussTaps::Tap& b) {
        if (std::abs(a.height) != std::abs(b.height)) return std::abs(a.height) > std::abs(b.height);
        return a.distance != b.distance ? a.distance < b.distance : a.ofTotals < b.ofTotals;
    });
}

/// Vector operations per output: two a tap, and one or, with a product, two a level.
int costOf(const GaussTaps::Tap* taps, int count) {
    int cost = 2 * count;
    for (int i = 0; i < count; ++i) {
        const int height = std::abs(taps[i].height);
        const int next = i + 1 < count ? std::abs(taps[i + 1].height) : 0;
        if (height != next) cost += height - next == 1 ? 1 : 2;
    }
    return cost;
}

/// The base with the fewest taps: dynamic programming over its height at each reach, where a change of height costs a
/// tap and so does a reach at which base and box differ.
void findBase(Heights& heights) {
    int cost[kMaxHeight + 1];
    uint8_t from[kMaxBaseRadius + 1][kMaxHeight + 1];
    for (int h = 0; h <= kMaxHeight; ++h) cost[h] = (h != 0) + (h != heights.box[0]);
    for (int k = 1; k <= heights.radius; ++k) {
        const int best = static_cast<int>(std::min_element(cost, cost + kMaxHeight + 1) - cost);
        const int changed = cost[best] + 1;
        for (int h = 0; h <= kMaxHeight; ++h) {
            from[k][h] = static_cast<uint8_t>(cost[h] <= changed ? h : best);
            cost[h] = std::min(cost[h], changed) + (h != heights.box[k]);
        }
    }
    for (int h = 1; h <= kMaxHeight; ++h) ++cost[h];
    int height = static_cast<int>(std::min_element(cost, cost + kMaxHeight + 1) - cost);
    for (int k = heights.radius; k >= 0; --k) {
        heights.base[k] = height;
        if (k > 0) height = from[k][height];
    }
}

/// A factor of 16-bit words for vectors that are filled by 32-bit words.
int32_t inBothHalves(int32_t value) {
    return value * 0x10001;
}

/// Takes the split if it is cheaper than what `taps` holds.
void takeCheaper(const Heights& heights, GaussTaps& taps) {
    GaussTaps::Tap split[GaussTaps::kMaxTaps];
    const int count = collectTaps(heights, split);
    if (count < 0) return;
    sortTaps(split, count);
    if (costOf(split, count) >= costOf(taps.taps, taps.count)) return;
    std::copy_n(split, count, taps.taps);
    taps.count = count;
    taps.usesTotals = true;
}

}  // namespace

GaussTaps makeGaussTaps(const GaussBell& bell) {
    GaussTaps taps{};
    taps.radius = bell.radius;
    taps.count = bell.boxCount;
    for (int b = 0; b < bell.boxCount; ++b) taps.taps[b] = {bell.boxes[b].reach, bell.boxes[b].height, false};
    sortTaps(taps.taps, taps.count);
    if (bell.radius < kMinBaseRadius || bell.radius > kMaxBaseRadius) return taps;

    Heights heights{};
    heights.radius = bell.radius;
    for (int b = 0; b < bell.boxCount; ++b) heights.box[bell.boxes[b].reach] = bell.boxes[b].height;
    std::copy_n(heights.box, bell.radius + 1, heights.base);
    takeCheaper(heights, taps);
    findBase(heights);
    takeCheaper(heights, taps);
    return taps;
}

int writeGaussProgram(const GaussTaps& taps, const GaussPlaces& places, int32_t* program) {
    int32_t adds[2 * GaussTaps::kMaxTaps], subtractions[2 * GaussTaps::kMaxTaps];
    int addCount = 0, subtractCount = 0;
    const auto take = [&](int64_t position, bool ofTotals, bool isAdded) {
        if (position < places.first || (position > places.last && !ofTotals)) return;
        const int64_t place = (ofTotals ? places.total : places.sample) + std::min(position, places.last) * places.step;
        if (isAdded)
            adds[addCount++] = static_cast<int32_t>(place);
        else
            subtractions[subtractCount++] = static_cast<int32_t>(place);
    };

    int32_t* word = program + 1;
    int levels = 0;
    for (int i = 0; i < taps.count; ++i) {
        const GaussTaps::Tap tap = taps.taps[i];
        const bool rises = tap.height > 0;
        if (tap.ofTotals) {
            take(tap.distance - 1, true, !rises);
            take(-tap.distance - 1, true, !rises);
        } else {
            take(tap.distance, false, rises);
            take(-tap.distance - 1, false, !rises);
        }
        const int height = std::abs(tap.height);
        const int next = i + 1 < taps.count ? std::abs(taps.taps[i + 1].height) : 0;
        if (height == next) continue;
        *word++ = inBothHalves(height - next);
        *word++ = addCount;
        *word++ = subtractCount;
        word = std::copy_n(adds, addCount, word);
        word = std::copy_n(subtractions, subtractCount, word);
        addCount = subtractCount = 0;
        ++levels;
    }
    program[0] = levels;
    return static_cast<int>(word - program);
}

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
        bool isExact = quotient(limit) == limit / divisor;
        for (int32_t n = divisor, q = 1; isExact && n <= limit; n += divisor, ++q)
            isExact = quotient(n - 1) == q - 1 && quotient(n) == q;
        if (isExact) return true;
    }
    return false;
}

GaussDirect makeGaussDirect(const GaussBell& bell) {
    // Times 255, with what rounding up adds, this weight sum fits 16 bits.
    constexpr int32_t kMaxSum = 255;
    GaussDirect direct{};
    direct.radius = bell.radius;
    if (bell.radius > GaussDirect::kMaxRadius || bell.sum > 2 * kMaxSum || bell.sum % 2 != 0) return direct;

    direct.isHalved = bell.sum > kMaxSum;
    int32_t oddSum = 0;
    for (int d = 0; d <= bell.radius; ++d) {
        const int32_t weight = gaussWeight(bell.radius, bell.peak, d);
        direct.isOdd[d] = direct.isHalved && weight % 2 != 0;
        direct.weights[d] = direct.isHalved && !direct.isOdd[d] ? weight / 2 : weight;
        if (direct.isOdd[d]) oddSum += 2 * weight;
    }
    const int32_t divisor = direct.isHalved ? bell.sum / 2 : bell.sum;
    const int32_t limit = 255 * bell.sum + bell.sum - 1;
    direct.isPossible =
        oddSum <= kMaxSum && !direct.isOdd[0] && findReciprocal(divisor, direct.isHalved ? limit / 2 : limit, direct);
    return direct;
}

int writeGaussDirectProgram(const GaussDirect& direct, const GaussPlaces& places, int64_t zero, int32_t* program) {
    const auto placeOf = [&](int64_t position) {
        const bool isInside = position >= places.first && position <= places.last;
        return static_cast<int32_t>(isInside ? places.sample + position * places.step : zero);
    };
    program[0] = placeOf(0);
    int32_t* word = program + 3;
    for (const bool odd : {true, false}) {
        int32_t pairs = 0;
        for (int d = 1; d <= direct.radius; ++d) {
            if (direct.isOdd[d] != odd) continue;
            *word++ = inBothHalves(direct.weights[d]);
            *word++ = placeOf(d);
            *word++ = placeOf(-d);
            ++pairs;
        }
        program[odd ? 1 : 2] = pairs;
    }
    return static_cast<int>(word - program);
}

}  // namespace QxFontEffect
