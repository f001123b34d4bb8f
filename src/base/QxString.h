#pragma once

#include <cstdint>

namespace QxFontEffect {

struct QxStringImpl;
struct WideText;

/// A heap string of 32-bit wide characters, one per Unicode code point.
///
/// Made in two steps: the constructor makes an empty shell, `Construct` the string. A constructed string may have no
/// text at all (absent); reading operations treat that as empty. Texts are copied in and owned; borrowed pointers
/// are valid until the next change. Null text arguments need a cast, since the overloads differ in the pointer type
/// only. An argument may be this string itself or its own buffer.
///
/// A failing operation returns false, -1 or null, leaves the object as it was, stores the code in brackets with
/// `Error::SetError` and logs it. On a string that is not constructed every operation fails with [8]. A string
/// argument that is not constructed fails with [8], then [7]. [1]: out of memory.
///
/// Conversions never depend on the locale of the process and never fail on bad input, see utf8.h. No operation
/// locks; one object is used by one thread at a time.
class QxString {
public:
    QxString() = default;
    QxString(const QxString&) = delete;
    QxString& operator=(const QxString&) = delete;
    ~QxString();

    /// Makes the string, without text. Already constructed: [4]; so for every form.
    bool Construct();
    /// Copies a NUL-terminated text. Null: [7].
    bool Construct(const wchar_t* text);
    /// Converts a NUL-terminated UTF-8 text. Null: [7].
    bool Construct(const char* text);
    /// Copies the other string, its absence of text included. Null: [7].
    bool Construct(const QxString* other);
    /// Copies the first `count` characters, fewer when the source ends before. Null or negative count: [7].
    bool Construct(const QxString* other, int count);
    bool Construct(const wchar_t* text, int count);

    /// Replaces the text. Null leaves it absent and succeeds.
    bool Set(const QxString* other);
    bool Set(const wchar_t* text);
    bool Set(const char* text);

    /// Makes the text absent.
    bool Clear();

    /// Puts a text behind this one. Null changes nothing and succeeds. Longer than an int can count: [7].
    bool Append(const QxString* other);
    bool Append(const wchar_t* text);
    bool Append(const char* text);

    /// Puts a text before the character at `index`, 0..length, else [3]. Null changes nothing and succeeds; an empty
    /// text fails with [7].
    bool Insert(const wchar_t* text, int index);
    bool Insert(const QxString* other, int index);

    /// Deletes `count` characters from `start`. `start` outside 0..length-1: [3]; a negative count or one that
    /// reaches beyond the end: [7].
    bool Remove(int start, int count);

    /// Replaces this text by the characters start..end of `source`, both included; fewer when the source ends
    /// before. Null source, source without text, negative start or end < start - 1: [7].
    bool SetSubstring(const QxString* source, int start, int end);

    /// Number of characters; -1 on failure.
    int GetLength() const;

    /// The NUL-terminated characters, borrowed; null when the text is absent. They may be changed in place, but not to
    /// NUL.
    const wchar_t* GetPointer() const;
    wchar_t* GetPointer();

    /// Stores the character at `index`, 0..length-1, else [3]. Null `out`: [7].
    bool GetChar(int index, wchar_t* out) const;

    /// Bytes of the UTF-8 form, terminator included; -1 on failure. A character whose signed value is negative
    /// counts -1, so 0 and below are possible for a constructed string too.
    int GetUTF8Size() const;

    /// Writes the UTF-8 form: as many whole characters as fit into size - 1 bytes, a terminator behind them and one
    /// in the last byte. Size 0 writes nothing and succeeds. Null `dst` or negative size: [7].
    bool GetUTF8(char* dst, int size) const;

    /// Units of the UTF-16 form, terminator included; -1 on failure.
    int GetUTF16Size() const;

    /// A new, zero-terminated array of UTF-16 units, owned by the caller (`delete[]`); null on failure. U+FFFF takes
    /// two units, see utf16.h.
    uint16_t* GetUTF16() const;

    /// 0 when equal, else -1 or 1: the longer text is greater, texts of one length compare by code point.
    /// Null or not constructed argument: -1 and [7].
    int CompareTo(const QxString* other) const;
    int CompareTo(const char* text) const;
    /// Compares the first `count` characters only, whatever the lengths. Negative count: -1 and [7].
    int CompareTo(const char* text, int count) const;

    /// First index at which the pattern occurs with at least one character behind it, else -1. A pattern at the very
    /// end, or equal to the whole text, is not found: callers look for marks inside names and rely on it. Null: [7].
    int Find(const wchar_t* pattern) const;
    int Find(const char* pattern) const;

    /// Last index at which the pattern occurs, the end included, else -1. Null: [7].
    int ReverseFind(const wchar_t* pattern) const;
    int ReverseFind(const char* pattern) const;

private:
    friend class QxLog;  // asks for the text of strings that may not be constructed, without an error

    bool create(WideText&& content);
    bool replace(WideText&& content);
    bool insert(const wchar_t* text, int64_t length, int index);
    static bool isUsable(const QxString* argument, int line);

    QxStringImpl* mImpl = nullptr;
};

}  // namespace QxFontEffect
