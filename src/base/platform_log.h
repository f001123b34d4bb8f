#pragma once

#if defined(__GNUC__)
#define QX_PRINTF_LIKE(formatIndex, firstArgument) __attribute__((format(printf, formatIndex, firstArgument)))
#else
#define QX_PRINTF_LIKE(formatIndex, firstArgument)
#endif

namespace QxFontEffect {

/// Writes one line to the platform's log at debug priority. The layers above base log through these two
/// functions and so stay free of the platform's own header.
///
/// @param tag     the log tag, never null.
/// @param format  printf format of the line; the line has no length limit.
void logDebug(const char* tag, const char* format, ...) QX_PRINTF_LIKE(2, 3);

/// The same at error priority.
void logError(const char* tag, const char* format, ...) QX_PRINTF_LIKE(2, 3);

/// Reports a failure in the library's common form: the error line "@ Native Error %ld : %d" with code and source
/// line under `tag`, then `Error::SetError(code)`.
///
/// @param code  error code, see Error.h.
/// @param line  line number that belongs to the message; part of the interface, not `__LINE__`.
/// @return false, so that a failing operation can end in `return failWith(...)`.
bool failWith(const char* tag, long code, int line);

}  // namespace QxFontEffect
