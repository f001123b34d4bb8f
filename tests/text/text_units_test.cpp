#include "text/text_units.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>

#include "base/QxString.h"
#include "support/random.h"
#include "text/QxLineInfo.h"

namespace QxFontEffect {
namespace {

QxLineInfo lineAt(int start, int end) {
    QxLineInfo line;
    line.start = start;
    line.end = end;
    return line;
}

TEST(TextUnits, LinesAreCutToTheTextAndTheirContextBeginsWithTheNewlineBefore) {
    QxString text;
    text.Construct(L"ab\ncd\re");  // newlines at 2 and 5, 7 units
    const TextUnits units(text);
    ASSERT_TRUE(static_cast<bool>(units));
    ASSERT_EQ(8u, units.size());
    const struct {
        int start, end;
        size_t wantStart, wantCount, wantContextStart, wantContextCount;
    } rows[] = {
        {0, 2, 0, 2, 0, 2},
        {3, 5, 3, 2, 2, 3},
        {2, 5, 2, 3, 2, 3},  // a line that starts on its newline
        {6, 7, 6, 1, 5, 2},
        {6, 100, 6, 1, 5, 2},
        {7, 7, 7, 0, 5, 2},
        {-9, 1, 0, 1, 0, 1},
        {4, 1, 4, 0, 2, 2},
        {100, 200, 7, 0, 5, 2},
        {INT_MIN, INT_MIN, 0, 0, 0, 0},
        {INT_MAX, INT_MIN, 7, 0, 5, 2},
    };
    for (const auto& row : rows) {
        const TextUnits::LineRange range = units.rangeOf(lineAt(row.start, row.end));
        EXPECT_EQ(row.wantStart, range.start) << row.start << ' ' << row.end;
        EXPECT_EQ(row.wantCount, range.count) << row.start << ' ' << row.end;
        EXPECT_EQ(row.wantContextStart, range.contextStart) << row.start << ' ' << row.end;
        EXPECT_EQ(row.wantContextCount, range.contextCount) << row.start << ' ' << row.end;
    }
}

TEST(TextUnits, TheContextIsWhatAScanBackwardsFinds) {
    test::Rng rng(5);
    for (int round = 0; round < 200; ++round) {
        std::wstring characters;
        const int length = rng.between(1, 30);
        for (int i = 0; i < length; ++i) characters += L"a\n\rb"[rng.below(round % 2 == 0 ? 4 : 1)];
        QxString text;
        text.Construct(characters.c_str());
        const TextUnits units(text);
        for (int start = 0; start <= length; ++start) {
            int wanted = start;
            while (wanted > 0 && units.data()[wanted] != 10 && units.data()[wanted] != 13) --wanted;
            EXPECT_EQ(static_cast<size_t>(wanted), units.rangeOf(lineAt(start, length)).contextStart) << round;
        }
    }
}

}  // namespace
}  // namespace QxFontEffect
