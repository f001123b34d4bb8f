#pragma once

#include <string>

namespace qxrender {

/// A file on its way to its name: the bytes are written beside it, and only `publish` puts them there. Given up before
/// that, it leaves nothing behind and an older file of the name as it was. Devices and pipes, which cannot be replaced,
/// are written straight by `publish`.
class OutputFile {
public:
    /// Writes the bytes. Throws Failure, which says `what` could not be written.
    OutputFile(const char* what, const std::string& path, std::string bytes);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    ~OutputFile();

    /// Throws Failure.
    void publish();

    /// Takes a published file away again.
    void withdraw();

private:
    [[noreturn]] void fail(int error) const;

    const char* mWhat;
    std::string mPath;
    std::string mPart;   ///< the name it waits under; empty for a device and once published
    std::string mBytes;  ///< for a device only
    bool mReplaced = false;
};

}  // namespace qxrender
