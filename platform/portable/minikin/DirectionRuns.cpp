#include "DirectionRuns.h"

#include <unicode/ubidi.h>

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
constexpr UnitBlock kTurningBlocks[] = {{0x0590, 0x08FF}, {0x200E, 0x202E}, {0x2066, 0x2069}, {0xD802, 0xD803},
                                        {0xD83A, 0xD83B}, {0xFB1D, 0xFDFF}, {0xFE70, 0xFEFF}};

/// A wrapped paragraph is searched once for each of its lines, so this must run as fast as memory is read: plain
/// loops over 16-bit numbers, which compilers turn into vector code.
bool mayTurnDirection(const uint16_t* text, size_t count) {
    constexpr size_t kStretch = 1024;
    for (size_t start = 0; start < count; start += kStretch) {
        const size_t end = std::min(count, start + kStretch);
        uint16_t found = 0;
        for (const UnitBlock& block : kTurningBlocks) {
            const uint16_t size = static_cast<uint16_t>(block.last - block.first);
            for (size_t i = start; i < end; ++i) {
                const uint16_t offset = static_cast<uint16_t>(text[i] - block.first);
                found = static_cast<uint16_t>(found | (offset <= size ? 1 : 0));
            }
        }
        if (found != 0) return true;
    }
    return false;
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

    // Most paragraphs have one direction only.
    const bool startsLeft = bidi == Bidi::LTR || bidi == Bidi::DEFAULT_LTR;
    if (startsLeft && !mayTurnDirection(text, count)) return leftToRight;

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
