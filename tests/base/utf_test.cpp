#include <gtest/gtest.h>

#include <clocale>
#include <cstring>
#include <cwchar>
#include <string>
#include <vector>

#include "base/utf16.h"
#include "base/utf8.h"
#include "support/random.h"

namespace QxFontEffect {
namespace {

using test::Rng;

std::wstring decoded(const std::string& bytes, size_t (*decode)(const char*, wchar_t*) = decodeUtf8) {
    std::vector<wchar_t> characters(bytes.size() + 1, L'?');
    const size_t count = decode(bytes.c_str(), characters.data());
    EXPECT_EQ(decode(bytes.c_str(), nullptr), count) << "counting alone";
    EXPECT_LE(count, bytes.size());
    EXPECT_EQ(characters[count], L'\0');
    return std::wstring(characters.data(), count);
}

std::string encoded(const std::wstring& text, size_t room) {
    std::vector<char> bytes(room + 1, '?');
    const size_t count = encodeUtf8(text.c_str(), bytes.data(), room);
    EXPECT_EQ(bytes[room], '?') << "written behind the end";
    EXPECT_EQ(bytes[count], room == 0 ? '?' : '\0');
    return std::string(bytes.data(), count);
}
std::string encoded(const std::wstring& text) {
    return encoded(text, 6 * text.size() + 1);
}

std::wstring one(uint32_t c) {
    return std::wstring(1, static_cast<wchar_t>(c));
}

std::vector<uint16_t> units(const std::wstring& text) {
    std::vector<uint16_t> made(2 * text.size() + 1, 0x3F3F);
    const size_t count = encodeUtf16(text.c_str(), made.data());
    EXPECT_EQ(encodeUtf16(text.c_str(), nullptr), count);
    EXPECT_EQ(made[count], 0);
    made.resize(count);
    return made;
}

TEST(Utf8, EncodesByTheSixByteRule) {
    const struct {
        uint32_t character;
        const char* bytes;
    } cases[] = {
        {0x01, "\x01"},
        {0x7F, "\x7F"},
        {0x80, "\xC2\x80"},
        {0x7FF, "\xDF\xBF"},
        {0x800, "\xE0\xA0\x80"},
        {0xFFFF, "\xEF\xBF\xBF"},
        {0x10000, "\xF0\x90\x80\x80"},
        {0x10FFFF, "\xF4\x8F\xBF\xBF"},
        {0x110000, "\xF4\x90\x80\x80"},
        {0x1FFFFF, "\xF7\xBF\xBF\xBF"},
        {0x200000, "\xF8\x88\x80\x80\x80"},
        {0x3FFFFFF, "\xFB\xBF\xBF\xBF\xBF"},
        {0x4000000, "\xFC\x84\x80\x80\x80\x80"},
        {0x7FFFFFFF, "\xFD\xBF\xBF\xBF\xBF\xBF"},
        {0xD800, "\xEF\xBF\xBD"},
        {0xDFFF, "\xEF\xBF\xBD"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(encoded(one(c.character)), c.bytes) << std::hex << c.character;
        EXPECT_EQ(encodedUtf8Size(one(c.character).c_str()), static_cast<long long>(std::strlen(c.bytes)));
    }
    const std::wstring negative = L"a" + one(0x80000000) + one(0xFFFFFFFF);
    EXPECT_EQ(encoded(negative), "a");
    EXPECT_EQ(encodedUtf8Size(negative.c_str()), -1);
}

TEST(Utf8, RoundTripsEveryCharacterUnderTheCLocale) {
    ASSERT_NE(std::setlocale(LC_ALL, "C"), nullptr);
    for (uint32_t c = 1; c <= 0x10FFFF; ++c) {
        if (c >= 0xD800 && c <= 0xDFFF) continue;
        char bytes[5];
        wchar_t back[5];
        const wchar_t text[] = {static_cast<wchar_t>(c), 0};
        const size_t size = encodeUtf8(text, bytes, sizeof bytes);
        ASSERT_TRUE(isWellFormedUtf8(bytes, size)) << std::hex << c;
        ASSERT_EQ(decodeUtf8(bytes, back), 1u) << std::hex << c;
        ASSERT_EQ(back[0], text[0]) << std::hex << c;
        ASSERT_EQ(decodeModifiedUtf8(bytes, back), 1u) << std::hex << c;
        ASSERT_EQ(back[0], text[0]) << std::hex << c;
    }
}

TEST(Utf8, GivesOneReplacementForEachMalformedSequence) {
    const struct {
        const char* what;
        const char* bytes;
        const wchar_t* wanted;
    } cases[] = {
        {"continuation bytes alone", "a\xBF\x80z", L"a\xFFFD\xFFFDz"},
        {"bytes that never occur", "\xFE\xFF", L"\xFFFD\xFFFD"},
        {"two bytes cut off at the end", "\xC3", L"\xFFFD"},
        {"four bytes cut off at the end", "\xF0\x9F\x98", L"\xFFFD"},
        {"cut off by a letter", "\xE2\x82z", L"\xFFFDz"},
        {"cut off by another lead byte", "\xF0\x9F\xC3\xA9", L"\xFFFD\xE9"},
        {"NUL in two bytes", "\xC0\x80z", L"\xFFFDz"},
        {"U+7F in two bytes", "\xC1\xBF", L"\xFFFD"},
        {"U+7FF in three bytes", "\xE0\x9F\xBF", L"\xFFFD"},
        {"U+FFFF in four bytes", "\xF0\x8F\xBF\xBF", L"\xFFFD"},
        {"U+100000 in five bytes", "\xF8\x84\x80\x80\x80", L"\xFFFD"},
        {"a surrogate pair", "\xED\xA0\xBD\xED\xB8\x80", L"\xFFFD\xFFFD"},
        {"neighbours of the surrogates", "\xED\x9F\xBF\xEE\x80\x80", L"\xD7FF\xE000"},
        {"above the last character", "\xF4\x90\x80\x80z", L"\xFFFDz"},
        {"five bytes", "\xF8\x88\x80\x80\x80z", L"\xFFFDz"},
        {"six bytes and one more", "\xFD\xBF\xBF\xBF\xBF\xBF\xBF", L"\xFFFD\xFFFD"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(decoded(c.bytes), c.wanted) << c.what;
        const bool wellFormed = std::wcschr(c.wanted, 0xFFFD) == nullptr;
        EXPECT_EQ(isWellFormedUtf8(c.bytes, std::strlen(c.bytes)), wellFormed) << c.what;
    }
    EXPECT_TRUE(isWellFormedUtf8("a\0b", 3));
    EXPECT_FALSE(isWellFormedUtf8("\xE2\x82\xAC", 2)) << "must not look behind the end";
}

TEST(Utf8, DecodesWhatAJavaMachineHandsOut) {
    const struct {
        const char* bytes;
        const wchar_t* wanted;
    } cases[] = {
        {"a\xC3\xA9\xED\xA0\xBD\xED\xB8\x80\xC0\x80z\xED\xA0\xBD", L"a\xE9\x1F600\xFFFDz\xD83D"},
        {"\xED\xB8\x80\xED\xA0\xBD", L"\xDE00\xD83D"},                             // in the wrong order
        {"\xED\xA0\xBD\xED\xA0\xBD\xED\xB8\x80", L"\xD83D\x1F600"},                // one too many
        {"\xED\xA0\x80\xED\xB0\x80\xED\xAF\xBF\xED\xBF\xBF", L"\x10000\x10FFFF"},  // first and last pair
        {"\xED\xA0\xBD\xC0\x80", L"\xD83D\xFFFD"},
        {"\xED\xA0\xBD\xED\xB8", L"\xD83D\xFFFD"},
        {"\xF0\x9F\x98\x80", L"\x1F600"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(decoded(c.bytes, decodeModifiedUtf8), c.wanted) << testing::PrintToString(std::string(c.bytes));
}

TEST(Utf8, SurvivesRandomBytes) {
    // Bytes that matter to the decoder, so that nearly every rule meets every other.
    const uint8_t kBytes[] = {0x41, 0x7F, 0x80, 0x9F, 0xA0, 0xBF, 0xC0, 0xC2, 0xDF, 0xE0, 0xED,
                              0xEF, 0xF0, 0xF4, 0xF5, 0xF8, 0xFC, 0xFD, 0xFE, 0xFF, 0x90, 0x8F};
    Rng rng(8);
    for (int round = 0; round < 20000; ++round) {
        std::string bytes(rng.below(9), '\0');
        for (char& byte : bytes) byte = static_cast<char>(kBytes[rng.below(sizeof kBytes)]);
        const std::wstring text = decoded(bytes);
        decoded(bytes, decodeModifiedUtf8);
        const std::string clean = encoded(text);
        ASSERT_TRUE(isWellFormedUtf8(clean.data(), clean.size())) << testing::PrintToString(bytes);
        ASSERT_EQ(decoded(clean), text) << testing::PrintToString(bytes);
        ASSERT_EQ(isWellFormedUtf8(bytes.data(), bytes.size()), clean == bytes) << testing::PrintToString(bytes);
    }
}

TEST(Utf8, WritesWholeCharactersOnlyAndStaysInItsRoom) {
    const std::wstring text = L"a\xE9\x20AC\x1F600z";
    const size_t wanted[] = {0, 0, 1, 1, 3, 3, 3, 6, 6, 6, 6, 10, 11, 11};
    for (size_t room = 0; room < sizeof wanted / sizeof *wanted; ++room)
        EXPECT_EQ(encoded(text, room).size(), wanted[room]) << "room " << room;
}

TEST(Utf16, SplitsFromFFFFUpwards) {
    using Units = std::vector<uint16_t>;
    EXPECT_EQ(units(one(0xFFFE)), Units({0xFFFE}));
    EXPECT_EQ(units(one(0xFFFF)), Units({0xDBFF, 0xDFFF}));
    EXPECT_EQ(units(one(0x10FFFF)), Units({0xDBFF, 0xDFFF}));
    EXPECT_EQ(units(one(0x110000)), Units({0xFFFD}));
    EXPECT_EQ(units(one(0xFFFFFFFF)), Units({0xFFFD}));
    EXPECT_EQ(units(one(0xD83D)), Units({0xD83D}));
    EXPECT_EQ(units(L"a\x1F600z"), Units({'a', 0xD83D, 0xDE00, 'z'}));
    for (uint32_t c = 0x10000; c <= 0x10FFFF; ++c) {
        const wchar_t text[] = {static_cast<wchar_t>(c), 0};
        uint16_t pair[3];
        ASSERT_EQ(encodeUtf16(text, pair), 2u);
        ASSERT_EQ(0x10000 + ((pair[0] - 0xD800u) << 10) + (pair[1] - 0xDC00u), c);
    }
}

}  // namespace
}  // namespace QxFontEffect
