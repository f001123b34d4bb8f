// Command lines of the renderer, an argument a line. What is accepted can be saved as a style and read again.
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "failure.h"
#include "fuzz/check.h"
#include "fuzz/input.h"
#include "fuzz/memory_file.h"
#include "fuzz/quiet_log.h"
#include "options.h"
#include "style_file.h"

namespace {

std::vector<std::string> wordsOf(const std::string& text) {
    std::istringstream lines(text);
    std::vector<std::string> words = {"qxrender"};
    for (std::string line; std::getline(lines, line) && words.size() < 64;) {
        // Nothing is to be read that a generated name happens to hit, and no pattern is there to be saved.
        if (line.find('/') == std::string::npos && line.find("file=") == std::string::npos) words.push_back(line);
    }
    return words;
}

std::optional<qxrender::Options> parsed(std::vector<std::string> words) {
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    try {
        return qxrender::parseOptions(static_cast<int>(arguments.size()), arguments.data());
    } catch (const qxrender::Failure&) {
        return std::nullopt;  // refused with a message, as it should be
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    QxFontEffect::test::quietStreams();
    const auto options = parsed(wordsOf(std::string(reinterpret_cast<const char*>(data), size)));
    if (!options) return 0;
    const std::string style = qxrender::formatStyle(options->job.style);
    FUZZ_CHECK(qxrender::formatStyle(qxrender::readStyle(QxFontEffect::test::MemoryFile(style).path())) == style);
    return 0;
}
