#pragma once

#include <cstddef>
#include <cstdio>

namespace QxFontEffect {

class QxString;
struct FileImpl;

/// A stream of the C library. Paths are byte strings; the QxString forms convert to UTF-8.
///
/// Made in two steps: the constructor makes an empty shell, `Construct` opens the file. Reading and writing give 0,
/// the other queries -1 or null, on a shell and after Close.
class File {
public:
    File() = default;
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    /// Closes like `Close`.
    virtual ~File();

    /// Opens `path` as `fopen` does.
    ///
    /// @param keepOpen  leave the stream open at Close and destruction; it then belongs to the caller of
    ///                  GetFilePointer.
    ///
    /// Already constructed: error 4. Null path or mode, or a path without a UTF-8 form: error 7. Cannot be opened:
    /// error 11, and Construct may be tried again.
    bool Construct(const QxString* path, const char* mode, bool keepOpen = false);
    bool Construct(const char* path, const char* mode);

    /// Whole elements read or written, as `fread` and `fwrite` count them.
    size_t Read(void* buf, size_t size, size_t count);
    size_t Write(const void* buf, size_t size, size_t count);

    int Seek(long offset, int whence);
    long Tell() const;
    int Eof() const;
    int Error() const;
    int GetFileDescriptor() const;
    FILE* GetFilePointer() const;

    /// Flushes, brings what was written to the storage device when the mode held 'w' or 'a', and closes.
    void Close();

    /// `access`, `unlink` and `rename` with their results. A path that is null or has no UTF-8 form: -1 and error 7.
    static int IsAccessible(const QxString* path, int mode);
    static int IsAccessible(const char* path, int mode);
    static int Unlink(const QxString* path);
    static int Unlink(const char* path);
    static int Rename(const QxString* oldPath, const QxString* newPath);
    static int Rename(const char* oldPath, const char* newPath);

private:
    bool open(const char* path, const char* mode, bool keepOpen);

    FileImpl* mImpl = nullptr;
};

}  // namespace QxFontEffect
