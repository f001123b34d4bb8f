#include "line_breaker.h"

#include <unicode/ubrk.h>

namespace qxhost {

namespace {

UBreakIterator* openIterator(UBreakIteratorType type, const uint16_t* text, size_t count) {
    UErrorCode status = U_ZERO_ERROR;
    UBreakIterator* iterator =
        ubrk_open(type, "", reinterpret_cast<const UChar*>(text), static_cast<int32_t>(count), &status);
    return U_SUCCESS(status) ? iterator : nullptr;
}

/// Next boundary behind `position`, the end of the text when there is none.
size_t following(UBreakIterator* iterator, size_t position, size_t count) {
    if (iterator == nullptr) return position + 1;
    const int32_t next = ubrk_following(iterator, static_cast<int32_t>(position));
    return next == UBRK_DONE ? count : static_cast<size_t>(next);
}

}  // namespace

bool isBlank(uint16_t unit) {
    return unit == ' ' || unit == '\t' || unit == '\n' || unit == '\r' || unit == 0x3000;
}

LineBreaker::LineBreaker(const uint16_t* text, size_t count)
    : mText(text),
      mCount(count),
      mLines(openIterator(UBRK_LINE, text, count)),
      mCharacters(openIterator(UBRK_CHARACTER, text, count)) {}

LineBreaker::~LineBreaker() {
    ubrk_close(mLines);
    ubrk_close(mCharacters);
}

size_t LineBreaker::lineEnd(size_t start, const std::vector<float>& advances, float width) const {
    size_t best = start;
    float used = 0.0f;
    for (size_t from = start; from < mCount;) {
        const size_t to = following(mLines, from, mCount);
        float visible = used;  // up to the last unit that is no blank
        for (size_t i = from; i < to; ++i) {
            used += advances[i];
            if (!isBlank(mText[i])) visible = used;
        }
        if (visible > width) break;
        best = from = to;
    }
    return best > start ? best : fittingCharacters(start, advances, width);
}

size_t LineBreaker::fittingCharacters(size_t start, const std::vector<float>& advances, float width) const {
    size_t best = start;
    float used = 0.0f;
    for (size_t from = start; from < mCount;) {
        const size_t to = following(mCharacters, from, mCount);
        for (size_t i = from; i < to; ++i) used += advances[i];
        if (used > width && best > start) break;
        best = from = to;
        if (used > width) break;
    }
    return best;
}

}  // namespace qxhost
