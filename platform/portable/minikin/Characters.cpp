#include "Characters.h"

#include <unicode/uchar.h>
#include <unicode/unorm2.h>
#include <unicode/utf16.h>

#include <array>

namespace minikin {

uint32_t nextCodePoint(const uint16_t* text, size_t end, size_t* index) {
    const uint32_t unit = text[(*index)++];
    if (!U16_IS_SURROGATE(unit)) return unit;
    if (U16_IS_SURROGATE_LEAD(unit) && *index < end && U16_IS_TRAIL(text[*index])) {
        return static_cast<uint32_t>(U16_GET_SUPPLEMENTARY(unit, text[(*index)++]));
    }
    return 0xFFFD;
}

bool isVariationSelector(uint32_t c) {
    return (c >= 0xFE00 && c <= 0xFE0F) || (c >= 0xE0100 && c <= 0xE01EF);
}

bool needsNoFont(uint32_t c) {
    switch (c) {
        case 0x00AD:  // soft hyphen
        case 0x034F:  // combining grapheme joiner
        case 0x061C:  // Arabic letter mark
        case 0xFEFF:  // byte order mark
            return true;
        default:
            return (c >= 0x200C && c <= 0x200F) || (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069) ||
                   isVariationSelector(c);
    }
}

bool isSticky(uint32_t c) {
    switch (c) {
        case '!':
        case ',':
        case '-':
        case '.':
        case ':':
        case ';':
        case '?':
        case 0x00A0:  // no-break space
        case 0x2010:  // hyphen
        case 0x2011:  // no-break hyphen
        case 0x202F:  // narrow no-break space
        case 0x2640:  // female sign, male sign and staff of Aesculapius end joined emoji
        case 0x2642:
        case 0x2695:
            return true;
        default:
            return isCombiningMark(c);
    }
}

bool isCombiningMark(uint32_t c) {
    return (U_GET_GC_MASK(static_cast<UChar32>(c)) & U_GC_M_MASK) != 0;
}

bool isEmojiModifierAfterBase(uint32_t c, uint32_t previous) {
    return u_hasBinaryProperty(static_cast<UChar32>(c), UCHAR_EMOJI_MODIFIER) &&
           u_hasBinaryProperty(static_cast<UChar32>(previous), UCHAR_EMOJI_MODIFIER_BASE);
}

uint32_t decompositionBase(uint32_t c) {
    UErrorCode error = U_ZERO_ERROR;
    const UNormalizer2* normalizer = unorm2_getNFCInstance(&error);
    if (U_FAILURE(error)) return 0;
    std::array<UChar, 8> buffer{};  // one step gives at most two characters
    const int32_t length = unorm2_getRawDecomposition(normalizer, static_cast<UChar32>(c), buffer.data(),
                                                      static_cast<int32_t>(buffer.size()), &error);
    if (U_FAILURE(error) || length <= 0) return 0;
    UChar32 first = 0;
    U16_GET(buffer.data(), 0, 0, length, first);
    return static_cast<uint32_t>(first);
}

bool breaksAfter(uint16_t unit) {
    switch (unit) {
        case 0x0020:
        case 0x3000:
        case 0x061C:  // and the other direction controls
        case 0x200E:
        case 0x200F:
            return true;
        default:
            return (unit >= 0x2000 && unit <= 0x200A) || (unit >= 0x202A && unit <= 0x202E) ||
                   (unit >= 0x2066 && unit <= 0x2069);
    }
}

// Ideographs do not join or kern across their edges, kana may.
bool breaksBefore(uint16_t unit) {
    return (unit >= 0x3400 && unit <= 0x9FFF) || breaksAfter(unit);
}

bool isWordSpace(uint16_t unit) {
    return unit == 0x0020 || unit == 0x00A0;
}

}  // namespace minikin
