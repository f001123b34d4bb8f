#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "base/Error.h"
#include "effect/QxEffect.h"
#include "pixel/QxBitmap.h"
#include "support/captured_log.h"
#include "support/failing_alloc.h"
#include "text/QxFontDrawing.h"
#include "text/QxTextInstanceManager.h"
#include "text/text_fixture.h"

namespace QxFontEffect {
namespace {

using test::AllocationPause;
using test::CapturedLog;
using test::FailingAlloc;
using test::isErrorLine;
using test::isNativeError;
using ::testing::Contains;
using ::testing::ContainsRegex;

constexpr int kWidth = 90;
constexpr int kHeight = 60;

std::vector<unsigned char> copied(const unsigned char* pixels) {
    return std::vector<unsigned char>(pixels, pixels + kWidth * kHeight * 4);
}

TEST(RenderMemory, ARenderThatRunsOutOfMemoryLeavesTheNextOneWhole) {
    CapturedLog log;
    test::TextScene object(L"Ag\u0633", kWidth, kHeight);
    const auto lines = [&] { test::setLines(&object, {test::newLine(0, 30, 0, 2), test::newLine(5, 50, 2, 3)}); };
    object.GetEffect()->addOuterShadowText(30, 4, 3, 0xFF0000FF, 0.7f);
    object.SetBackgroundColor(0xFF102030, true);
    lines();
    const std::vector<unsigned char> whole = copied(object.RenderTextEffect(kWidth, kHeight));
    const int margin = object.GetEffect()->getTopOffset();
    ASSERT_GT(margin, 0);

    int refused = 0;
    for (int n = 0;; ++n) {
        lines();
        const auto* const line = static_cast<const QxLineInfo*>(object.GetLineInfo()->Get(0));
        const int top = line->bounds.top;
        bool wasRefused = false;
        {
            FailingAlloc failing(n);
            object.RenderTextEffect(kWidth, kHeight);
            wasRefused = failing.refused();
        }
        if (!wasRefused) break;
        ++refused;
        EXPECT_TRUE(line->bounds.top == top || line->bounds.top == top + margin) << "request " << n;
        lines();
        ASSERT_EQ(whole, copied(object.RenderTextEffect(kWidth, kHeight))) << "after request " << n;
        log.take();
    }
    EXPECT_GT(refused, 20);
}

TEST(RenderMemory, AnObjectThatLacksAPartSaysSoAndDoesNotCrash) {
    CapturedLog log;
    std::vector<test::LogLine> seen;
    std::vector<int> codes;
    int built = 0;
    for (int n = 0;; ++n) {
        QxTextObject object;
        bool wasRefused = false;
        bool constructed = false;
        {
            FailingAlloc failing(n);
            constructed = object.Construct();
            wasRefused = failing.refused();
        }
        if (constructed) {
            ++built;
            EXPECT_EQ(&object, QxTextObject::FindQxTextObject(object.GetRuntimeHandle()));
            object.SetText(L"a");
            const bool hadDrawing = object.GetFont() != nullptr;
            object.RenderTextEffect(4, 4);
            QxBitmap out(4, 4, 4);
            QxFontDrawing().DrawTextEffect(&object, &out);
            EXPECT_EQ(object.GetLineInfo() != nullptr, test::setLines(&object, {}));
            object.SetFontFamilyName("f");
            EXPECT_NE(nullptr, object.GetFont());
            if (!hadDrawing) {
                EXPECT_NE(nullptr, object.RenderTextEffect(4, 4));
            }
        }
        for (const test::LogLine& line : log.take()) seen.push_back(line);
        if (!wasRefused) break;
    }
    EXPECT_GT(built, 4);
    EXPECT_THAT(seen, Contains(isNativeError("QxTextObject", 8, 266)));
    EXPECT_THAT(seen, Contains(isErrorLine("QxTextObject", "SetLineInfo - M->lineInfo is NULL")));
    EXPECT_THAT(seen, Contains(isNativeError("QxTextObject", 8, 647)));
    EXPECT_THAT(seen, Contains(isErrorLine("QxFontDrawing", ContainsRegex("DrawTextEffect\\(.*\\) - Effect is NULL"))));
    EXPECT_THAT(seen,
                Contains(isErrorLine("QxFontDrawing", ContainsRegex("DrawTextEffect\\(.*\\) - lineInfoList is NULL"))));
    EXPECT_THAT(seen, Contains(isNativeError("QxFontDrawing", 8, 184)));
}

TEST(RenderMemory, FontsTextsAndBindingsFailWithoutALeak) {
    CapturedLog log;
    test::TextScene object(L"a", kWidth, kHeight);
    const std::string path = testsupport::fontFile(testsupport::kRobotoBlack);
    const std::vector<char>& bytes = testsupport::fontBytes(testsupport::kRobotoBlack);
    const std::string name = "starved";
    for (int n = 0;; ++n) {
        auto data = std::make_unique<char[]>(bytes.size());
        std::memcpy(data.get(), bytes.data(), bytes.size());
        auto* const bound = new QxTextObject;
        bound->Construct();
        FontManager manager;
        bool added = false, mapped = false, set = false, wasRefused = false;
        {
            FailingAlloc failing(n);
            added =
                manager.AddMinikinFont(name.c_str(), data.release(), static_cast<unsigned int>(bytes.size()), 0, true);
            mapped = manager.AddMinikinFont(path.c_str(), nullptr, 0, 0, true);
            set = object.SetText(L"b\u0633");
            QxTextInstanceManager::Bind(bound);
            wasRefused = failing.refused();
        }
        EXPECT_EQ(added, manager.IsExisting(name.c_str(), 0)) << n;
        EXPECT_EQ(mapped, manager.IsExisting(path.c_str(), 0)) << n;
        EXPECT_NE(nullptr, object.GetText()) << n;
        if (!QxTextInstanceManager::Release(bound, true)) delete bound;
        if (!wasRefused) {
            EXPECT_TRUE(added && mapped && set);
            break;
        }
    }
}

}  // namespace
}  // namespace QxFontEffect
