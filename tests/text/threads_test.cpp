#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <thread>
#include <vector>

#include "effect/QxEffect.h"
#include "pixel/QxBitmap.h"
#include "text/text_fixture.h"

namespace QxFontEffect {
namespace {

constexpr int kThreads = 8;
constexpr int kWidth = 120, kHeight = 80;

using Picture = std::vector<unsigned char>;

// Each kind takes three or four effects; together the eight have every effect, in both ways through the stack.
void decorate(QxEffect& stack, int kind) {
    QxGradient stops[3] = {{0xFFD02030u, 1, 0}, {0xFF30D020u, 1, 0.4f}, {0xFF2030D0u, 1, 1}};
    QxBitmap tile(3, 2, 4);
    for (int i = 0; i < 24; ++i) tile.pixels[i] = static_cast<uint8_t>(9 * i + kind);
    const auto size = static_cast<float>(2 + kind);
    if (kind % 2 == 0) stack.addOuterShadowText(30, 3, size, 0xFF0000FFu, 0.7f);
    if (kind % 2 == 1) stack.addInnerShadowText(200, 2, size, 0xFF004000u, 0.9f);
    if (kind % 3 == 0) stack.addOuterGlowText(size, 0xFFFF8000u, 0.8f, 3, stops);
    if (kind % 3 == 1) stack.addInnerGlowText(size, 0xFFFF8000u, 0.8f, 0, stops);
    if (kind % 3 == 2) stack.addBevelText(kind % 2, 2 * size, 2, 0, kind % 2, 1, 1, 135, 30, 0xFFFFFFFFu, 1, 0xFFu, 1);
    if (kind == 4 || kind == 5) stack.addEmbossText(0, size, 2, 0, kind - 4, 1, 1, 135, 30, 0xFFFFFFFFu, 1, 0xFFu, 1);
    if (kind == 1 || kind == 6) stack.addLinearGradientText(40, 1, 0.9f, 3, stops);
    if (kind == 2 || kind == 7) stack.addRadialGradientText(1, 0.9f, 3, stops);
    if (kind % 4 == 3) stack.addPatternText(&tile, 1.5f, 0.8f);
    if (kind != 4) stack.addStrokeText(size, 0xFF101010u, 0.6f, 0, kind % 3);
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
