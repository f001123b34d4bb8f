#include "text_input.h"

#include "base/utf8.h"
#include "failure.h"
#include "input_file.h"

namespace qxrender {

namespace {

constexpr size_t kLargestText = 64 << 20;

}  // namespace

std::string readTextFile(const std::string& path) {
    std::string text = readInputFile("text", path, kLargestText);
    if (text.compare(0, 3, "\xEF\xBB\xBF") == 0) text.erase(0, 3);
    if (!text.empty() && text.back() == '\n') text.pop_back();
    return text;
}

std::vector<char32_t> decodeText(const std::string& utf8) {
    if (utf8.size() > kLargestText) throw Failure("the text is larger than 64 MiB");
    if (utf8.find('\0') != std::string::npos) throw Failure("the text holds a NUL");
    if (!QxFontEffect::isWellFormedUtf8(utf8.data(), utf8.size())) throw Failure("the text is not UTF-8");
    std::vector<wchar_t> wide(utf8.size() + 1);
    const size_t count = QxFontEffect::decodeUtf8(utf8.c_str(), wide.data());
    return std::vector<char32_t>(wide.begin(), wide.begin() + static_cast<std::ptrdiff_t>(count));
}

}  // namespace qxrender
