#include "base/QxString.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <memory>
#include <string>

#include "base/Error.h"
#include "support/captured_log.h"
#include "support/errors.h"
#include "support/failing_alloc.h"
#include "support/random.h"

namespace QxFontEffect {
namespace {

using test::CapturedLog;
using test::failsWith;
using test::isNativeError;
using test::Rng;
using testing::ElementsAre;

constexpr const wchar_t* kNoWide = nullptr;
constexpr const char* kNoBytes = nullptr;
constexpr const QxString* kNoString = nullptr;

/// A string made in one step.
struct Made : QxString {
    explicit Made(const wchar_t* text) { EXPECT_TRUE(text == nullptr ? Construct() : Construct(text)); }
};

std::wstring textOf(const QxString& string) {
    const wchar_t* text = string.GetPointer();
    const std::wstring copy = text == nullptr ? L"" : text;
    EXPECT_EQ(string.GetLength(), static_cast<int>(copy.size()));
    return copy;
}

TEST(QxString, EqualsAWideStringOverRandomEdits) {
    CapturedLog quiet;
    const wchar_t* const kPieces[] = {L"", L"a", L"b\xE9", L"\x1F600", L"abcab", L"\xFFFF\xD83D"};
    Rng rng(81);
    for (int round = 0; round < 300; ++round) {
        Made string(L"ab");
        std::wstring model = L"ab";
        for (int step = 0; step < 40; ++step) {
            const bool itself = rng.oneIn(10) && model.size() < 500;
            const std::wstring piece = itself ? model : kPieces[rng.below(6)];
            const Made other(piece.c_str());
            const QxString* argument = itself ? &string : &other;
            const int length = static_cast<int>(model.size());
            const int index = rng.between(-1, length + 1);
            const int count = rng.between(-1, 4);
            int code = 0;
            bool done = true;
            Error::SetError(0);
            switch (rng.below(7)) {
                case 0:
                    done = string.Append(argument);
                    model += piece;
                    break;
                case 1:
                    // An argument may be the string's own buffer too.
                    done = string.Append(argument->GetPointer());
                    model += piece;
                    break;
                case 2:
                    done = string.Insert(argument, index);
                    code = index < 0 || index > length ? 3 : piece.empty() ? 7 : 0;
                    if (code == 0) model.insert(static_cast<size_t>(index), piece);
                    break;
                case 3:
                    done = string.Remove(index, count);
                    code = index < 0 || index >= length ? 3 : count < 0 || index + count > length ? 7 : 0;
                    if (code == 0) model.erase(static_cast<size_t>(index), static_cast<size_t>(count));
                    break;
                case 4:
                    done = string.SetSubstring(argument, index, index + count);
                    code = index < 0 ? 7 : 0;
                    if (code == 0)
                        model = index > static_cast<int>(piece.size())
                                    ? L""
                                    : piece.substr(static_cast<size_t>(index), static_cast<size_t>(count + 1));
                    break;
                case 5:
                    done = string.Set(argument->GetPointer());
                    model = piece;
                    break;
                default:
                    done = string.Set(argument);
                    model = piece;
                    break;
            }
            ASSERT_EQ(done, code == 0) << "round " << round << ", step " << step;
            ASSERT_EQ(Error::GetError(), code) << "round " << round << ", step " << step;
            ASSERT_EQ(textOf(string), model) << "round " << round << ", step " << step;
        }
    }
}

TEST(QxString, FailsBeforeConstructAndOnASecondConstruct) {
    CapturedLog log;
    QxString unmade;
    Made made(L"abc");
    wchar_t character = 0;
    char bytes[4];
    EXPECT_TRUE(failsWith(8, {!unmade.Set(L"a"), !unmade.Clear(), !unmade.Append(kNoWide), !unmade.Insert(L"a", 0)}));
    EXPECT_TRUE(failsWith(8, {!unmade.Remove(0, 0), !unmade.SetSubstring(&made, 0, 0), unmade.GetLength() == -1}));
    EXPECT_TRUE(failsWith(8, {unmade.GetPointer() == nullptr, !unmade.GetChar(0, &character)}));
    EXPECT_TRUE(failsWith(8, {unmade.GetUTF8Size() == -1, !unmade.GetUTF8(bytes, 4), unmade.GetUTF16Size() == -1}));
    EXPECT_TRUE(failsWith(8, {unmade.GetUTF16() == nullptr, unmade.CompareTo(&made) == -1}));
    EXPECT_TRUE(failsWith(8, {unmade.Find(L"a") == -1, unmade.ReverseFind("a") == -1}));
    EXPECT_EQ(log.take().size(), 16u) << "each failure writes one line";

    EXPECT_TRUE(failsWith(4, {!made.Construct(), !made.Construct(kNoWide), !made.Construct("x"),
                              !made.Construct(&unmade), !made.Construct(L"x", 1)}));
    EXPECT_EQ(textOf(made), L"abc");
    EXPECT_THAT(log.take(), testing::Each(isNativeError("QxString", 4)));

    EXPECT_TRUE(failsWith(7, {!unmade.Construct(kNoWide), !unmade.Construct(kNoBytes), !unmade.Construct(kNoString),
                              !unmade.Construct(L"abc", -1)}));
    EXPECT_TRUE(failsWith(8, {unmade.GetLength() == -1})) << "a failed Construct leaves the shell";
}

TEST(QxString, ReportsAnArgumentThatIsNotConstructedWithEightThenSeven) {
    CapturedLog log;
    QxString unmade, target;
    Made made(L"abc");
    EXPECT_FALSE(target.Construct(&unmade));
    EXPECT_THAT(log.take(), ElementsAre(isNativeError("QxString", 8), isNativeError("QxString", 7)));
    EXPECT_TRUE(failsWith(7, {!made.Set(&unmade), !made.Append(&unmade), !made.Insert(&unmade, 0)}));
    EXPECT_TRUE(failsWith(7, {!made.SetSubstring(&unmade, 0, 0), made.CompareTo(&unmade) == -1}));
    EXPECT_EQ(textOf(made), L"abc");
}

TEST(QxString, TreatsAbsentTextAsEmpty) {
    Made absent(nullptr), copy(L"old");
    EXPECT_EQ(absent.GetPointer(), nullptr);
    EXPECT_EQ(absent.GetLength(), 0);
    EXPECT_EQ(absent.GetUTF8Size(), 1);
    EXPECT_EQ(absent.GetUTF16Size(), 1);
    EXPECT_EQ(std::unique_ptr<uint16_t[]>(absent.GetUTF16())[0], 0);
    char bytes[3] = {'x', 'x', 'x'};
    EXPECT_TRUE(absent.GetUTF8(bytes, 3));
    EXPECT_STREQ(bytes, "");
    EXPECT_EQ(absent.CompareTo(""), 0);
    EXPECT_EQ(absent.Find(L"a"), -1);
    EXPECT_TRUE(copy.Set(&absent));
    EXPECT_EQ(copy.GetPointer(), nullptr);
    EXPECT_TRUE(copy.Append("x"));
    EXPECT_EQ(textOf(copy), L"x");
    for (const bool cleared : {copy.Set(kNoString), copy.Set(kNoWide), copy.Set(kNoBytes), copy.Clear()})
        EXPECT_TRUE(cleared && copy.GetPointer() == nullptr);
    CapturedLog quiet;
    EXPECT_TRUE(failsWith(7, {!copy.SetSubstring(&absent, 0, 0)}));
}

TEST(QxString, CopiesNoMoreThanThereIs) {
    const Made source(L"hello");
    QxString part, whole, none, middle;
    EXPECT_TRUE(part.Construct(&source, 2) && whole.Construct(L"hello", INT_MAX) && none.Construct(L"hello", 0));
    EXPECT_EQ(textOf(part) + textOf(whole) + textOf(none), L"hehello");
    ASSERT_TRUE(middle.Construct());
    const struct {
        int start, end;
        const wchar_t* wanted;
    } cases[] = {{1, 3, L"ell"}, {0, INT_MAX, L"hello"}, {4, 9, L"o"}, {5, 9, L""},
                 {2, 1, L""},    {INT_MAX, INT_MAX, L""}};
    for (const auto& c : cases) {
        EXPECT_TRUE(middle.SetSubstring(&source, c.start, c.end));
        EXPECT_EQ(textOf(middle), c.wanted) << c.start << ".." << c.end;
    }
    CapturedLog quiet;
    EXPECT_FALSE(middle.SetSubstring(&source, -1, 3));
    EXPECT_FALSE(middle.SetSubstring(&source, INT_MAX, INT_MIN));
    EXPECT_FALSE(middle.Remove(0, INT_MAX));
}

TEST(QxString, FindsAPatternOnlyWhereSomethingFollows) {
    const struct {
        const wchar_t* text;
        const char* pattern;
        int first, last;
    } cases[] = {
        {L"abc", "abc", -1, 0},
        {L"xabc", "abc", -1, 1},
        {L"abcx", "abc", 0, 0},
        {L"abcabc", "abc", 0, 3},
        {L"aaaa", "aa", 0, 2},
        {L"ab", "abc", -1, -1},
        {L"a", "", 0, 1},
        {L"", "", -1, 0},
        {L"\xE9\x1F600 x", "\xF0\x9F\x98\x80", 1, 1},
        {L"-Bold.ttf", "-Bold", 0, 0},
    };
    for (const auto& c : cases) {
        const Made string(c.text), pattern(nullptr);
        QxString wide;
        ASSERT_TRUE(wide.Construct(c.pattern));
        EXPECT_EQ(string.Find(c.pattern), c.first) << c.pattern;
        EXPECT_EQ(string.Find(wide.GetPointer()), c.first) << c.pattern;
        EXPECT_EQ(string.ReverseFind(c.pattern), c.last) << c.pattern;
        EXPECT_EQ(string.ReverseFind(wide.GetPointer()), c.last) << c.pattern;
    }
}

TEST(QxString, ComparesLengthFirst) {
    const struct {
        const wchar_t* left;
        const char* right;
        int wanted, firstTwo;
    } cases[] = {{L"b", "aa", -1, 1},
                 {L"aa", "b", 1, -1},
                 {L"ab", "aa", 1, 1},
                 {L"aa", "ab", -1, -1},
                 {L"\xFFFF", "\xF0\x90\x80\x80", -1, -1},
                 {L"abc", "abd", -1, 0},
                 {L"", "", 0, 0}};
    for (const auto& c : cases) {
        const Made left(c.left);
        QxString right;
        ASSERT_TRUE(right.Construct(c.right));
        EXPECT_EQ(left.CompareTo(&right), c.wanted) << c.right;
        EXPECT_EQ(left.CompareTo(c.right), c.wanted) << c.right;
        EXPECT_EQ(left.CompareTo(c.right, 2), c.firstTwo) << c.right;
        EXPECT_EQ(left.CompareTo(c.right, 0), 0);
    }
}

TEST(QxString, TellsItsSizesAndWritesItsForms) {
    const Made text(L"a\xE9\x20AC"), huge(L"\x110000"), minusOne(L"\xFFFFFFFF"), minusTwo(L"\xFFFFFFFF\x80000000");
    EXPECT_EQ(text.GetUTF8Size(), 7);
    EXPECT_EQ(text.GetUTF16Size(), 4);
    EXPECT_EQ(huge.GetUTF8Size(), 5);
    EXPECT_EQ(minusOne.GetUTF8Size(), 0);
    EXPECT_EQ(minusTwo.GetUTF8Size(), -1);

    const std::unique_ptr<char[]> exact(new char[7]), nothing(new char[0]);
    EXPECT_TRUE(text.GetUTF8(exact.get(), 7));
    EXPECT_STREQ(exact.get(), "a\xC3\xA9\xE2\x82\xAC");
    EXPECT_TRUE(minusOne.GetUTF8(nothing.get(), 0));
    char cut[8];
    std::fill(cut, cut + 8, '?');
    EXPECT_TRUE(text.GetUTF8(cut, 6));
    EXPECT_EQ(std::string(cut, 8), std::string("a\xC3\xA9\0?\0??", 8)) << "behind the last character and at the end";
    CapturedLog quiet;
    EXPECT_TRUE(failsWith(7, {!text.GetUTF8(cut, -1)}));
    EXPECT_TRUE(failsWith(7, {!text.GetUTF8(nullptr, 4)}));

    wchar_t character = 0;
    EXPECT_TRUE(text.GetChar(2, &character) && character == 0x20AC);
    EXPECT_TRUE(failsWith(3, {!text.GetChar(3, &character)}));
    EXPECT_TRUE(failsWith(3, {!text.GetChar(-1, &character)}));
    EXPECT_TRUE(failsWith(7, {!text.GetChar(0, nullptr)}));
}

TEST(QxString, StaysAsItWasWhenMemoryRunsOut) {
    CapturedLog log;
    const Made other(L"xyz");
    using Operation = bool (*)(QxString&, const QxString&, QxString&);
    const Operation operations[] = {
        [](QxString& string, const QxString&, QxString&) { return string.Set(L"other"); },
        [](QxString& string, const QxString&, QxString&) { return string.Append("xyz"); },
        [](QxString& string, const QxString& piece, QxString&) { return string.Insert(&piece, 1); },
        [](QxString& string, const QxString&, QxString&) { return string.Remove(1, 1); },
        [](QxString& string, const QxString& piece, QxString&) { return string.SetSubstring(&piece, 0, 1); },
        [](QxString& string, const QxString&, QxString&) { return string.CompareTo("abc") == 0; },
        [](QxString&, const QxString&, QxString& shell) { return shell.Construct("abc"); },
        [](QxString& string, const QxString&, QxString&) {
            return std::unique_ptr<uint16_t[]>(string.GetUTF16()) != nullptr;
        },
    };
    for (const Operation& operate : operations) {
        const auto operation = &operate - operations;
        int n = 0;
        for (;; ++n) {
            Made string(L"abc");
            QxString shell;
            Error::SetError(0);
            bool done = false;
            bool refused = false;
            {
                test::FailingAlloc failing(n);
                done = operate(string, other, shell);
                refused = failing.refused();
            }
            EXPECT_EQ(done, !refused) << "operation " << operation << ", request " << n;
            if (!refused) break;
            EXPECT_EQ(Error::GetError(), 1);
            EXPECT_EQ(textOf(string), L"abc") << "operation " << operation << ", request " << n;
        }
        EXPECT_GT(n, 0) << "operation " << operation << " takes memory";
    }
}

}  // namespace
}  // namespace QxFontEffect
