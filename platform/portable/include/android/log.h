#pragma once

#include <stdarg.h>

// The platform's log interface as far as the library uses it. Lines go to standard error, and to the sink of
// <portable/log_sink.h> when one is set.

#ifdef __cplusplus
extern "C" {
#endif

typedef enum android_LogPriority {
    ANDROID_LOG_UNKNOWN = 0,
    ANDROID_LOG_DEFAULT,
    ANDROID_LOG_VERBOSE,
    ANDROID_LOG_DEBUG,
    ANDROID_LOG_INFO,
    ANDROID_LOG_WARN,
    ANDROID_LOG_ERROR,
    ANDROID_LOG_FATAL,
    ANDROID_LOG_SILENT
} android_LogPriority;

/// Writes one line. A null tag or text counts as empty. Returns 1.
int __android_log_write(int prio, const char* tag, const char* text);

/// Formats and writes one line, of any length. Returns 1, or a negative number when the format cannot be expanded.
int __android_log_print(int prio, const char* tag, const char* fmt, ...) __attribute__((__format__(printf, 3, 4)));

/// The same with the arguments as a list.
int __android_log_vprint(int prio, const char* tag, const char* fmt, va_list ap)
    __attribute__((__format__(printf, 3, 0)));

#ifdef __cplusplus
}
#endif
