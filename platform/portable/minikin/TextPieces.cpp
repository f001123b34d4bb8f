#include "TextPieces.h"

#include <algorithm>

#include "Characters.h"

namespace minikin {

namespace {

// HarfBuzz looks at five characters, ten units, on either side. Looking no further keeps the line cheap where a
// text has no blanks at all.
constexpr size_t kNeighbours = 16;

bool isCut(const uint16_t* text, size_t index) {
    return breaksAfter(text[index - 1]) || breaksBefore(text[index]);
}

size_t nextCut(const uint16_t* text, size_t index, size_t limit) {
    while (index < limit && !isCut(text, index)) ++index;
    return index;
}

size_t previousCut(const uint16_t* text, size_t index, size_t limit) {
    while (index > limit && !isCut(text, index)) --index;
    return index;
}

}  // namespace

std::vector<TextPiece> textPieces(const uint16_t* text, size_t count, UnitRange run) {
    std::vector<TextPiece> pieces;
    for (size_t start = run.start, end = 0; start < run.end; start = end) {
        end = nextCut(text, start + 1, run.end);
        // A run may begin and end inside a word, its pieces elsewhere do not.
        const size_t wordStart = start == run.start && start < count
                                     ? previousCut(text, start, start - std::min(start, kNeighbours))
                                     : start;
        const size_t wordEnd = end == run.end ? nextCut(text, end, std::min(count, end + kNeighbours)) : end;
        pieces.push_back({{start, end}, {wordStart, wordEnd}});
    }
    return pieces;
}

}  // namespace minikin
