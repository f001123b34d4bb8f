#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "base/Error.h"
#include "base/List.h"
#include "base/QxLog.h"
#include "base/QxString.h"
#include "support/captured_log.h"

namespace QxFontEffect {
namespace {

/// Runs `work(thread)` on eight threads, which begin together.
template <typename Work>
void onEightThreads(Work work) {
    std::atomic<int> waiting{8};
    std::vector<std::thread> threads;
    for (int t = 0; t < 8; ++t)
        threads.emplace_back([&, t] {
            --waiting;
            while (waiting > 0) std::this_thread::yield();
            work(t);
        });
    for (std::thread& thread : threads) thread.join();
}

TEST(Threads, EveryOneHasItsOwnErrorSlot) {
    const test::CapturedLog log;
    Error::SetError(77);
    std::atomic<int> wrong{0};
    onEightThreads([&](int t) {
        if (Error::GetError() != 0) ++wrong;
        List unmade;
        for (int round = 0; round < 2000; ++round) {
            const int code = 100 * t + round % 50;
            Error::SetError(static_cast<unsigned long>(code));
            if (Error::GetError() != code) ++wrong;
            // A failure inside the library lands in the slot of the thread that called.
            if (unmade.Get(0) != nullptr || Error::GetError() != 8) ++wrong;
        }
    });
    EXPECT_EQ(0, wrong);
    EXPECT_EQ(77, Error::GetError());
}

TEST(Threads, EveryOneHasItsOwnTextForTheLog) {
    const test::CapturedLog log;
    std::atomic<int> wrong{0};
    onEightThreads([&](int t) {
        const std::string text(static_cast<size_t>(20 + 60 * t), static_cast<char>('a' + t));
        QxString string;
        if (!string.Construct(text.c_str())) ++wrong;
        for (int round = 0; round < 2000; ++round) {
            const char* const shown = QxLog::ConvertLog(&string);
            std::this_thread::yield();
            if (text != shown) ++wrong;
        }
    });
    EXPECT_EQ(0, wrong);
}

}  // namespace
}  // namespace QxFontEffect
