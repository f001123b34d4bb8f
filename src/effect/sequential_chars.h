#pragma once

#include <cstdint>

#include "effect/QxGradient.h"
#include "effect/safe_convert.h"
#include "effect/setting_rules.h"

namespace QxFontEffect {

/// Writes the string of one property record at a caller's cursor, piece by piece.
///
/// The record's letter is plain ASCII and every other byte has its top bit set, so the letters can be found in a joined
/// key and no byte is a NUL. Numbers keep only the low bits their piece has room for.
class SequentialChars {
public:
    /// Without a cursor, or with one that stands nowhere, nothing is written.
    SequentialChars(char** cursor, char letter) : mCursor(cursor), mOut(cursor != nullptr ? *cursor : nullptr) {
        if (mOut != nullptr) *mOut++ = letter;
    }

    /// Eight nibbles, most significant first.
    SequentialChars& color(uint32_t value) {
        for (int shift = 28; shift >= 0; shift -= 4) put(value >> shift & 15u);
        return *this;
    }

    /// Whole degrees in 0..359, as the high part and the low seven bits.
    SequentialChars& angle(float degrees) {
        const uint32_t turned = static_cast<uint32_t>(wholeRemainderFromZero(degrees, 360));
        put(turned >> 7);
        put(turned & 127u);
        return *this;
    }

    SequentialChars& byte7(int32_t value) {
        put(static_cast<uint32_t>(value) & 127u);
        return *this;
    }
    SequentialChars& byte7(float value) { return byte7(truncToInt(value)); }

    SequentialChars& nibbles2(int32_t value) { return nibbles(value, 4); }
    SequentialChars& nibbles4(int32_t value) { return nibbles(value, 12); }

    /// Colour and place of each stop. A stop's own opacity is part of its colour's alpha byte by then.
    SequentialChars& stops(int32_t count, const QxGradient* gradient);

    /// Ends the string and moves the caller's cursor onto its NUL. Returns 1, like the records' operation; 0 when
    /// nothing was written.
    int finish() {
        if (mOut == nullptr) return 0;
        *mOut = '\0';
        *mCursor = mOut;
        return 1;
    }

private:
    void put(uint32_t low7) {
        if (mOut != nullptr) *mOut++ = static_cast<char>(static_cast<unsigned char>(128u + low7));
    }

    SequentialChars& nibbles(int32_t value, int highestShift) {
        for (int shift = highestShift; shift >= 0; shift -= 4) put(static_cast<uint32_t>(value) >> shift & 15u);
        return *this;
    }

    char** mCursor;
    char* mOut;
};

/// Hundredths of a setting, truncated toward zero after a single-precision product.
inline int32_t percentOf(float value) {
    return truncToInt(value * 100.0f);
}

inline SequentialChars& SequentialChars::stops(int32_t count, const QxGradient* gradient) {
    for (int32_t i = 0; gradient != nullptr && i < count; ++i) {
        color(gradient[i].color);
        byte7(percentOf(gradient[i].position));
    }
    return *this;
}

/// The reported length of a string with stops: 10 bytes a stop although 9 are written. Both numbers are part of the
/// key's format.
inline int sequentialLengthWithStops(int fixedLength, int32_t count) {
    return count < 1 ? fixedLength : saturateToInt(fixedLength + int64_t{10} * count);
}

}  // namespace QxFontEffect
