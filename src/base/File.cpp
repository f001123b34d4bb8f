#include "base/File.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <new>

#include "base/Error.h"
#include "base/QxString.h"
#include "base/platform_log.h"

namespace QxFontEffect {

struct FileImpl {
    FILE* stream;  // null after Close
    int writable;  // the mode held 'w' or 'a'; "r+" does not count
    bool keepOpen;
};

namespace {

constexpr char kTag[] = "QX_File";

/// A path as a byte string, from either form of argument.
class PathBytes {
public:
    explicit PathBytes(const char* path) : mPath(path), mSize(path == nullptr ? -1 : 1) {}

    explicit PathBytes(const QxString* path) {
        mSize = path == nullptr ? -1 : path->GetUTF8Size();
        if (mSize < 1) return;
        mOwned.reset(new (std::nothrow) char[static_cast<size_t>(mSize)]);
        if (mOwned == nullptr || !path->GetUTF8(mOwned.get(), mSize)) mSize = -1;
        mPath = mOwned.get();
    }

    bool isUsable() const { return mSize >= 1; }
    /// The UTF-8 size with terminator as the string told it; 1 for any byte path.
    int size() const { return mSize; }
    const char* get() const { return mPath; }

private:
    std::unique_ptr<char[]> mOwned;
    const char* mPath = nullptr;
    int mSize = -1;
};

int refusePath() {
    Error::SetError(7);
    return -1;
}

int accessible(const PathBytes& path, int mode) {
    if (path.isUsable()) return access(path.get(), mode);
    logError(kTag, "IsAccessible() - pathSize < 0");
    return refusePath();
}

int unlinked(const PathBytes& path) {
    if (path.isUsable()) return unlink(path.get());
    logError(kTag, "Unlink() - pathSize < 0");
    return refusePath();
}

int renamed(const PathBytes& oldPath, const PathBytes& newPath) {
    if (oldPath.isUsable() && newPath.isUsable()) return rename(oldPath.get(), newPath.get());
    logError(kTag, "Rename() - pathSize < 0 : old %d, new %d", oldPath.size(), newPath.size());
    return refusePath();
}

}  // namespace

File::~File() {
    Close();
    delete mImpl;
}

bool File::open(const char* path, const char* mode, bool keepOpen) {
    FILE* stream = std::fopen(path, mode);
    if (stream == nullptr) {
        logError(kTag, "OpenFile - Fail to open file. errno = %d", errno);
        return failWith(kTag, 11, 88);
    }
    const bool writable = std::strpbrk(mode, "wa") != nullptr;
    mImpl = new (std::nothrow) FileImpl{stream, writable ? 1 : 0, keepOpen};
    if (mImpl != nullptr) return true;
    std::fclose(stream);
    return failWith(kTag, 1, 94);
}

bool File::Construct(const QxString* path, const char* mode, bool keepOpen) {
    if (mImpl != nullptr) return failWith(kTag, 4, 98);
    if (path == nullptr || mode == nullptr) return failWith(kTag, 7, 99);
    const PathBytes bytes(path);
    if (bytes.isUsable()) return open(bytes.get(), mode, keepOpen);
    logError(kTag, "OpenFile() - pathSize < 0");
    return failWith(kTag, 7, 103);
}

bool File::Construct(const char* path, const char* mode) {
    if (mImpl != nullptr) return failWith(kTag, 4, 107);
    if (path == nullptr || mode == nullptr) return failWith(kTag, 7, 108);
    return open(path, mode, false);
}

FILE* File::GetFilePointer() const {
    return mImpl == nullptr ? nullptr : mImpl->stream;
}

size_t File::Read(void* buf, size_t size, size_t count) {
    FILE* stream = GetFilePointer();
    return stream == nullptr || buf == nullptr ? 0 : std::fread(buf, size, count, stream);
}

size_t File::Write(const void* buf, size_t size, size_t count) {
    FILE* stream = GetFilePointer();
    return stream == nullptr || buf == nullptr ? 0 : std::fwrite(buf, size, count, stream);
}

int File::Seek(long offset, int whence) {
    FILE* stream = GetFilePointer();
    return stream == nullptr ? -1 : std::fseek(stream, offset, whence);
}

long File::Tell() const {
    FILE* stream = GetFilePointer();
    return stream == nullptr ? -1 : std::ftell(stream);
}

int File::Eof() const {
    FILE* stream = GetFilePointer();
    return stream == nullptr ? -1 : std::feof(stream);
}

int File::Error() const {
    FILE* stream = GetFilePointer();
    return stream == nullptr ? -1 : std::ferror(stream);
}

int File::GetFileDescriptor() const {
    FILE* stream = GetFilePointer();
    return stream == nullptr ? -1 : fileno(stream);
}

void File::Close() {
    if (mImpl == nullptr || mImpl->stream == nullptr || mImpl->keepOpen) return;
    std::fflush(mImpl->stream);
    if (mImpl->writable != 0) fsync(fileno(mImpl->stream));
    std::fclose(mImpl->stream);
    mImpl->stream = nullptr;
}

int File::IsAccessible(const QxString* path, int mode) {
    return accessible(PathBytes(path), mode);
}
int File::IsAccessible(const char* path, int mode) {
    return accessible(PathBytes(path), mode);
}

int File::Unlink(const QxString* path) {
    return unlinked(PathBytes(path));
}
int File::Unlink(const char* path) {
    return unlinked(PathBytes(path));
}

int File::Rename(const QxString* oldPath, const QxString* newPath) {
    return renamed(PathBytes(oldPath), PathBytes(newPath));
}
int File::Rename(const char* oldPath, const char* newPath) {
    return renamed(PathBytes(oldPath), PathBytes(newPath));
}

}  // namespace QxFontEffect
