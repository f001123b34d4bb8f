#pragma once

#include <android/log.h>
#include <portable/log_sink.h>

#include <cstdio>
#include <iostream>

namespace QxFontEffect::test {

/// Keeps the library's log off stderr from the first input on.
inline void quietLog() {
    static const bool done = (portable::setStderrLogPriority(ANDROID_LOG_SILENT), true);
    (void)done;
}

/// Nothing to be read on standard input and nothing written to standard output through streams, from the first input
/// on.
inline void quietStreams() {
    static const bool done = std::freopen("/dev/null", "r", stdin) != nullptr && std::cout.rdbuf(nullptr) != nullptr;
    (void)done;
}

}  // namespace QxFontEffect::test
