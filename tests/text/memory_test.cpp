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
constexpr uint32_t kBackground = 0xFF102030;

std::vector<unsigned char> copied(const unsigned char* pixels) {
    return std::vector<unsigned char>(pixels, pixels + kWidth * kHeight * 4);
}

TEST(RenderMemory, ARenderThatRunsOutOfMemoryLeavesTheNextOneWhole) {
    CapturedLog log;
    test::TextScene object(L"Ag\u0633", kWidth, kHeight);
    const auto setLinesAt = [&](int x) {
        test::setLines(&object, {test::newLine(x, 30, 0, 2), test::newLine(x + 5, 50, 2, 3)});
    };
    // A gradient spans the rectangle of the glyphs, so one left over from a broken render would show.
    QxGradient stops[2] = {{0xFFFF0000, 1, 0}, {0xFF0000FF, 1, 1}};
    object.GetEffect()->addLinearGradientText(0, 1, 1, 2, stops);
    object.GetEffect()->addOuterShadowText(30, 4, 3, 0xFF0000FF, 0.7f);
    object.SetBackgroundColor(kBackground, true);
    setLinesAt(20);
    const std::vector<unsigned char> whole = copied(object.RenderTextEffect(kWidth, kHeight));
    const int margin = object.GetEffect()->getTopOffset();
    ASSERT_GT(margin, 0);
    int wholeRight[2];
    for (int i = 0; i < 2; ++i)
        wholeRight[i] = static_cast<const QxLineInfo*>(object.GetLineInfo()->Get(i))->bounds.right;

    int refused = 0;
    for (int n = 0;; ++n) {
        setLinesAt(0);
        bool wasRefused = false;
        const unsigned char* pixels = nullptr;
        {
            FailingAlloc failing(n);
            pixels = object.RenderTextEffect(kWidth, kHeight);
            wasRefused = failing.refused();
        }
        if (!wasRefused) break;
        ++refused;
        // Either every line was drawn, and then all records moved, or none.
        const bool moved = static_cast<const QxLineInfo*>(object.GetLineInfo()->Get(0))->bounds.top == 10 + margin;
        for (int i = 0; i < 2; ++i) {
            const auto* const line = static_cast<const QxLineInfo*>(object.GetLineInfo()->Get(i));
            EXPECT_EQ(moved ? 10 + 20 * i + margin : 10 + 20 * i, line->bounds.top) << "request " << n;
            EXPECT_EQ(moved ? wholeRight[i] - 20 : line->x + 10, line->bounds.right) << "request " << n;
        }
        for (int i = 0; !moved && pixels != nullptr && i < kWidth * kHeight * 4; i += 4) {
            uint32_t pixel;
            std::memcpy(&pixel, pixels + i, 4);
            ASSERT_TRUE(pixel == 0 || pixel == kBackground) << "half a picture after request " << n;
        }
        setLinesAt(20);
        ASSERT_EQ(whole, copied(object.RenderTextEffect(kWidth, kHeight))) << "after request " << n;
        log.take();
    }
    EXPECT_GT(refused, 20);
}

TEST(RenderMemory, AnObjectThatLacksAPartSaysSoAndDoesNotCrash) {
    CapturedLog log;
    std::vector<test::LogLine> seen;
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
