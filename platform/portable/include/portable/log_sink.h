#pragma once

namespace portable {

/// Receives one log line: the caller's `user` pointer, the priority (android_LogPriority), tag and whole message.
/// The strings are valid during the call only. Calls come from the logging thread, one at a time; a line logged
/// from inside a sink goes to standard error alone.
using LogSink = void (*)(void* user, int priority, const char* tag, const char* message);

/// Sends every further line to `sink` as well as to standard error; null takes the sink away. When this returns no
/// thread is inside the sink that was there before, so its `user` may be destroyed. Not to be called from a sink.
void setLogSink(LogSink sink, void* user);

/// Keeps lines below `lowest` (android_LogPriority) off standard error; the sink still gets them. ANDROID_LOG_SILENT
/// keeps everything off. At start every line is written.
void setStderrLogPriority(int lowest);

}  // namespace portable
