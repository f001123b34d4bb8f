#pragma once

#include "SkTypes.h"

/// Bytes of known length. The portable typeface reads from memory only.
class SkStreamAsset {
public:
    virtual ~SkStreamAsset() = default;
    virtual size_t getLength() const = 0;
    /// The bytes in place, or null for a stream that is not in memory.
    virtual const void* getMemoryBase() = 0;
};

/// A block of memory as a stream.
class SkMemoryStream : public SkStreamAsset {
public:
    /// @param data      `length` bytes; without `copyData` they must outlive the stream and whatever took it over.
    /// @param copyData  keep an own copy.
    SkMemoryStream(const void* data, size_t length, bool copyData = false);
    ~SkMemoryStream() override;
    SkMemoryStream(const SkMemoryStream&) = delete;
    SkMemoryStream& operator=(const SkMemoryStream&) = delete;

    size_t getLength() const override { return mLength; }
    const void* getMemoryBase() override { return mData; }

private:
    const void* mData;
    size_t mLength;
    void* mCopy = nullptr;
};
