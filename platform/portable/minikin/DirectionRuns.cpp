#include "DirectionRuns.h"

#include <unicode/ubidi.h>

#include <algorithm>
#include <memory>

namespace minikin {

namespace {

struct UBiDiDeleter {
    void operator()(UBiDi* bidi) const { ubidi_close(bidi); }
};

/// Whether a unit belongs to a right-to-left script or controls direction: all blocks with characters of the bidi
/// classes R, AL, AN, and the surrogates that lead to some.
bool mayTurnDirection(uint16_t c) {
    return (c >= 0x0590 && c <= 0x08FF) || (c >= 0x200E && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069) ||
           (c >= 0xFB1D && c <= 0xFDFF) || (c >= 0xFE70 && c <= 0xFEFF) || c == 0xD802 || c == 0xD803 || c == 0xD83A ||
           c == 0xD83B;
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
    const std::vector<DirectionRun> leftToRight = {{line, false}};
    if (bidi == Bidi::FORCE_LTR) return leftToRight;
    if (bidi == Bidi::FORCE_RTL) return {{line, true}};

    // Most paragraphs have one direction only, and a wrapped paragraph comes here once for each of its lines.
    const bool startsLeft = bidi == Bidi::LTR || bidi == Bidi::DEFAULT_LTR;
    if (startsLeft && std::none_of(text, text + count, mayTurnDirection)) return leftToRight;

    const std::unique_ptr<UBiDi, UBiDiDeleter> resolver(ubidi_open());
    if (resolver == nullptr) return leftToRight;
    UErrorCode error = U_ZERO_ERROR;
    ubidi_setPara(resolver.get(), reinterpret_cast<const UChar*>(text), static_cast<int32_t>(count), baseLevel(bidi),
                  nullptr, &error);
    const int32_t runCount = ubidi_countRuns(resolver.get(), &error);
    if (U_FAILURE(error)) return leftToRight;

    std::vector<DirectionRun> runs;
    for (int32_t i = 0; i < runCount; ++i) {
        int32_t start = 0;
        int32_t length = 0;
        const UBiDiDirection direction = ubidi_getVisualRun(resolver.get(), i, &start, &length);
        const UnitRange range = {std::max(static_cast<size_t>(start), line.start),
                                 std::min(static_cast<size_t>(start + length), line.end)};
        if (range.start < range.end) runs.push_back({range, direction == UBIDI_RTL});
    }
    return runs;
}

}  // namespace minikin
