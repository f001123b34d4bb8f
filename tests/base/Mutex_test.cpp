#include "base/Mutex.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include "base/Error.h"
#include "support/captured_log.h"

namespace QxFontEffect {
namespace {

using test::CapturedLog;
using test::isNativeError;

TEST(Mutex, KeepsThreadsApartAtEveryDepth) {
    Mutex mutex;
    ASSERT_TRUE(mutex.Construct());
    int inside = 0;  // plain on purpose: a lost update, or a race report, shows a lock that does not hold
    const auto work = [&] {
        for (int i = 0; i < 5000; ++i) {
            const int depth = 1 + i % 3;
            for (int d = 0; d < depth; ++d) mutex.Lock();
            ++inside;
            for (int d = 0; d < depth; ++d) mutex.Unlock();
            mutex.Unlock();  // not the owner any more: ignored
        }
    };
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) threads.emplace_back(work);
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(inside, 4 * 5000);
}

TEST(Mutex, NeedsAsManyUnlocksAsLocks) {
    Mutex mutex;
    ASSERT_TRUE(mutex.Construct());
    std::atomic<bool> released{false};
    std::atomic<bool> early{false};
    mutex.Lock();
    mutex.Lock();
    std::thread other([&] {
        mutex.Unlock();  // by a thread that does not hold it
        mutex.Lock();
        early = !released;
        mutex.Unlock();
    });
    mutex.Unlock();
    // Time for the other thread to get in if one Unlock were enough.
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    released = true;
    mutex.Unlock();
    other.join();
    EXPECT_FALSE(early);
}

TEST(Mutex, IsMadeOnceAndHarmlessBefore) {
    CapturedLog log;
    Mutex mutex;
    mutex.Unlock();
    mutex.Lock();
    std::thread([&] { mutex.Lock(); }).join();  // a shell locks nobody out
    ASSERT_TRUE(mutex.Construct());
    mutex.Lock();
    Error::SetError(0);
    EXPECT_FALSE(mutex.Construct());
    EXPECT_EQ(Error::GetError(), 4);
    EXPECT_THAT(log.take(), testing::ElementsAre(isNativeError("QX_Mutex", 4)));
    mutex.Unlock();
}

}  // namespace
}  // namespace QxFontEffect
