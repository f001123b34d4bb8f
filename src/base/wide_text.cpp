#include "base/wide_text.h"

#include <climits>
#include <cwchar>
#include <new>

#include "base/utf8.h"

namespace QxFontEffect {

namespace {

/// `count` characters, to be filled by the caller, and a terminator.
WideText unfilled(int64_t count) {
    WideText made;
    if (count >= INT_MAX) return made;
    made.text.reset(new (std::nothrow) wchar_t[static_cast<size_t>(count) + 1]);
    if (made.text == nullptr) return made;
    made.text[static_cast<size_t>(count)] = L'\0';
    made.length = static_cast<int>(count);
    return made;
}

int signOf(int difference) {
    return difference < 0 ? -1 : difference > 0 ? 1 : 0;
}

bool occursAt(int64_t index, const WideText& text, const wchar_t* pattern, int64_t length) {
    return std::wmemcmp(text.characters() + index, pattern, static_cast<size_t>(length)) == 0;
}

}  // namespace

WideText joined(const wchar_t* head, int64_t headLength, const wchar_t* middle, int64_t middleLength,
                const wchar_t* tail, int64_t tailLength) {
    WideText made = unfilled(headLength + middleLength + tailLength);
    if (made.text == nullptr) return made;
    wchar_t* next = made.text.get();
    next = std::wmemcpy(next, head, static_cast<size_t>(headLength)) + headLength;
    next = std::wmemcpy(next, middle, static_cast<size_t>(middleLength)) + middleLength;
    std::wmemcpy(next, tail, static_cast<size_t>(tailLength));
    return made;
}

WideText copied(const wchar_t* text, int64_t length) {
    return joined(text, length, L"", 0, L"", 0);
}

WideText copied(const wchar_t* text) {
    return copied(text, static_cast<int64_t>(std::wcslen(text)));
}

WideText copied(const char* text) {
    WideText made = unfilled(static_cast<int64_t>(decodeUtf8(text, nullptr)));
    if (made.text != nullptr) decodeUtf8(text, made.text.get());
    return made;
}

int64_t lengthUpTo(const wchar_t* text, int64_t limit) {
    int64_t length = 0;
    while (length < limit && text[length] != L'\0') ++length;
    return length;
}

int compared(const WideText& left, const WideText& right) {
    if (left.length != right.length) return left.length > right.length ? 1 : -1;
    return comparedUpTo(left.length, left, right);
}

int comparedUpTo(int count, const WideText& left, const WideText& right) {
    return signOf(std::wcsncmp(left.characters(), right.characters(), static_cast<size_t>(count)));
}

int firstIn(const WideText& text, const wchar_t* pattern) {
    const int64_t length = static_cast<int64_t>(std::wcslen(pattern));
    // Less than, not up to: a pattern at the very end does not count.
    for (int64_t index = 0; index < text.length - length; ++index)
        if (occursAt(index, text, pattern, length)) return static_cast<int>(index);
    return -1;
}

int lastIn(const WideText& text, const wchar_t* pattern) {
    const int64_t length = static_cast<int64_t>(std::wcslen(pattern));
    for (int64_t index = text.length - length; index >= 0; --index)
        if (occursAt(index, text, pattern, length)) return static_cast<int>(index);
    return -1;
}

}  // namespace QxFontEffect
