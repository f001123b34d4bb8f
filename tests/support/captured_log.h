#pragma once

#include <android/log.h>
#include <gmock/gmock.h>
#include <portable/log_sink.h>

#include <mutex>
#include <ostream>
#include <string>
#include <vector>

#include "support/allocation_pause.h"

namespace QxFontEffect::test {

struct LogLine {
    int priority;
    std::string tag;
    std::string message;
};

inline void PrintTo(const LogLine& line, std::ostream* out) {
    *out << '[' << line.priority << ' ' << line.tag << ": " << line.message << ']';
}

/// How a `%p` argument may read, as a regular expression for ContainsRegex and MatchesRegex. Null differs between C
/// libraries.
constexpr char kPointer[] = "(0x[0-9a-f]+|\\(nil\\))";

/// Collects the log lines of all threads while it lives and keeps them off standard error. One at a time.
class CapturedLog {
public:
    CapturedLog() {
        portable::setStderrLogPriority(ANDROID_LOG_SILENT);
        portable::setLogSink(&CapturedLog::receive, this);
    }
    ~CapturedLog() {
        portable::setLogSink(nullptr, nullptr);
        portable::setStderrLogPriority(ANDROID_LOG_UNKNOWN);
    }
    CapturedLog(const CapturedLog&) = delete;
    CapturedLog& operator=(const CapturedLog&) = delete;

    std::vector<LogLine> lines() const {
        std::lock_guard<std::mutex> lock(mMutex);
        return mLines;
    }

    /// The lines so far, which are forgotten.
    std::vector<LogLine> take() {
        std::lock_guard<std::mutex> lock(mMutex);
        std::vector<LogLine> taken;
        taken.swap(mLines);
        return taken;
    }

private:
    static void receive(void* user, int priority, const char* tag, const char* message) {
        AllocationPause pause;
        CapturedLog* self = static_cast<CapturedLog*>(user);
        std::lock_guard<std::mutex> lock(self->mMutex);
        self->mLines.push_back({priority, tag, message});
    }

    mutable std::mutex mMutex;
    std::vector<LogLine> mLines;
};

/// Matches a LogLine: EXPECT_THAT(log.take(), ElementsAre(isLine(ANDROID_LOG_DEBUG, "tag", "text"))). The message
/// may be a string or a matcher of one.
inline ::testing::Matcher<LogLine> isLine(int priority, const std::string& tag,
                                          const ::testing::Matcher<std::string>& message) {
    return ::testing::AllOf(::testing::Field("priority", &LogLine::priority, priority),
                            ::testing::Field("tag", &LogLine::tag, tag),
                            ::testing::Field("message", &LogLine::message, message));
}
inline ::testing::Matcher<LogLine> isDebugLine(const std::string& tag, const ::testing::Matcher<std::string>& message) {
    return isLine(ANDROID_LOG_DEBUG, tag, message);
}
inline ::testing::Matcher<LogLine> isErrorLine(const std::string& tag, const ::testing::Matcher<std::string>& message) {
    return isLine(ANDROID_LOG_ERROR, tag, message);
}

/// Matches the common error line "@ Native Error %ld : %d" with this code and line number.
inline ::testing::Matcher<LogLine> isNativeError(const std::string& tag, long code, int line) {
    return isErrorLine(tag, "@ Native Error " + std::to_string(code) + " : " + std::to_string(line));
}
/// The same with any line number.
inline ::testing::Matcher<LogLine> isNativeError(const std::string& tag, long code) {
    return isErrorLine(tag, ::testing::MatchesRegex("@ Native Error " + std::to_string(code) + " : [0-9]+"));
}

}  // namespace QxFontEffect::test
