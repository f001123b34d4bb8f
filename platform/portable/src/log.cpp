#include <android/log.h>
#include <portable/log_sink.h>
#include <pthread.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

// Nothing here has a destructor: objects that die while the process exits still log.
pthread_mutex_t sinkMutex = PTHREAD_MUTEX_INITIALIZER;
portable::LogSink currentSink = nullptr;
void* currentUser = nullptr;
std::atomic<int> lowestOnStderr{ANDROID_LOG_UNKNOWN};
thread_local bool insideSink = false;

struct SinkLock {
    SinkLock() { pthread_mutex_lock(&sinkMutex); }
    ~SinkLock() { pthread_mutex_unlock(&sinkMutex); }
    SinkLock(const SinkLock&) = delete;
    SinkLock& operator=(const SinkLock&) = delete;
};

char letterOf(int priority) {
    constexpr char kLetters[] = "??VDIWEFS";
    return priority >= 0 && priority <= ANDROID_LOG_SILENT ? kLetters[priority] : '?';
}

void writeToStderr(int priority, const char* tag, const char* message) {
    if (priority < lowestOnStderr.load(std::memory_order_relaxed)) return;
    const size_t length = std::strlen(message);
    const bool ended = length > 0 && message[length - 1] == '\n';
    // One call, so that lines of several threads do not mix.
    std::fprintf(stderr, "%c %s: %s%s", letterOf(priority), tag, message, ended ? "" : "\n");
}

void callSink(int priority, const char* tag, const char* message) {
    if (insideSink) return;
    SinkLock lock;
    if (currentSink == nullptr) return;
    insideSink = true;
    currentSink(currentUser, priority, tag, message);
    insideSink = false;
}

}  // namespace

namespace portable {

void setLogSink(LogSink sink, void* user) {
    SinkLock lock;
    currentSink = sink;
    currentUser = user;
}

void setStderrLogPriority(int lowest) {
    lowestOnStderr.store(lowest, std::memory_order_relaxed);
}

}  // namespace portable

extern "C" {

int __android_log_write(int prio, const char* tag, const char* text) {
    const char* safeTag = tag == nullptr ? "" : tag;
    const char* safeText = text == nullptr ? "" : text;
    writeToStderr(prio, safeTag, safeText);
    callSink(prio, safeTag, safeText);
    return 1;
}

int __android_log_vprint(int prio, const char* tag, const char* fmt, va_list ap) {
    char shortLine[1024];
    va_list again;
    va_copy(again, ap);
    const int length = std::vsnprintf(shortLine, sizeof shortLine, fmt, ap);
    char* longLine = nullptr;
    if (length >= static_cast<int>(sizeof shortLine)) {
        const size_t size = static_cast<size_t>(length) + 1;
        longLine = static_cast<char*>(std::malloc(size));
        // Without memory for the whole line its beginning is better than nothing.
        if (longLine != nullptr) std::vsnprintf(longLine, size, fmt, again);
    }
    va_end(again);
    if (length < 0) return length;
    const int result = __android_log_write(prio, tag, longLine != nullptr ? longLine : shortLine);
    std::free(longLine);
    return result;
}

int __android_log_print(int prio, const char* tag, const char* fmt, ...) {
    va_list arguments;
    va_start(arguments, fmt);
    const int result = __android_log_vprint(prio, tag, fmt, arguments);
    va_end(arguments);
    return result;
}

}  // extern "C"
