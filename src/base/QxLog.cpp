#include "base/QxLog.h"

#include <android/log.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "base/QxString.h"

namespace QxFontEffect {

unsigned char QxLog::mCurrentLogLevel = 0x3B;
unsigned char QxLog::isBuildTypeEngMode = 1;
unsigned char QxLog::isCheckedBuildType = 0;
unsigned char QxLog::DEBUG_ENABLE = 0;

namespace {

constexpr size_t kFileNameSize = 256;
constexpr size_t kMessageSize = 1024;
constexpr size_t kConvertSize = 512;

int priorityOf(QxLogLevel level) {
    // By level - 1. Only single bits have a meaning of their own; 3 is on its way to a warning and logs as info.
    constexpr int kPriorities[] = {ANDROID_LOG_DEBUG, ANDROID_LOG_INFO, ANDROID_LOG_INFO, ANDROID_LOG_WARN,
                                   ANDROID_LOG_INFO,  ANDROID_LOG_INFO, ANDROID_LOG_INFO, ANDROID_LOG_ERROR};
    const int number = level;
    return number >= 1 && number <= 8 ? kPriorities[number - 1] : ANDROID_LOG_INFO;
}

/// Copies a file name without what follows its last '.'; directories take part, so "a.d/file" gives "a".
void cutFileName(const char* fileName, char (&cut)[kFileNameSize]) {
    std::snprintf(cut, sizeof cut, "%s", fileName);
    char* dot = std::strrchr(cut, '.');
    if (dot != nullptr) *dot = '\0';
}

float milliseconds(long microseconds) {
    return static_cast<float>(microseconds) / 1000.0f;
}

}  // namespace

void QxLog::printLog(QxLogLevel level, const char* fileName, const char* format, ...) {
    if (format == nullptr || fileName == nullptr || (mCurrentLogLevel & level) == 0) return;
    if (std::strlen(fileName) >= kFileNameSize) return;
    char name[kFileNameSize];
    cutFileName(fileName, name);
    char message[kMessageSize] = {};
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(message, sizeof message, format, arguments);
    va_end(arguments);
    __android_log_print(priorityOf(level), "qxeffect", "[%s] %s \n", name, message);
}

void QxLog::printTime(const char* fileName, const char* label, long elapsedUs) {
    if ((mCurrentLogLevel & QX_LOG_TIMING) == 0 || label == nullptr) return;
    printLog(QX_LOG_INFO, fileName, "[Time] %s %.3fms", label, milliseconds(elapsedUs));
}

void QxLog::printTime(const char* fileName, const char* label, long elapsedUs, const char* format, ...) {
    if ((mCurrentLogLevel & QX_LOG_TIMING) == 0 || label == nullptr || format == nullptr) return;
    char text[kMessageSize] = {};
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    printLog(QX_LOG_INFO, fileName, "[Time] %s %.3fms %s", label, milliseconds(elapsedUs), text);
}

void QxLog::setPrintLogLevel(unsigned char mask) {
    mCurrentLogLevel = mask;
}

const char* QxLog::ConvertLog(const QxString* s) {
    static thread_local char text[kConvertSize];
    if (s == nullptr) return "[### null ###]";
    // Asking it would be a failure with an error code; a log line must not change the caller's last error.
    if (s->mImpl == nullptr) return "";
    if (s->GetUTF8Size() > static_cast<int>(kConvertSize)) return "[### string is too long ###]";
    s->GetUTF8(text, static_cast<int>(kConvertSize));
    return text;
}

void QxLog::SetBuildType(bool engMode) {
    if (isCheckedBuildType != 0) return;
    isCheckedBuildType = 1;
    isBuildTypeEngMode = engMode ? 1 : 0;
}

bool QxLog::IsCheckedBuildType() {
    return isCheckedBuildType != 0;
}

bool QxLog::IsBuildTypeEngMode() {
    return isBuildTypeEngMode != 0;
}

bool QxLog::IsAllLogEnable() {
    return DEBUG_ENABLE != 0 && isBuildTypeEngMode != 0;
}

}  // namespace QxFontEffect
