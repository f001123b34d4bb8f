#include "output_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "failure.h"

namespace qxrender {

namespace {

bool isDevice(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode);
}

/// errno of what went wrong, 0 for nothing.
int writeWhole(const std::string& path, const std::string& bytes) {
    errno = 0;
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) return errno;
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    const int error = written ? 0 : errno;
    if (std::fclose(file) != 0 && error == 0) return errno;
    return written ? 0 : error != 0 ? error : EIO;
}

}  // namespace

OutputFile::OutputFile(const char* what, const std::string& path, std::string bytes) : mWhat(what), mPath(path) {
    if (isDevice(path)) {
        mBytes = std::move(bytes);
        return;
    }
    struct stat status {};
    if (stat(path.c_str(), &status) == 0) {
        if (S_ISDIR(status.st_mode)) fail(EISDIR);
        // Renaming would replace a file that its owner has protected.
        if (access(path.c_str(), W_OK) != 0) fail(errno);
    }
    mPart = path + ".part" + std::to_string(getpid());
    if (const int error = writeWhole(mPart, bytes)) {
        std::remove(mPart.c_str());
        mPart.clear();
        fail(error);
    }
}

OutputFile::~OutputFile() {
    if (!mPart.empty()) std::remove(mPart.c_str());
}

void OutputFile::publish() {
    if (mPart.empty()) {
        if (const int error = writeWhole(mPath, mBytes)) fail(error);
        return;
    }
    if (std::rename(mPart.c_str(), mPath.c_str()) != 0) fail(errno);
    mPart.clear();
    mReplaced = true;
}

void OutputFile::withdraw() {
    if (mReplaced) std::remove(mPath.c_str());
    mReplaced = false;
}

void OutputFile::fail(int error) const {
    throw Failure(std::string("cannot write ") + mWhat + "'" + mPath + "': " + errorText(error));
}

}  // namespace qxrender
