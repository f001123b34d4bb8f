#include "base/utf8.h"

#include <cstdint>
#include <cstring>

namespace QxFontEffect {

namespace {

constexpr uint32_t kReplacement = 0xFFFD;

bool isSurrogate(uint32_t c) {
    return c >= 0xD800 && c <= 0xDFFF;
}
bool isHighSurrogate(uint32_t c) {
    return c >= 0xD800 && c <= 0xDBFF;
}
bool isLowSurrogate(uint32_t c) {
    return c >= 0xDC00 && c <= 0xDFFF;
}

/// One character cut out of a byte text. `value` is what the bits say; `shortest` is false for truncated, stray and
/// overlong sequences, whose value means nothing.
struct Sequence {
    uint32_t value;
    size_t length;
    bool shortest;
};

/// Continuation bytes that the lead byte asks for; -1 for a byte that leads nothing. The old five and six byte forms
/// count, so that each of them is one malformed sequence and not five or six.
int continuationsAfter(uint8_t lead) {
    if (lead < 0x80) return 0;
    if (lead < 0xC0) return -1;
    if (lead < 0xE0) return 1;
    if (lead < 0xF0) return 2;
    if (lead < 0xF8) return 3;
    if (lead < 0xFC) return 4;
    if (lead < 0xFE) return 5;
    return -1;
}

/// Cuts the next sequence; `end` is behind the last byte and `next` before it.
Sequence cut(const uint8_t* next, const uint8_t* end) {
    // Smallest value that needs this many continuation bytes.
    constexpr uint32_t kSmallest[] = {0, 0x80, 0x800, 0x10000, 0x200000, 0x4000000};
    const uint8_t lead = *next;
    const int wanted = continuationsAfter(lead);
    if (wanted <= 0) return {lead, 1, wanted == 0};
    uint32_t value = lead & (0x3Fu >> wanted);
    int found = 0;
    while (found < wanted && next + 1 + found < end && (next[1 + found] & 0xC0) == 0x80) {
        value = value << 6 | (next[1 + found] & 0x3Fu);
        ++found;
    }
    return {value, static_cast<size_t>(1 + found), found == wanted && value >= kSmallest[wanted]};
}

bool isCharacter(const Sequence& sequence) {
    return sequence.shortest && sequence.value <= 0x10FFFF && !isSurrogate(sequence.value);
}

uint32_t ordinaryCharacter(const uint8_t*& next, const uint8_t* end) {
    const Sequence sequence = cut(next, end);
    next += sequence.length;
    return isCharacter(sequence) ? sequence.value : kReplacement;
}

uint32_t modifiedCharacter(const uint8_t*& next, const uint8_t* end) {
    const Sequence first = cut(next, end);
    if (!first.shortest || !isSurrogate(first.value)) return ordinaryCharacter(next, end);
    next += first.length;
    if (!isHighSurrogate(first.value) || next == end) return first.value;
    const Sequence second = cut(next, end);
    if (!second.shortest || !isLowSurrogate(second.value)) return first.value;
    next += second.length;
    return 0x10000 + ((first.value - 0xD800) << 10) + (second.value - 0xDC00);
}

template <uint32_t (*nextCharacter)(const uint8_t*&, const uint8_t*)>
size_t decode(const char* text, wchar_t* dst) {
    const uint8_t* next = reinterpret_cast<const uint8_t*>(text);
    const uint8_t* end = next + std::strlen(text);
    size_t count = 0;
    while (next != end) {
        const uint32_t c = nextCharacter(next, end);
        if (dst != nullptr) dst[count] = static_cast<wchar_t>(c);
        ++count;
    }
    if (dst != nullptr) dst[count] = L'\0';
    return count;
}

/// Bytes of one character by the six-byte rule; 0 for a value that is negative as a signed number.
size_t encodedLength(uint32_t c) {
    if (c <= 0x7F) return 1;
    if (c <= 0x7FF) return 2;
    if (c <= 0xFFFF) return 3;
    if (c <= 0x1FFFFF) return 4;
    if (c <= 0x3FFFFFF) return 5;
    if (c <= 0x7FFFFFFF) return 6;
    return 0;
}

void encodeOne(uint32_t c, size_t length, uint8_t* dst) {
    if (length == 1) {
        dst[0] = static_cast<uint8_t>(c);
        return;
    }
    for (size_t i = length - 1; i > 0; --i) {
        dst[i] = static_cast<uint8_t>(0x80 | (c & 0x3F));
        c >>= 6;
    }
    // As many leading ones as the sequence has bytes: C0, E0, F0, F8, FC.
    const uint32_t mark = 0xFF00u >> length & 0xFF;
    dst[0] = static_cast<uint8_t>(mark | c);
}

}  // namespace

size_t decodeUtf8(const char* text, wchar_t* dst) {
    return decode<ordinaryCharacter>(text, dst);
}

size_t decodeModifiedUtf8(const char* text, wchar_t* dst) {
    return decode<modifiedCharacter>(text, dst);
}

bool isWellFormedUtf8(const char* bytes, size_t size) {
    const uint8_t* next = reinterpret_cast<const uint8_t*>(bytes);
    const uint8_t* end = next + size;
    while (next != end) {
        const Sequence sequence = cut(next, end);
        if (!isCharacter(sequence)) return false;
        next += sequence.length;
    }
    return true;
}

long long encodedUtf8Size(const wchar_t* text) {
    long long size = 0;
    for (; *text != L'\0'; ++text) {
        // Whether wchar_t is signed depends on the target.
        const size_t length = encodedLength(static_cast<uint32_t>(*text));
        size += length == 0 ? -1 : static_cast<long long>(length);
    }
    return size;
}

size_t encodeUtf8(const wchar_t* text, char* dst, size_t size) {
    if (size == 0) return 0;
    uint8_t* bytes = reinterpret_cast<uint8_t*>(dst);
    size_t used = 0;
    for (; *text != L'\0'; ++text) {
        const uint32_t c = static_cast<uint32_t>(*text);
        const size_t length = encodedLength(c);
        if (length > size - 1 - used) break;
        // A surrogate and its replacement both take three bytes, so sizes agree.
        if (length > 0) encodeOne(isSurrogate(c) ? kReplacement : c, length, bytes + used);
        used += length;
    }
    bytes[used] = 0;
    return used;
}

}  // namespace QxFontEffect
