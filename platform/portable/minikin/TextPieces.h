#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "DirectionRuns.h"

namespace minikin {

/// A stretch of text that is given fonts and shaped on its own: a word or a part of one, a blank, an ideograph.
struct TextPiece {
    UnitRange range;
    /// The range and its neighbours within the same word: letters at the cut still join as if it were not there.
    UnitRange word;
};

/// Cuts a run into its pieces, in text order. The time depends on the run alone.
std::vector<TextPiece> textPieces(const uint16_t* text, size_t count, UnitRange run);

}  // namespace minikin
