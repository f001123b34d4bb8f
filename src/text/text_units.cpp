#include "text/text_units.h"

#include <algorithm>

#include "base/QxString.h"
#include "text/QxLineInfo.h"

namespace QxFontEffect {

namespace {

bool isNewline(uint16_t unit) {
    return unit == 10 || unit == 13;
}

size_t unitCount(const QxString& text) {
    const int size = text.GetUTF16Size();
    return size < 1 ? 0 : static_cast<size_t>(size);
}

// Index 0 is left out: a paragraph starts there in any case.
size_t countNewlines(const uint16_t* units, size_t size) {
    if (units == nullptr || size == 0) return 0;
    return static_cast<size_t>(std::count_if(units + 1, units + size, isNewline));
}

}  // namespace

TextUnits::TextUnits(const QxString& text)
    : mUnits(text.GetUTF16()),
      mSize(unitCount(text)),
      mNewlines(static_cast<int64_t>(countNewlines(mUnits.get(), mSize))) {
    if (!*this) return;
    size_t found = 0;
    for (size_t i = 1; i < mSize; ++i) {
        if (isNewline(mUnits[i])) mNewlines[found++] = static_cast<int32_t>(i);
    }
}

TextUnits::LineRange TextUnits::rangeOf(const QxLineInfo& line) const {
    const auto characters = static_cast<int64_t>(mSize == 0 ? 0 : mSize - 1);
    const int64_t start = std::clamp<int64_t>(line.start, 0, characters);
    const int64_t end = std::clamp<int64_t>(line.end, start, characters);

    const int32_t* const first = mNewlines.data();
    const int32_t* const behind = std::upper_bound(first, first + mNewlines.count(), static_cast<int32_t>(start));
    const int64_t contextStart = behind == first ? 0 : behind[-1];
    return {static_cast<size_t>(start), static_cast<size_t>(end - start), static_cast<size_t>(contextStart),
            static_cast<size_t>(end - contextStart)};
}

}  // namespace QxFontEffect
