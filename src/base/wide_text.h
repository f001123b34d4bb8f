#pragma once

#include <cstdint>
#include <memory>

namespace QxFontEffect {

/// Owned wide characters with their terminator: the content of a QxString, and what its operations compute with.
/// `text` is null when the text is absent, and `length` then 0.
///
/// The functions below that make a text give one that is absent when there is no memory or when an int cannot count
/// it. Lengths count characters without terminators.
struct WideText {
    std::unique_ptr<wchar_t[]> text;
    int length = 0;

    const wchar_t* characters() const { return text != nullptr ? text.get() : L""; }
};

/// The three pieces one behind the other.
WideText joined(const wchar_t* head, int64_t headLength, const wchar_t* middle, int64_t middleLength,
                const wchar_t* tail, int64_t tailLength);

WideText copied(const wchar_t* text, int64_t length);
WideText copied(const wchar_t* text);
/// From UTF-8.
WideText copied(const char* text);

/// Length of a text that is read up to `limit` characters only.
int64_t lengthUpTo(const wchar_t* text, int64_t limit);

/// -1, 0 or 1; the longer text is greater, texts of one length compare by code point.
int compared(const WideText& left, const WideText& right);
/// Compares by code point, the first `count` characters only.
int comparedUpTo(int count, const WideText& left, const WideText& right);

/// First place of the pattern that leaves at least one character of the text behind it, else -1.
int firstIn(const WideText& text, const wchar_t* pattern);
/// Last place of the pattern, else -1.
int lastIn(const WideText& text, const wchar_t* pattern);

}  // namespace QxFontEffect
