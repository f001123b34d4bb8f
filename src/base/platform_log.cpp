#include "base/platform_log.h"

#include <android/log.h>

#include <cstdarg>

#include "base/Error.h"

namespace QxFontEffect {

void logDebug(const char* tag, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    __android_log_vprint(ANDROID_LOG_DEBUG, tag, format, arguments);
    va_end(arguments);
}

void logError(const char* tag, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    __android_log_vprint(ANDROID_LOG_ERROR, tag, format, arguments);
    va_end(arguments);
}

bool failWith(const char* tag, long code, int line) {
    logError(tag, "@ Native Error %ld : %d", code, line);
    Error::SetError(static_cast<unsigned long>(code));
    return false;
}

}  // namespace QxFontEffect
