#include "text/QxTextObject.h"

#include <algorithm>
#include <functional>
#include <new>
#include <string>
#include <vector>

#include "base/Error.h"
#include "base/QxLog.h"
#include "effect/QxEffect.h"
#include "support/captured_log.h"
#include "text/QxTextInstanceManager.h"
#include "text/text_fixture.h"

namespace QxFontEffect {
namespace {

using test::CapturedLog;
using test::isDebugLine;
using test::isErrorLine;
using test::isNativeError;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::MatchesRegex;

constexpr char kTag[] = "QxTextObject";

/// A message with one pointer in it.
::testing::Matcher<std::string> around(const std::string& before, const std::string& behind) {
    return MatchesRegex(before + test::kPointer + behind);
}

TEST(TextObject, EveryMethodOfAShellFailsWithErrorEightAndItsLine) {
    CapturedLog log;
    QxTextObject shell;
    QxString string;
    List list;
    android::Paint paint;
    char* const noData = nullptr;
    const struct {
        int line;
        std::function<bool()> failed;
    } rows[] = {
        {374, [&] { return shell.GetRuntimeHandle() == -1; }},
        {382, [&] { return shell.GetEffect() == nullptr; }},
        {390, [&] { return !shell.SetText(&string); }},
        {390, [&] { return !shell.SetText(static_cast<QxString*>(nullptr)); }},
        {426, [&] { return !shell.SetText(L"a"); }},
        {542, [&] { return shell.GetText() == nullptr; }},
        {549, [&] { return !shell.SetFontFamilyName(nullptr); }},
        {572, [&] { return !shell.SetFont(nullptr); }},
        {600, [&] { return !shell.SetFont(nullptr, noData, 0); }},
        {628, [&] { return shell.GetFont() == nullptr; }},
        {636, [&] { return !shell.SetLineInfo(nullptr); }},
        {664, [&] { return shell.GetLineInfo() == nullptr; }},
        {678, [&] { return !shell.SetTextStyle(true, true); }},
        {703, [&] { return !shell.isBoldTextStyle(); }},
        {710, [&] { return !shell.isItalicTextStyle(); }},
        {717, [&] { return shell.GetView() == nullptr; }},
        {724, [&] { return shell.GetPaint().getColor() == 0xFF000000; }},
        {730, [&] { return shell.SetPaint(paint), true; }},
        {736, [&] { return shell.SetBackgroundColor(1, true), true; }},
        {743, [&] { return shell.SetTextColor(1), true; }},
        {749, [&] { return shell.GetTextColor() == 0xFF000000; }},
        {248, [&] { return shell.RenderTextEffect(4, 4) == nullptr; }},
        {217, [&] { return shell.~QxTextObject(), new (&shell) QxTextObject, true; }},
    };
    for (const auto& row : rows) {
        log.take();
        Error::SetError(0);
        EXPECT_TRUE(row.failed()) << row.line;
        EXPECT_EQ(8, Error::GetError()) << row.line;
        EXPECT_THAT(log.take().at(0), isNativeError(kTag, 8, row.line));
    }
}

TEST(TextObject, IsRegisteredFromConstructToItsEnd) {
    CapturedLog log;
    auto* const object = new QxTextObject;
    EXPECT_THAT(log.take(), ElementsAre(isDebugLine(kTag, around("QxTextObject\\(", "\\)"))));
    EXPECT_TRUE(object->Construct());
    const int handle = object->GetRuntimeHandle();
    const std::string ending = " / " + std::to_string(handle) + "\\)";
    EXPECT_THAT(log.take(), Contains(isDebugLine(kTag, around("Construct\\(", ending))));
    EXPECT_EQ(object, QxTextObject::FindQxTextObject(handle));
    EXPECT_EQ(handle, QxTextInstanceManager::FindQxTextHandle(object));

    EXPECT_FALSE(object->Construct());
    EXPECT_THAT(log.take(), ElementsAre(isNativeError(kTag, 4, 229)));
    EXPECT_EQ(handle, object->GetRuntimeHandle());

    QxTextInstanceManager::Bind(object);
    log.take();
    EXPECT_TRUE(QxTextInstanceManager::Release(handle));
    const std::vector<test::LogLine> lines = log.take();
    ASSERT_GE(lines.size(), 2u);
    EXPECT_THAT(lines[0], isDebugLine(kTag, around("Delete QxTextObject by InstanceManager : ", "")));
    EXPECT_THAT(lines[1], isDebugLine(kTag, around("~QxTextObject\\(", ending)));
    EXPECT_EQ(nullptr, QxTextObject::FindQxTextObject(handle));

    log.take();
    __releaseQxTextCallback(nullptr);
    EXPECT_THAT(log.take(),
                ElementsAre(isDebugLine(kTag, MatchesRegex("Delete QxTextObject by InstanceManager : .+"))));
}

TEST(TextObject, NullArgumentsAreErrorSevenWithTheirLine) {
    test::TextScene object(L"a", 10, 10);
    CapturedLog log;
    char* const noData = nullptr;
    EXPECT_FALSE(object.SetFontFamilyName(nullptr));
    EXPECT_FALSE(object.SetFont(nullptr));
    EXPECT_FALSE(object.SetFont(nullptr, noData, 0));
    Error::SetError(0);
    EXPECT_FALSE(object.SetLineInfo(nullptr));
    EXPECT_EQ(7, Error::GetError());
    EXPECT_THAT(log.take(),
                ElementsAre(isNativeError(kTag, 7, 553), isNativeError(kTag, 7, 576), isNativeError(kTag, 7, 604),
                            isErrorLine(kTag, "SetLineInfo - lineInfo is NULL"), isNativeError(kTag, 7, 640)));
}

TEST(TextObject, FontsAreRegisteredUnderTheirPath) {
    test::TextScene object(L"a", 10, 10);
    const std::string path = testsupport::fontFile(testsupport::kRobotoBlack);
    const std::vector<char>& bytes = testsupport::fontBytes(testsupport::kRobotoBlack);
    CapturedLog log;
    EXPECT_TRUE(object.SetFont(path.c_str()));
    EXPECT_THAT(log.take(), ElementsAre(isDebugLine(kTag, around("SetFont\\(", "\\) - path\\[" + path + "\\]"))));
    EXPECT_TRUE(FontManager::GetInstance()->IsExisting(path.c_str(), 0));

    Error::SetError(0);
    EXPECT_FALSE(object.SetFont("/nowhere/x.ttf"));
    EXPECT_EQ(0, Error::GetError());
    log.take();

    char* const data = new char[bytes.size()];
    std::copy(bytes.begin(), bytes.end(), data);
    EXPECT_TRUE(object.SetFont("in memory", data, static_cast<unsigned int>(bytes.size())));
    EXPECT_THAT(log.take(), ElementsAre(isDebugLine(kTag, around("SetFont2\\(", "\\) - path\\[in memory\\] - size: " +
                                                                                    std::to_string(bytes.size())))));
    EXPECT_TRUE(object.SetFontFamilyName("serif"));
    EXPECT_THAT(log.take(),
                ElementsAre(isDebugLine(kTag, around("SetFontFamilyName\\(", "\\) - familyName\\[serif\\]"))));
}

TEST(TextObject, ATextLoadsTheFamiliesOfItsScripts) {
    using test::TestFamily;
    const struct {
        const wchar_t* text;
        std::vector<TestFamily> loaded;
    } rows[] = {
        {L"abc 123 \u00E9", {}},
        {L"\uAC00", {test::kKorean}},
        {L"1\u4E00", {test::kHans, test::kHant}},
        {L"\u3042", {test::kJapanese}},
        {L"\u3042\u30A2", {test::kJapanese, test::kJapaneseToo}},
        {L"\u0633\u0644", {test::kArabic}},
        {L"\u0633 a \u0644", {test::kArabic, test::kArabicToo}},
        {L"\U0001F600", {}},
    };
    test::TextScene object(L"", 10, 10);
    for (const auto& row : rows) {
        for (const bool asString : {false, true}) {
            test::unloadFamilies();
            QxString string;
            string.Construct(row.text);
            EXPECT_TRUE(asString ? object.SetText(&string) : object.SetText(row.text));
            for (int i = test::kDefault + 1; i < test::kFamilies; ++i) {
                const bool wanted = std::count(row.loaded.begin(), row.loaded.end(), i) != 0;
                EXPECT_EQ(wanted ? 1 : 0, test::systemFamilies()[static_cast<size_t>(i)]->loaded)
                    << "family " << i << " for " << testing::PrintToString(std::wstring(row.text));
            }
        }
    }
}

TEST(TextObject, TextsAreCopiedAndMayComeFromTheObjectItself) {
    test::TextScene object(L"first", 10, 10);
    QxString* const stored = object.GetText();
    EXPECT_TRUE(object.SetText(stored));
    EXPECT_EQ(0, stored->CompareTo("first"));
    EXPECT_TRUE(object.SetText(stored->GetPointer()));
    EXPECT_EQ(0, stored->CompareTo("first"));
    QxString unconstructed;
    EXPECT_FALSE(object.SetText(&unconstructed));
    EXPECT_EQ(0, object.GetText()->CompareTo("first"));
    EXPECT_TRUE(object.SetText(static_cast<const QxString*>(nullptr)));
    EXPECT_EQ(nullptr, object.GetText());
    EXPECT_TRUE(object.SetText(static_cast<const wchar_t*>(nullptr)));

    // Verbose logs name the text.
    QxString text;
    text.Construct(L"\u00E9t\u00E9");
    CapturedLog log;
    QxLog::DEBUG_ENABLE = 1;
    object.SetText(&text);
    QxLog::DEBUG_ENABLE = 0;
    EXPECT_THAT(log.take()[0], isDebugLine(kTag, around("SetText\\(\\) - ", " \\[\u00E9t\u00E9\\] strLen=3")));
}

TEST(TextObject, LinesAreTakenOverAndReplaced) {
    test::TextScene object(L"a", 10, 10);
    EXPECT_TRUE(test::setLines(&object, {test::newLine(1, 2, 0, 1), test::newLine(3, 4, 0, 1)}));
    List* const lines = object.GetLineInfo();
    EXPECT_EQ(2, lines->GetCount());
    EXPECT_TRUE(test::setLines(&object, {test::newLine(5, 6, 0, 1)}));
    ASSERT_EQ(1, lines->GetCount());
    EXPECT_EQ(5, static_cast<QxLineInfo*>(lines->Get(0))->x);
    EXPECT_TRUE(object.SetLineInfo(lines));
    EXPECT_EQ(0, lines->GetCount());
    List unconstructed;
    EXPECT_TRUE(object.SetLineInfo(&unconstructed));
}

TEST(TextObject, AStyleReplacesTheOneBefore) {
    test::TextScene object(L"a", 10, 10);
    for (const int bits : {3, 1, 2, 0, 3}) {
        EXPECT_TRUE(object.SetTextStyle((bits & 1) != 0, (bits & 2) != 0));
        EXPECT_EQ((bits & 1) != 0, object.isBoldTextStyle());
        EXPECT_EQ((bits & 2) != 0, object.isItalicTextStyle());
    }
}

}  // namespace
}  // namespace QxFontEffect
