#include "SkStream.h"

#include <cstdlib>
#include <cstring>

SkMemoryStream::SkMemoryStream(const void* data, size_t length, bool copyData)
    : mData(data), mLength(data == nullptr ? 0 : length) {
    if (!copyData || mLength == 0) return;
    mCopy = std::malloc(mLength);
    mData = mCopy;
    if (mCopy == nullptr) {
        mLength = 0;
        return;
    }
    std::memcpy(mCopy, data, mLength);
}

SkMemoryStream::~SkMemoryStream() {
    std::free(mCopy);
}
