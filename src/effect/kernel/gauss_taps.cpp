#include "effect/kernel/gauss_taps.h"

#include <algorithm>
#include <cstdlib>
#include <initializer_list>

namespace QxFontEffect {
namespace {

// Bells narrower than this have nothing to split, wider ones have their boxes too far apart.
constexpr int kMinSplitRadius = 7;
constexpr int kMaxSplitRadius = 255;
// Different values of a sequence that stretches are looked for in; steeper ones have none.
constexpr int kMaxRange = 64;

/// Values at 0 .. count - 1, and 0 beyond.
struct Sequence {
    int count;
    int at[kMaxSplitRadius + 3];
};

Sequence differencesOf(const Sequence& values) {
    Sequence differences{values.count + 1, {}};
    for (int k = 0; k <= values.count; ++k)
        differences.at[k] = (k < values.count ? values.at[k] : 0) - (k > 0 ? values.at[k - 1] : 0);
    return differences;
}

/// A sequence that is constant over stretches, near `values`: the one with the fewest changes and places that differ.
/// Dynamic programming over its value at each place.
Sequence stretchesOf(const Sequence& values) {
    const int lowest = std::min(*std::min_element(values.at, values.at + values.count), 0);
    const int range = std::max(*std::max_element(values.at, values.at + values.count), 0) - lowest + 1;
    Sequence stretches{values.count, {}};
    if (range > kMaxRange) return stretches;

    int cost[kMaxRange] = {};
    uint8_t from[kMaxSplitRadius + 2][kMaxRange];
    for (int v = 0; v < range; ++v) cost[v] = (v + lowest != 0) + (v + lowest != values.at[0]);
    for (int k = 1; k < values.count; ++k) {
        const int best = static_cast<int>(std::min_element(cost, cost + range) - cost);
        const int changed = cost[best] + 1;
        for (int v = 0; v < range; ++v) {
            from[k][v] = static_cast<uint8_t>(cost[v] <= changed ? v : best);
            cost[v] = std::min(cost[v], changed) + (v + lowest != values.at[k]);
        }
    }
    for (int v = 0; v < range; ++v) cost[v] += v + lowest != 0;
    int v = static_cast<int>(std::min_element(cost, cost + range) - cost);
    for (int k = values.count - 1; k >= 0; --k) {
        stretches.at[k] = v + lowest;
        if (k > 0) v = from[k][v];
    }
    return stretches;
}

/// Adds the taps that take `values` from `source`. False when there are too many.
bool addTaps(const Sequence& values, GaussTaps::Source source, GaussTaps& taps) {
    for (int k = 0; k < values.count; ++k) {
        if (values.at[k] == 0) continue;
        if (taps.count == GaussTaps::kMaxTaps) return false;
        taps.taps[taps.count++] = {k, values.at[k], source};
        taps.highest = std::max(taps.highest, source);
    }
    return true;
}

/// Sorts the taps, tells how they are better summed up, and returns about how many vector operations an output costs.
int finish(GaussTaps& taps) {
    std::sort(taps.taps, taps.taps + taps.count, [](const GaussTaps::Tap& a, const GaussTaps::Tap& b) {
        if (std::abs(a.factor) != std::abs(b.factor)) return std::abs(a.factor) > std::abs(b.factor);
        return a.source != b.source ? a.source < b.source : a.distance < b.distance;
    });
    int levels = 0;
    for (int i = 0; i < taps.count; ++i)
        levels += i == 0 || std::abs(taps.taps[i].factor) != std::abs(taps.taps[i - 1].factor);
    // Of a tap: two reads and a product. Of a level: a product, and the turns of its loops.
    const int gathered = 2 * taps.count + 3 * levels;
    const int flat = 3 * taps.count;
    taps.isFlat = flat < gathered;
    return std::min(gathered, flat) + 2 * taps.highest;
}

/// Takes a split of the heights if it is cheaper than what `taps` holds: `low` from one source, `high` from the next.
void takeCheaper(const Sequence& low, GaussTaps::Source lowSource, const Sequence& high, GaussTaps& taps, int& cost) {
    GaussTaps split{};
    split.radius = taps.radius;
    if (!addTaps(low, lowSource, split)) return;
    if (!addTaps(high, static_cast<GaussTaps::Source>(lowSource + 1), split)) return;
    const int splitCost = finish(split);
    if (splitCost >= cost) return;
    taps = split;
    cost = splitCost;
}

Sequence minus(const Sequence& a, const Sequence& b) {
    Sequence left = a;
    for (int k = 0; k < a.count; ++k) left.at[k] -= b.at[k];
    return left;
}

/// A factor of 16-bit words for vectors that are filled by 32-bit words.
int32_t inBothHalves(int32_t value) {
    return static_cast<int32_t>(static_cast<uint32_t>(value & 0xFFFF) * 0x10001u);
}

/// The two positions of a tap, and whether they count alike.
struct TapPlaces {
    int64_t more;
    int64_t less;
    bool isSum;
    int32_t factor;
};

TapPlaces placesOf(const GaussTaps::Tap& tap) {
    switch (tap.source) {
        case GaussTaps::kTotals:
            return {tap.distance - 1, -tap.distance - 1, true, -tap.factor};
        case GaussTaps::kSecondTotals:
            return {tap.distance - 2, -tap.distance - 1, false, tap.factor};
        default:
            return {tap.distance, -tap.distance - 1, false, tap.factor};
    }
}

/// The place of a position; `zero` where it holds nothing.
int32_t placeOf(int64_t position, GaussTaps::Source source, const GaussPlaces& places) {
    if (position < places.first || (position > places.last && source == GaussTaps::kSamples))
        return static_cast<int32_t>(places.zero);
    return static_cast<int32_t>(places.source[source] + std::min(position, places.last) * places.step);
}

int writeFlat(const GaussTaps& taps, const GaussPlaces& places, int32_t* program) {
    int32_t* word = program + 2;
    for (const bool sums : {true, false}) {
        int32_t count = 0;
        for (int i = 0; i < taps.count; ++i) {
            const TapPlaces tap = placesOf(taps.taps[i]);
            if (tap.isSum != sums) continue;
            *word++ = inBothHalves(tap.factor);
            *word++ = placeOf(tap.more, taps.taps[i].source, places);
            *word++ = placeOf(tap.less, taps.taps[i].source, places);
            ++count;
        }
        program[sums ? 0 : 1] = count;
    }
    return static_cast<int>(word - program);
}

int writeGathered(const GaussTaps& taps, const GaussPlaces& places, int32_t* program) {
    int32_t adds[2 * GaussTaps::kMaxTaps], subtractions[2 * GaussTaps::kMaxTaps];
    int addCount = 0, subtractCount = 0;
    const auto take = [&](int64_t position, GaussTaps::Source source, bool isAdded) {
        const int32_t place = placeOf(position, source, places);
        if (place == places.zero) return;
        if (isAdded)
            adds[addCount++] = place;
        else
            subtractions[subtractCount++] = place;
    };
    int32_t* word = program + 1;
    int levels = 0;
    for (int i = 0; i < taps.count; ++i) {
        const TapPlaces tap = placesOf(taps.taps[i]);
        take(tap.more, taps.taps[i].source, tap.factor > 0);
        take(tap.less, taps.taps[i].source, (tap.factor > 0) == tap.isSum);
        const int factor = std::abs(tap.factor);
        const int next = i + 1 < taps.count ? std::abs(taps.taps[i + 1].factor) : 0;
        if (factor == next) continue;
        *word++ = inBothHalves(factor - next);
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

}  // namespace

GaussTaps makeGaussTaps(const GaussBell& bell) {
    GaussTaps taps{};
    taps.radius = bell.radius;
    taps.count = bell.boxCount;
    for (int b = 0; b < bell.boxCount; ++b)
        taps.taps[b] = {bell.boxes[b].reach, bell.boxes[b].height, GaussTaps::kSamples};
    int cost = finish(taps);
    if (bell.radius < kMinSplitRadius || bell.radius > kMaxSplitRadius) return taps;

    Sequence heights{bell.radius + 1, {}};
    for (int b = 0; b < bell.boxCount; ++b) heights.at[bell.boxes[b].reach] = bell.boxes[b].height;
    const Sequence changes = differencesOf(heights);
    takeCheaper(Sequence{}, GaussTaps::kSamples, changes, taps, cost);
    const Sequence level = stretchesOf(heights);
    takeCheaper(minus(heights, level), GaussTaps::kSamples, differencesOf(level), taps, cost);
    if (bell.radius > GaussTaps::kMaxSecondRadius) return taps;
    const Sequence slope = stretchesOf(changes);
    takeCheaper(minus(changes, slope), GaussTaps::kTotals, differencesOf(slope), taps, cost);
    return taps;
}

int writeGaussProgram(const GaussTaps& taps, const GaussPlaces& places, int32_t* program) {
    return taps.isFlat ? writeFlat(taps, places, program) : writeGathered(taps, places, program);
}

}  // namespace QxFontEffect
