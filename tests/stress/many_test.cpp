// Many text objects. --gtest_also_run_disabled_tests runs ten times as many too.
#include <android/log.h>
#include <gtest/gtest.h>
#include <malloc.h>
#include <portable/log_sink.h>

#include <cstdio>
#include <memory>
#include <vector>

#include "effect/QxEffect.h"
#include "text/QxTextInstanceManager.h"
#include "text/text_fixture.h"

namespace QxFontEffect {
namespace {

using test::TextScene;

constexpr int kSide = 48;

/// No log, because kept lines would count as memory of the texts.
class Many : public ::testing::Test {
protected:
    Many() { portable::setStderrLogPriority(ANDROID_LOG_SILENT); }
    ~Many() override { portable::setStderrLogPriority(ANDROID_LOG_UNKNOWN); }
};

/// Bytes in use on the heap.
size_t heapBytes() {
    const struct mallinfo2 heap = mallinfo2();
    return heap.uordblks + heap.hblkhd;
}

std::unique_ptr<TextScene> newText(int number) {
    const wchar_t text[] = {static_cast<wchar_t>(L'A' + number % 26), 0};
    auto scene = std::make_unique<TextScene>(text, kSide, kSide);
    scene->GetEffect()->addOuterShadowText(45, 2, 3, 0xFF000000u, 0.5f);
    test::setLines(scene.get(), {test::newLine(8, 36, 0, 1)});
    return scene;
}

std::vector<unsigned char> render(QxTextObject& object) {
    const unsigned char* const pixels = object.RenderTextEffect(kSide, kSide);
    if (pixels == nullptr) return {};
    return std::vector<unsigned char>(pixels, pixels + kSide * kSide * 4);
}

/// Every object keeps its handle, draws as if it were alone, and leaves nothing behind.
void keepAlive(int count) {
    std::vector<std::vector<unsigned char>> alone;
    for (int letter = 0; letter < 26; ++letter) {
        alone.push_back(render(*newText(letter)));
        ASSERT_FALSE(alone.back().empty());
        ASSERT_TRUE(letter == 0 || alone[static_cast<size_t>(letter) - 1] != alone.back());
    }
    const size_t before = heapBytes();
    std::vector<std::unique_ptr<TextScene>> texts;
    texts.reserve(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i) texts.push_back(newText(i));
    const size_t idle = heapBytes() - before;
    std::printf("%d text objects with a letter, a line and a shadow: %.0f bytes each\n", count,
                static_cast<double>(idle) / count);
    EXPECT_LT(idle / static_cast<size_t>(count), 8192u);

    for (int i = 0; i < count; ++i)
        ASSERT_EQ(texts[static_cast<size_t>(i)].get(),
                  QxTextObject::FindQxTextObject(texts[static_cast<size_t>(i)]->GetRuntimeHandle()));
    for (int i = 0; i < count; i += 7)
        ASSERT_EQ(alone[static_cast<size_t>(i % 26)], render(*texts[static_cast<size_t>(i)])) << i;

    std::vector<int> handles;
    for (const auto& text : texts) handles.push_back(text->GetRuntimeHandle());
    texts.clear();
    texts.shrink_to_fit();
    for (const int handle : handles) ASSERT_EQ(nullptr, QxTextObject::FindQxTextObject(handle));
    handles.clear();
    handles.shrink_to_fit();
    EXPECT_LT(heapBytes(), before + 64 * 1024);
}

TEST_F(Many, TenThousandTextsAliveAtOnce) {
    keepAlive(10000);
}

TEST_F(Many, DISABLED_AHundredThousandTextsAliveAtOnce) {
    keepAlive(100000);
}

/// Registers, binds and releases, some thousand objects at a time. To the registry an object is an address only.
void registerAndRelease(int cycles) {
    constexpr int kAtOnce = 1000;
    static int deleted;
    deleted = 0;
    QxTextInstanceManager::SetCallBack([](QxTextObject* object) {
        ++deleted;
        QxTextInstanceManager::Unregister(QxTextInstanceManager::FindQxTextHandle(object));
    });
    std::vector<char> addresses(kAtOnce);
    const auto object = [&](int i) { return reinterpret_cast<QxTextObject*>(&addresses[static_cast<size_t>(i)]); };
    const size_t before = heapBytes();
    int last = 0;
    for (int cycle = 0; cycle < cycles; cycle += kAtOnce) {
        const bool locked = cycle / kAtOnce % 2 == 1;
        if (locked) QxTextInstanceManager::Lock();
        for (int i = 0; i < kAtOnce; ++i) {
            const int handle = QxTextInstanceManager::Register(object(i));
            ASSERT_GT(handle, last) << "a handle came twice";
            last = handle;
            QxTextInstanceManager::Bind(object(i));
        }
        for (int i = 0; i < kAtOnce; ++i)
            ASSERT_TRUE(QxTextInstanceManager::Release(QxTextInstanceManager::FindQxTextHandle(object(i))));
        if (locked) QxTextInstanceManager::Unlock();
        ASSERT_EQ(cycle + kAtOnce, deleted);
    }
    EXPECT_LT(heapBytes(), before + 64 * 1024);
    QxTextInstanceManager::SetCallBack(nullptr);
}

TEST_F(Many, AMillionTextsRegisteredAndReleased) {
    registerAndRelease(1000000);
}

TEST_F(Many, DISABLED_TenMillionTextsRegisteredAndReleased) {
    registerAndRelease(10000000);
}

}  // namespace
}  // namespace QxFontEffect
