#include "text/script_runs.h"

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

namespace QxFontEffect {
namespace {

std::vector<std::pair<std::string, size_t>> runsOf(const std::u16string& text) {
    std::vector<std::pair<std::string, size_t>> runs;
    const auto* const units = reinterpret_cast<const uint16_t*>(text.data());
    for (size_t start = 0; start < text.size();) {
        const ScriptRun run = scriptRunAt(units, text.size(), start);
        EXPECT_EQ(start, run.start);
        EXPECT_LT(start, run.end);
        char letters[4];
        for (int i = 0; i < 4; ++i) letters[i] = static_cast<char>(static_cast<uint32_t>(run.script) >> (24 - 8 * i));
        runs.emplace_back(std::string(letters, 4), run.end);
        start = run.end;
    }
    return runs;
}

TEST(ScriptRuns, CommonCharactersJoinTheRunBeforeAndLeadingOnesTheFirstLetters) {
    using Runs = std::vector<std::pair<std::string, size_t>>;
    const struct {
        const char* what;
        std::u16string text;
        Runs runs;
    } rows[] = {
        {"empty", u"", {}},
        {"latin", u"ab c", {{"Latn", 4}}},
        {"digits lead", u"12 \uAC00", {{"Hang", 4}}},
        {"blanks between scripts", u"\uAC00 1a", {{"Hang", 3}, {"Latn", 4}}},
        {"hiragana, katakana", u"\u3042\u30A2", {{"Hira", 1}, {"Kana", 2}}},
        {"marks only", u"\u064B\u064B", {{"Zyyy", 2}}},
        {"common, inherited, letter", u"1\u064B\u0628", {{"Arab", 3}}},
        {"mark inside", u"a\u0301b", {{"Latn", 3}}},
        {"private use breaks", u"\uAC00\uE000\uAC00", {{"Hang", 1}, {"Zzzz", 2}, {"Hang", 3}}},
        {"lone high surrogate joins", u"\uAC00\xD800\uAC00", {{"Hang", 3}}},
        {"lone high surrogate last", u"\xD83D", {{"Zyyy", 1}}},
        {"lone low surrogate",
         u"\xDC00"
         u"a",
         {{"Latn", 2}}},
        {"pair", u"\U00020000a", {{"Hani", 2}, {"Latn", 3}}},
        {"pair last", u"\U00020000", {{"Hani", 2}}},
        {"terminator", std::u16string(u"\u4E00\0", 2), {{"Hani", 2}}},
    };
    for (const auto& row : rows) EXPECT_EQ(row.runs, runsOf(row.text)) << row.what;
}

}  // namespace
}  // namespace QxFontEffect
