#pragma once

#include <cstdint>

#include "base/platform_log.h"

namespace QxFontEffect {

class QxString;

/// Log levels, single bits of the level mask. The type is fixed, so that every int is a legal value.
enum QxLogLevel : int32_t {
    QX_LOG_DEBUG = 1,
    QX_LOG_INFO = 2,
    QX_LOG_WARNING = 4,
    QX_LOG_ERROR = 8,
    QX_LOG_TIMING = 16,
};

/// The switchable log. Static state only, plain bytes without synchronisation.
class QxLog {
public:
    /// Writes "[%s] %s \n" (file name, message) under the tag "qxeffect" when the mask has the level's bit.
    ///
    /// @param fileName  source file name, at most 255 bytes; cut at the last '.' of the whole string.
    /// @param format    printf format of the message; the message is cut after 1023 bytes.
    ///
    /// Nothing is written when fileName or format is null or fileName too long.
    static void printLog(QxLogLevel level, const char* fileName, const char* format, ...) QX_PRINTF_LIKE(3, 4);

    /// Writes "[Time] %s %.3fms" (label, milliseconds) at level 2 when bit 16 of the mask is set too.
    static void printTime(const char* fileName, const char* label, long elapsedUs);
    /// The same with a formatted text of up to 1023 bytes behind it.
    static void printTime(const char* fileName, const char* label, long elapsedUs, const char* format, ...)
        QX_PRINTF_LIKE(4, 5);

    /// Replaces the mask of enabled levels.
    static void setPrintLogLevel(unsigned char mask);

    /// The string as printable UTF-8: "[### null ###]" for null, "[### string is too long ###]" beyond 512 bytes,
    /// "" when it is not constructed. The text lies in a buffer of the calling thread and is overwritten by its next
    /// call: use the result at once, and only one in a log line.
    static const char* ConvertLog(const QxString* s);

    /// Sets the build type; only the first call of the process counts.
    static void SetBuildType(bool engMode);
    static bool IsCheckedBuildType();
    static bool IsBuildTypeEngMode();

    /// Whether verbose lines are wanted: debug switch and engineering build both on.
    static bool IsAllLogEnable();

    static unsigned char mCurrentLogLevel;    ///< mask of enabled levels; warnings (4) are off at start
    static unsigned char isBuildTypeEngMode;  ///< whether this is an engineering build; true until told otherwise
    static unsigned char isCheckedBuildType;  ///< whether SetBuildType was called
    static unsigned char DEBUG_ENABLE;        ///< the debug switch; off, and nothing in the library sets it
};

}  // namespace QxFontEffect
