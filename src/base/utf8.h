#pragma once

#include <cstddef>

namespace QxFontEffect {

// UTF-8 to and from 32-bit wide characters. Pure functions, independent of the process's locale: an application's
// virtual machine may run in the C locale, where the C library converts nothing beyond ASCII.

/// Converts a NUL-terminated UTF-8 text.
///
/// @param dst  room for the result and a terminator, which is always written; strlen(text) + 1 characters are enough
///             for any text. Null only counts.
/// @return number of characters without the terminator.
///
/// Nothing fails. Each malformed sequence gives one U+FFFD: a byte that cannot start a character; a lead byte with
/// the continuation bytes that follow it, when they are too few; a whole sequence that is longer than needed, a
/// surrogate, or above U+10FFFF.
size_t decodeUtf8(const char* text, wchar_t* dst);

/// The same for the modified form in which a Java virtual machine hands out its strings: a character above U+FFFF
/// comes as two surrogates of three bytes each and is joined. A surrogate without its partner is kept as one
/// character, so that UTF-16 indexes of the Java string stay right. The two-byte form of U+0000 gives U+FFFD rather
/// than an end of text, for the same reason.
size_t decodeModifiedUtf8(const char* text, wchar_t* dst);

/// Whether `size` bytes are well-formed UTF-8 (the ordinary form; NUL bytes are characters).
bool isWellFormedUtf8(const char* bytes, size_t size);

/// Bytes of the UTF-8 form without the terminator, by the six-byte rule: 1 up to U+7F, 2 up to U+7FF, 3 up to U+FFFF,
/// 4 up to 0x1FFFFF, 5 up to 0x3FFFFFF, 6 up to 0x7FFFFFFF. A value that is negative as a signed number takes one
/// byte away, so the sum can be negative.
long long encodedUtf8Size(const wchar_t* text);

/// Writes the UTF-8 form of a NUL-terminated text: as many whole characters as fit into size - 1 bytes, and a
/// terminator behind them.
///
/// @param size  bytes at `dst`; 0 writes nothing.
/// @return bytes written without the terminator.
///
/// Values above U+10FFFF keep their value and take 4 to 6 bytes, so that the written length agrees with
/// `encodedUtf8Size`; surrogates, which have no UTF-8 form, become U+FFFD; negative values are left out.
size_t encodeUtf8(const wchar_t* text, char* dst, size_t size);

}  // namespace QxFontEffect
