#include "effect/kernel/narrow_bell.h"

namespace QxFontEffect {
namespace {

struct Possible {
    bool is[kNarrowBells];
};

constexpr Possible findPossible() {
    Possible possible{};
    for (int index = 0; index < kNarrowBells; ++index) possible.is[index] = makeNarrowBell(index).isPossible;
    return possible;
}

constexpr Possible kPossible = findPossible();

}  // namespace

int narrowBellOf(const GaussBell& bell) {
    if (bell.radius > NarrowBell::kMaxRadius) return -1;
    const int index = bell.radius + (bell.peak == kGlowPeak ? NarrowBell::kMaxRadius + 1 : 0);
    if (!kPossible.is[index]) return -1;
    for (int d = 0; d <= bell.radius; ++d)
        if (gaussWeight(bell.radius, bell.peak, d) != kNarrowWeights[index][d]) return -1;
    return index;
}

}  // namespace QxFontEffect
