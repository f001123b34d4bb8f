#include "DirectionRuns.h"

#include <gtest/gtest.h>
#include <unicode/ubidi.h>
#include <unicode/unistr.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <random>
#include <string>

namespace {

using minikin::Bidi;
using minikin::DirectionRun;
using minikin::UnitRange;

/// "5-9R" for a right-to-left run of units 5 to 8, in visual order.
std::string written(const std::vector<DirectionRun>& runs) {
    std::string text;
    for (const DirectionRun& run : runs) {
        text += std::to_string(run.range.start) + "-" + std::to_string(run.range.end) + (run.rightToLeft ? "R " : "L ");
    }
    return text;
}

std::vector<DirectionRun> runsOf(const std::u16string& text, UnitRange line, Bidi bidi) {
    return minikin::directionRuns(reinterpret_cast<const uint16_t*>(text.data()), text.size(), line, bidi);
}

/// The whole paragraph through the bidi algorithm, then cut to the line.
std::vector<DirectionRun> runsOfWholeParagraph(const std::u16string& text, UnitRange line, UBiDiLevel level) {
    UErrorCode error = U_ZERO_ERROR;
    UBiDi* bidi = ubidi_open();
    ubidi_setPara(bidi, text.data(), static_cast<int32_t>(text.size()), level, nullptr, &error);
    std::vector<DirectionRun> runs;
    for (int32_t i = 0, count = ubidi_countRuns(bidi, &error); i < count; ++i) {
        int32_t start = 0, length = 0;
        const bool rightToLeft = ubidi_getVisualRun(bidi, i, &start, &length) == UBIDI_RTL;
        const UnitRange range = {std::max(static_cast<size_t>(start), line.start),
                                 std::min(static_cast<size_t>(start + length), line.end)};
        if (range.start < range.end) runs.push_back({range, rightToLeft});
    }
    ubidi_close(bidi);
    return runs;
}

/// Joins neighbours that only differ in the level, not in the direction.
std::vector<DirectionRun> merged(const std::vector<DirectionRun>& runs) {
    std::vector<DirectionRun> result;
    for (const DirectionRun& run : runs) {
        const bool continues = !result.empty() && result.back().rightToLeft == run.rightToLeft;
        if (continues && !run.rightToLeft && result.back().range.end == run.range.start) {
            result.back().range.end = run.range.end;
        } else if (continues && run.rightToLeft && result.back().range.start == run.range.end) {
            result.back().range.start = run.range.start;
        } else {
            result.push_back(run);
        }
    }
    return result;
}

TEST(DirectionRuns, FollowTheParagraph) {
    struct Case {
        const char* name;
        std::u16string text;
        UnitRange line;
        Bidi bidi;
        const char* runs;
    };
    const Case cases[] = {
        {"Latin", u"ab cd", {0, 5}, Bidi::DEFAULT_LTR, "0-5L "},
        {"Latin in a right-to-left paragraph is one run", u"ab cd", {0, 5}, Bidi::RTL, "0-5L "},
        {"trailing blank goes left", u"12 ", {0, 3}, Bidi::DEFAULT_RTL, "2-3R 0-2L "},
        {"Hebrew first", u"אב cd", {0, 5}, Bidi::DEFAULT_LTR, "3-5L 0-3R "},
        {"level given", u"אב cd", {0, 5}, Bidi::LTR, "0-2R 2-5L "},
        {"supplementary right-to-left letters", u"\U00010800a", {0, 3}, Bidi::LTR, "0-2R 2-3L "},
        {"embedding", u"a\u202Eb\u202Cc", {0, 5}, Bidi::LTR, "0-1L 1-3R 3-5L "},
        {"forced", u"אב cd", {1, 4}, Bidi::FORCE_LTR, "1-4L "},
        {"forced", u"ab", {0, 2}, Bidi::FORCE_RTL, "0-2R "},
        {"line in the middle", u"אב cd גד", {4, 7}, Bidi::DEFAULT_LTR, "5-7R 4-5L "},
        {"nothing", u"אב", {1, 1}, Bidi::RTL, ""},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(written(runsOf(each.text, each.line, each.bidi)), each.runs) << each.name;
    }
}

TEST(DirectionRuns, ShortcutsEqualTheAnalysisOfTheWholeParagraph) {
    struct Level {
        Bidi bidi;
        UBiDiLevel level;
    };
    const Level levels[] = {
        {Bidi::LTR, 0}, {Bidi::RTL, 1}, {Bidi::DEFAULT_LTR, UBIDI_DEFAULT_LTR}, {Bidi::DEFAULT_RTL, UBIDI_DEFAULT_RTL}};
    const std::u16string common[] = {u"a", u"b", u"א", u"ب", u" ", u" ", u"1", u"٢", u"%", u"+", u",", u"!", u"\u0301"};
    const std::u16string brackets[] = {u"(", u")", u"[", u"]", u"(", u")", u"⟨", u"〉", u"\U00010800"};
    const std::u16string structure[] = {u"\n",     u"\xD802", u"\u202B", u"\u202C",
                                        u"\u2067", u"\u2069", u"\u200F", u"\xD83D"};
    std::mt19937 random(15);
    for (int i = 0; i < 20000; ++i) {
        std::u16string text = i % 4 == 0 ? u"\n" : u"";
        const size_t length = 1 + random() % 40;
        while (text.size() < length) {
            const uint32_t kind = random() % 64;
            text += kind < 8 && i % 2 == 0   ? brackets[random() % std::size(brackets)]
                    : kind == 8 && i % 8 < 2 ? structure[random() % std::size(structure)]
                                             : common[random() % std::size(common)];
        }
        const size_t start = random() % text.size();
        const UnitRange line = {start, start + 1 + random() % (text.size() - start)};
        const Level& level = levels[random() % std::size(levels)];
        ASSERT_EQ(written(merged(runsOf(text, line, level.bidi))),
                  written(merged(runsOfWholeParagraph(text, line, level.level))))
            << testing::PrintToString(text) << ", round " << i << ", line " << line.start << " to " << line.end
            << ", level " << int{level.level};
    }
}

/// The shortcut for texts of one direction knows the characters that can turn one by blocks of its own.
TEST(DirectionRuns, EveryCharacterThatTurnsTheTextIsSeen) {
    // The planes beyond these two hold ideographs, marks and private use only.
    for (UChar32 c = 0; c <= 0x1FFFF; ++c) {
        if (U_IS_SURROGATE(c)) continue;
        std::u16string text = u"a1";
        text.append(reinterpret_cast<const char16_t*>(icu::UnicodeString(c).getBuffer()),
                    static_cast<size_t>(U16_LENGTH(c)));
        text += u"1!b";
        const UnitRange line = {0, text.size()};
        ASSERT_EQ(written(merged(runsOf(text, line, Bidi::LTR))), written(merged(runsOfWholeParagraph(text, line, 0))))
            << std::hex << c;
    }
}

}  // namespace
