// Conversions and edits of strings made from arbitrary bytes.
#include <cwchar>
#include <memory>
#include <string>
#include <vector>

#include "base/QxString.h"
#include "base/utf8.h"
#include "fuzz/check.h"
#include "fuzz/input.h"
#include "fuzz/quiet_log.h"

namespace {

using namespace QxFontEffect;
using test::Input;

/// Decoding gives at most as many characters as bytes, and what was well formed comes back the same.
void checkCodec(const std::string& bytes) {
    std::vector<wchar_t> wide(bytes.size() + 1);
    const size_t plain = decodeUtf8(bytes.c_str(), wide.data());
    FUZZ_CHECK(plain <= bytes.size() && wide[plain] == 0 && std::wcslen(wide.data()) == plain);

    const std::string text(bytes.c_str());
    if (isWellFormedUtf8(text.data(), text.size())) {
        std::vector<char> back(text.size() + 1);
        FUZZ_CHECK(encodedUtf8Size(wide.data()) == static_cast<long long>(text.size()));
        encodeUtf8(wide.data(), back.data(), back.size());
        FUZZ_CHECK(text == back.data());
    }
    const size_t modified = decodeModifiedUtf8(bytes.c_str(), wide.data());
    FUZZ_CHECK(modified <= bytes.size() && wide[modified] == 0);
}

/// Sizes and conversions of one string agree with each other.
void checkSizes(const QxString& text) {
    const int units = text.GetUTF16Size();
    const std::unique_ptr<uint16_t[]> utf16(text.GetUTF16());
    FUZZ_CHECK(units >= 1 && utf16 != nullptr && utf16[static_cast<size_t>(units) - 1] == 0);

    const int size = text.GetUTF8Size();
    if (size < 0) return;
    std::vector<char> utf8(static_cast<size_t>(size) + 1, 'x');
    FUZZ_CHECK(text.GetUTF8(utf8.data(), size));
    if (size > 0) FUZZ_CHECK(std::char_traits<char>::length(utf8.data()) < static_cast<size_t>(size));
}

/// Arbitrary 32-bit values are characters too.
void checkWide(Input& input) {
    std::vector<wchar_t> characters;
    while (!input.empty() && characters.size() < 64) characters.push_back(input.take<wchar_t>());
    characters.push_back(0);
    QxString text;
    FUZZ_CHECK(text.Construct(characters.data()));
    FUZZ_CHECK(text.GetLength() == static_cast<int>(std::wcslen(characters.data())));
    checkSizes(text);
}

void edit(Input& input, QxString& text) {
    const int length = text.GetLength();
    const int start = input.take<int8_t>();
    const int count = input.take<int8_t>();
    switch (input.below(7)) {
        case 0:
            FUZZ_CHECK(text.Append(input.bytes(static_cast<size_t>(input.below(16))).c_str()));
            break;
        case 1:
            text.Insert(&text, start);
            break;
        case 2: {
            const bool valid = start >= 0 && start < length && count >= 0 && start + count <= length;
            FUZZ_CHECK(text.Remove(start, count) == valid);
            FUZZ_CHECK(text.GetLength() == (valid ? length - count : length));
            break;
        }
        case 3:
            text.SetSubstring(&text, start, count);
            break;
        case 4: {
            const std::string pattern = input.bytes(static_cast<size_t>(input.below(4)));
            FUZZ_CHECK(text.Find(pattern.c_str()) < length || length <= 0);
            FUZZ_CHECK(text.ReverseFind(pattern.c_str()) <= length);
            break;
        }
        case 5:
            text.Set(text.GetPointer());
            break;
        default:
            FUZZ_CHECK(text.CompareTo(&text) == 0);
            break;
    }
    // Doubling by insertion is welcome, but not without end.
    if (text.GetLength() > 4096) text.Clear();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    test::quietLog();
    Input input(data, size);
    const std::string bytes = input.bytes(static_cast<size_t>(input.below(200)));
    checkCodec(bytes);
    QxString text;
    FUZZ_CHECK(text.Construct(bytes.c_str()));
    for (int edits = 0; !input.empty() && edits < 40; ++edits) edit(input, text);
    checkSizes(text);
    checkWide(input);
    return 0;
}
