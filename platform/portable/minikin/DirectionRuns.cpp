#include "DirectionRuns.h"

#include <unicode/ubidi.h>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <memory>

namespace minikin {

namespace {

struct UBiDiDeleter {
    void operator()(UBiDi* bidi) const { ubidi_close(bidi); }
};

struct UnitBlock {
    uint16_t first;
    uint16_t last;
};

/// Right-to-left scripts and direction controls: all blocks with characters of the bidi classes R, AL and AN, and the
/// surrogates that lead to some.
constexpr UnitBlock kTurningBlocks[] = {{0x0590, 0x08FF}, {0x200E, 0x200F}, {0x202A, 0x202E}, {0x2066, 0x2069},
                                        {0xD802, 0xD803}, {0xD83A, 0xD83B}, {0xFB1D, 0xFDFF}, {0xFE70, 0xFEFF}};

/// Two blocks around all of those: most texts lie outside, Latin, Greek, Cyrillic, Han, Kana and Hangul among them.
constexpr UnitBlock kAroundTurningBlocks[] = {{0x0590, 0x2069}, {0xD802, 0xFFFF}};

/// Separators of paragraphs, embeddings and isolates.
constexpr UnitBlock kStructureBlocks[] = {{0x000A, 0x000A}, {0x000D, 0x000D}, {0x001C, 0x001E},
                                          {0x0085, 0x0085}, {0x2029, 0x202E}, {0x2066, 0x2069}};

/// A wrapped paragraph is searched once for each of its lines, so this must run as fast as memory is read: plain
/// loops over 16-bit numbers, which compilers turn into vector code.
constexpr size_t kStretch = 1024;

template <size_t kCount>
bool stretchHoldsAny(const UnitBlock (&blocks)[kCount], const uint16_t* text, size_t count) {
    uint16_t found = 0;
    for (const UnitBlock& block : blocks) {
        const uint16_t size = static_cast<uint16_t>(block.last - block.first);
        for (size_t i = 0; i < count; ++i) {
            const uint16_t offset = static_cast<uint16_t>(text[i] - block.first);
            found = static_cast<uint16_t>(found | (offset <= size ? 1 : 0));
        }
    }
    return found != 0;
}

bool mayTurn(const uint16_t* text, size_t count) {
    for (size_t start = 0; start < count; start += kStretch) {
        const size_t length = std::min(count - start, kStretch);
        if (stretchHoldsAny(kAroundTurningBlocks, text + start, length) &&
            stretchHoldsAny(kTurningBlocks, text + start, length))
            return true;
    }
    return false;
}

bool hasStructure(const uint16_t* text, size_t count) {
    for (size_t start = 0; start < count; start += kStretch)
        if (stretchHoldsAny(kStructureBlocks, text + start, std::min(count - start, kStretch))) return true;
    return false;
}

bool isStrong(UCharDirection direction) {
    return direction == U_LEFT_TO_RIGHT || direction == U_RIGHT_TO_LEFT || direction == U_RIGHT_TO_LEFT_ARABIC;
}

/// ICU's view of the text: lone surrogates are themselves, and left-to-right.
UChar32 nextRawCodePoint(const uint16_t* text, size_t count, size_t* index) {
    UChar32 c = 0;
    U16_NEXT(text, *index, count, c);
    return c;
}

bool strongLetterStartsAt(const uint16_t* text, size_t count, size_t index) {
    if (index > 0 && U16_IS_TRAIL(text[index]) && U16_IS_LEAD(text[index - 1])) return false;
    return isStrong(u_charDirection(nextRawCodePoint(text, count, &index)));
}

/// Level of a paragraph by its first strong letter at or after index; 0 without one.
UBiDiLevel levelByFirstStrong(const uint16_t* text, size_t count, size_t index) {
    while (index < count) {
        const UCharDirection direction = u_charDirection(nextRawCodePoint(text, count, &index));
        if (isStrong(direction)) return direction == U_LEFT_TO_RIGHT ? 0 : 1;
    }
    return 0;
}

struct Brackets {
    bool any = false;
    bool closeEarlierOnes = false;  ///< some closing one may belong to an opening one before the text
};

Brackets bracketsOf(const uint16_t* text, size_t count) {
    Brackets found;
    std::vector<UChar32> open;
    for (size_t index = 0; index < count && !found.closeEarlierOnes;) {
        const UChar32 c = nextRawCodePoint(text, count, &index);
        const int32_t type = u_getIntPropertyValue(c, UCHAR_BIDI_PAIRED_BRACKET_TYPE);
        if (type == U_BPT_NONE) continue;
        found.any = true;
        if (type == U_BPT_OPEN) {
            open.push_back(u_getBidiPairedBracket(c));
        } else if (!open.empty() && open.back() == c) {
            open.pop_back();
        } else {
            found.closeEarlierOnes = true;
        }
    }
    return found;
}

struct Analysis {
    size_t start;
    UBiDiLevel level;
};

/// Where the bidi algorithm may begin for a line, and with which level.
///
/// Without this, the lines of a wrapped paragraph would take a time that grows with the square of its length. A
/// strong letter makes the rules forget what was before it, except the level of the paragraph, embeddings, isolates
/// and brackets that are still open (UAX #9, rules P2 to N2). So a line begins at the last strong letter before it,
/// where the paragraph has none of those.
Analysis shortestAnalysis(const uint16_t* text, size_t count, size_t lineStart, UBiDiLevel wanted) {
    const Analysis whole = {0, wanted};
    // The separator before a paragraph is often passed along with it.
    const size_t paragraph = u_charDirection(text[0]) == U_BLOCK_SEPARATOR ? 1 : 0;
    size_t start = lineStart;
    while (start > paragraph && !strongLetterStartsAt(text, count, start)) --start;
    if (start <= paragraph || hasStructure(text + paragraph, count - paragraph)) return whole;

    const bool byFirstStrong = wanted == UBIDI_DEFAULT_LTR || wanted == UBIDI_DEFAULT_RTL;
    const UBiDiLevel level = byFirstStrong ? levelByFirstStrong(text, count, paragraph) : wanted;
    const Brackets brackets = bracketsOf(text + start, count - start);
    // ICU resolves brackets by the level of the paragraph before: here a separator's alone, which is the default.
    const bool otherLevel = paragraph > 0 && byFirstStrong && level != (wanted == UBIDI_DEFAULT_LTR ? 0 : 1);
    if (brackets.closeEarlierOnes || (brackets.any && otherLevel)) return whole;
    return {start, level};
}

UBiDiLevel baseLevel(Bidi bidi) {
    switch (bidi) {
        case Bidi::RTL:
            return 1;
        case Bidi::DEFAULT_LTR:
            return UBIDI_DEFAULT_LTR;
        case Bidi::DEFAULT_RTL:
            return UBIDI_DEFAULT_RTL;
        default:
            return 0;
    }
}

}  // namespace

std::vector<DirectionRun> directionRuns(const uint16_t* text, size_t count, UnitRange line, Bidi bidi) {
    if (line.length() == 0) return {};
    std::vector<DirectionRun> leftToRight = {{line, false}};
    if (bidi == Bidi::FORCE_LTR) return leftToRight;
    if (bidi == Bidi::FORCE_RTL) return {{line, true}};

    // Most paragraphs have one direction only.
    const bool startsLeft = bidi == Bidi::LTR || bidi == Bidi::DEFAULT_LTR;
    if (startsLeft && !mayTurn(text, count)) return leftToRight;

    const std::unique_ptr<UBiDi, UBiDiDeleter> resolver(ubidi_open());
    if (resolver == nullptr) return leftToRight;
    UErrorCode error = U_ZERO_ERROR;
    const Analysis from = shortestAnalysis(text, count, line.start, baseLevel(bidi));
    ubidi_setPara(resolver.get(), reinterpret_cast<const UChar*>(text + from.start),
                  static_cast<int32_t>(count - from.start), from.level, nullptr, &error);
    const int32_t runCount = ubidi_countRuns(resolver.get(), &error);
    if (U_FAILURE(error)) return leftToRight;

    std::vector<DirectionRun> runs;
    for (int32_t i = 0; i < runCount; ++i) {
        int32_t start = 0;
        int32_t length = 0;
        const UBiDiDirection direction = ubidi_getVisualRun(resolver.get(), i, &start, &length);
        const size_t runStart = from.start + static_cast<size_t>(start);
        const UnitRange range = {std::max(runStart, line.start),
                                 std::min(runStart + static_cast<size_t>(length), line.end)};
        if (range.start < range.end) runs.push_back({range, direction == UBIDI_RTL});
    }
    return runs;
}

}  // namespace minikin
