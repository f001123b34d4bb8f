#include "FontChooser.h"

#include "Characters.h"
#include "LocaleRegistry.h"

namespace minikin {

namespace {

// A score's bits: coverage 0..3 above 29 bits of languages (12 base-5 digits need 28) and variant (1).
constexpr int kCoverageShift = 29;
constexpr int kLocaleShift = 1;

bool suitsVariant(const FontFamily& family, FamilyVariant wanted) {
    return family.variant() == FamilyVariant::DEFAULT || family.variant() == wanted ||
           (wanted == FamilyVariant::DEFAULT && family.variant() == FamilyVariant::COMPACT);
}

/// Runs under construction: a run is a family index and its end; it starts where the previous one ends.
class RunList {
public:
    struct Run {
        size_t family;
        size_t start;
    };

    explicit RunList(size_t noFamily) : mNoFamily(noFamily) {}

    size_t lastFamily() const { return mRuns.empty() ? mNoFamily : mRuns.back().family; }

    /// Starts a run, or moves the end of the last ones back to `start`.
    void startAt(size_t start, size_t family) {
        while (!mRuns.empty() && mRuns.back().start >= start) mRuns.pop_back();
        // What came before the first run needs no font and joins it.
        mRuns.push_back({family, mRuns.empty() ? 0 : start});
    }

    const std::vector<Run>& runs() const { return mRuns; }

private:
    const size_t mNoFamily;
    std::vector<Run> mRuns;
};

}  // namespace

FontChooser::FontChooser(const FontCollection& collection, const FontWish& wish)
    : mFamilies(collection.getFamilies()), mWish(wish), mLocales(localeListOf(wish.localeListId)) {}

const std::vector<uint32_t>& FontChooser::wishScores() {
    if (mWishScores.empty()) {
        mWishScores.reserve(mFamilies.size());
        for (const auto& candidate : mFamilies) {
            const uint32_t locale = localeListOf(candidate->localeListId()).matchScore(mLocales);
            mWishScores.push_back(locale << kLocaleShift | (suitsVariant(*candidate, mWish.variant) ? 1u : 0u));
        }
    }
    return mWishScores;
}

uint32_t FontChooser::coverageScore(const FontFamily& candidate, uint32_t codePoint, uint32_t variationSelector) const {
    if (variationSelector != 0 && candidate.hasGlyph(codePoint, variationSelector)) return 3;
    if (!candidate.hasGlyph(codePoint, 0)) return 0;

    EmojiStyle style = mLocales.emojiStyle();
    if (variationSelector == kEmojiStyleSelector) style = EmojiStyle::EMOJI;
    if (variationSelector == kTextStyleSelector) style = EmojiStyle::TEXT;
    const bool fits = (style == EmojiStyle::EMOJI && candidate.isColorEmojiFamily()) ||
                      (style == EmojiStyle::TEXT && !candidate.isColorEmojiFamily());
    return fits ? 2 : 1;
}

/// kNone when no family has the character.
size_t FontChooser::bestFamily(uint32_t c, uint32_t selector) {
    if (family(0).hasGlyph(c, selector)) return 0;

    const std::vector<uint32_t>& wish = wishScores();
    size_t best = kNone;
    uint32_t bestScore = 0;
    for (size_t i = 0; i < mFamilies.size(); ++i) {
        if (family(i).isCustomFallback() && family(i).hasGlyph(c, selector)) return i;
        const uint32_t coverage = coverageScore(family(i), c, selector);
        if (coverage == 0) continue;
        const uint32_t score = (coverage << kCoverageShift) | wish[i];
        if (best == kNone || score > bestScore) {
            best = i;
            bestScore = score;
        }
    }
    return best;
}

size_t FontChooser::familyFor(uint32_t c, uint32_t selector) {
    // Where nobody has a composed character, the shaper can still compose it from a font that has its base.
    for (uint32_t candidate = c; candidate != 0; candidate = decompositionBase(candidate)) {
        const size_t found = bestFamily(candidate, selector);
        if (found != kNone) return found;
    }
    return 0;
}

std::vector<FontCollection::Run> FontChooser::itemize(const uint16_t* text, size_t count) {
    if (mFamilies.empty() || count == 0) return {};

    RunList chosen(kNone);
    uint32_t previous = 0;
    for (size_t start = 0, previousStart = 0, end = 0; start < count; previousStart = start, start = end) {
        const uint32_t c = nextCodePoint(text, count, &end);
        const uint32_t before = previous;
        previous = c;
        const size_t last = chosen.lastFamily();
        if (needsNoFont(c)) continue;
        if (last != kNone && isSticky(c) && family(last).hasGlyph(c, 0)) continue;

        size_t following = end;
        const uint32_t next = end < count ? nextCodePoint(text, count, &following) : 0;
        const size_t found = familyFor(c, isVariationSelector(next) ? next : 0);
        if (found == last) continue;

        // A mark is placed by the font of its base, so the base comes along where that font has it.
        const bool takesBase = start > 0 && (isCombiningMark(c) || isEmojiModifierAfterBase(c, before)) &&
                               family(found).hasGlyph(before, 0);
        chosen.startAt(takesBase ? previousStart : start, found);
    }
    if (chosen.runs().empty()) chosen.startAt(0, 0);

    std::vector<FontCollection::Run> runs;
    for (const RunList::Run& run : chosen.runs()) {
        if (!runs.empty()) runs.back().end = run.start;
        runs.push_back({family(run.family).getClosestMatch(mWish.style), run.start, count});
    }
    return runs;
}

}  // namespace minikin
