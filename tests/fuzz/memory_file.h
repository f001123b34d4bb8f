#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <string>

#include "fuzz/check.h"

namespace QxFontEffect::test {

/// A file that exists in memory only, under a name that can be opened.
class MemoryFile {
public:
    MemoryFile(const void* data, size_t size) : mDescriptor(memfd_create("fuzz", 0)) {
        FUZZ_CHECK(mDescriptor >= 0 && write(mDescriptor, data, size) == static_cast<ssize_t>(size));
    }
    explicit MemoryFile(const std::string& text) : MemoryFile(text.data(), text.size()) {}
    ~MemoryFile() { close(mDescriptor); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::string path() const { return "/proc/self/fd/" + std::to_string(mDescriptor); }

private:
    int mDescriptor;
};

}  // namespace QxFontEffect::test
