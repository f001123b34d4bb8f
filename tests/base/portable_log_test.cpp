#include <android/log.h>
#include <gtest/gtest.h>
#include <portable/log_sink.h>

#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include "support/captured_log.h"

namespace QxFontEffect {
namespace {

using test::CapturedLog;

TEST(PortableLog, WritesLetterTagAndMessageToStderr) {
    testing::internal::CaptureStderr();
    __android_log_print(ANDROID_LOG_ERROR, "tag", "%ld : %d", 8L, 184);
    __android_log_write(ANDROID_LOG_DEBUG, "tag", "ends itself\n");
    __android_log_write(99, nullptr, nullptr);
    portable::setStderrLogPriority(ANDROID_LOG_ERROR);
    __android_log_write(ANDROID_LOG_WARN, "tag", "kept off");
    portable::setStderrLogPriority(ANDROID_LOG_UNKNOWN);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "E tag: 8 : 184\nD tag: ends itself\n? : \n");
}

TEST(PortableLog, CutsNothing) {
    CapturedLog log;
    for (const size_t length : {0u, 1022u, 1023u, 1024u, 1025u, 100000u}) {
        const std::string text(length, 'x');
        __android_log_print(ANDROID_LOG_INFO, "tag", "%s", text.c_str());
        EXPECT_THAT(log.take(), testing::ElementsAre(test::isLine(4, "tag", text))) << length;
    }
}

TEST(PortableLog, HandsEveryLineOfEveryThreadToTheSink) {
    CapturedLog log;
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([t] {
            for (int i = 0; i < 500; ++i) __android_log_print(ANDROID_LOG_INFO, "tag", "%d %d", t, i);
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(log.take().size(), 2000u);
}

/// Logs while the process is torn down.
struct LogsAtExit {
    ~LogsAtExit() { __android_log_print(ANDROID_LOG_INFO, "exit", "%s", std::string(2000, 'x').c_str()); }
};

TEST(PortableLogDeathTest, WorksWhileTheProcessExits) {
    EXPECT_EXIT(
        {
            static LogsAtExit last;
            __android_log_write(ANDROID_LOG_INFO, "tag", "used before");
            std::exit(0);
        },
        testing::ExitedWithCode(0), "I exit: xxx");
}

void logAgain(void* user, int priority, const char* tag, const char* message) {
    ++*static_cast<int*>(user);
    __android_log_write(priority, tag, message);
}

TEST(PortableLog, DoesNotCallASinkFromItself) {
    int calls = 0;
    portable::setLogSink(logAgain, &calls);
    testing::internal::CaptureStderr();
    __android_log_write(ANDROID_LOG_INFO, "tag", "once");
    portable::setLogSink(nullptr, nullptr);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "I tag: once\nI tag: once\n");
}

}  // namespace
}  // namespace QxFontEffect
