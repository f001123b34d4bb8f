#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <thread>
#include <vector>

#include "effect/QxEffect.h"
#include "support/sample_effects.h"
#include "text/text_fixture.h"

namespace QxFontEffect {
namespace {

constexpr int kThreads = 8;
constexpr int kWidth = 120, kHeight = 80;

using Picture = std::vector<unsigned char>;

// Each kind takes some of the effects; together the eight have every effect, in both ways through the stack.
void decorate(QxEffect& stack, int kind) {
    for (const int type : test::kEffectTypes)
        if ((type + kind) % 3 == 0) test::addSample(stack, type, kind % 3);
    if (kind == 7) stack.setTextOpacity(0.5f);
}

Picture rendered(int kind) {
    const wchar_t* const texts[] = {L"Ag fi", L"\u0633\u0644\u0627\u0645 1", L"xyz", L"(a)"};
    test::TextScene object(texts[kind % 4], kWidth, kHeight);
    decorate(*object.GetEffect(), kind);
    object.SetBackgroundColor(0x80203040u, kind % 2 == 0);
    test::setLines(&object, {test::newLine(10, 45, 0, 4, kind % 4 == 1 ? -1 : 1)});
    const unsigned char* const pixels = object.RenderTextEffect(kWidth, kHeight);
    return pixels == nullptr ? Picture() : Picture(pixels, pixels + kWidth * kHeight * 4);
}

// The threads come first: whatever the library prepares at its first use, they prepare at the same time.
TEST(Threads, EightTextsDrawnAtOnceLookAsEachDoesAlone) {
    FontManager::GetInstance()->LoadMinikinFontFamily(test::systemFamilies()[test::kArabic]->localeListId);
    std::vector<std::vector<Picture>> together(kThreads);
    std::vector<std::thread> threads;
    std::atomic<int> waiting{kThreads};
    for (int kind = 0; kind < kThreads; ++kind)
        threads.emplace_back([&, kind] {
            --waiting;
            while (waiting > 0) std::this_thread::yield();
            for (int round = 0; round < 3; ++round) together[static_cast<size_t>(kind)].push_back(rendered(kind));
        });
    for (std::thread& thread : threads) thread.join();
    for (int kind = 0; kind < kThreads; ++kind) {
        const Picture alone = rendered(kind);
        ASSERT_FALSE(alone.empty());
        ASSERT_NE(Picture(alone.size(), alone[0]), alone) << "nothing was drawn";
        for (const Picture& picture : together[static_cast<size_t>(kind)]) EXPECT_EQ(alone, picture) << kind;
    }
}

}  // namespace
}  // namespace QxFontEffect
