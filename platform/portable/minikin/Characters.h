#pragma once

#include <cstddef>
#include <cstdint>

namespace minikin {

constexpr uint32_t kTextStyleSelector = 0xFE0E;
constexpr uint32_t kEmojiStyleSelector = 0xFE0F;

/// Code point at `*index`, which moves behind it. A lone surrogate reads as U+FFFD.
uint32_t nextCodePoint(const uint16_t* text, size_t end, size_t* index);

bool isVariationSelector(uint32_t codePoint);

/// Characters without ink of their own that any font may carry: joiners, direction marks, variation selectors, ...
bool needsNoFont(uint32_t codePoint);

/// Punctuation and marks that stay in the font of what precedes them, if that has them too.
bool isSticky(uint32_t codePoint);

bool isCombiningMark(uint32_t codePoint);
bool isEmojiModifierAfterBase(uint32_t codePoint, uint32_t previous);

/// First character of the canonical decomposition by one step, 0 when there is none.
uint32_t decompositionBase(uint32_t codePoint);

/// Whether a piece of text ends before this unit. Pieces are chosen and shaped each on its own: words, blanks,
/// direction controls, and from each ideograph on.
bool breaksBefore(uint16_t unit);
/// Whether a piece ends after this unit.
bool breaksAfter(uint16_t unit);

/// Blanks that word spacing widens.
bool isWordSpace(uint16_t unit);

}  // namespace minikin
