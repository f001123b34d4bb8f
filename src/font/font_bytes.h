#pragma once

#include <cstddef>
#include <memory>

namespace QxFontEffect {

/// The bytes of one font file, read in place by the typefaces made of them and released with their last user.
class FontBytes {
public:
    /// Maps a whole file read-only. A file that cannot be opened, measured or mapped (a directory, an empty file)
    /// gives bytes with null data and size 0. Null when memory for the record itself runs out.
    static std::shared_ptr<const FontBytes> mapFile(const char* path);

    /// Takes an array over. Null, with the array released, when memory for the record runs out.
    static std::shared_ptr<const FontBytes> adopt(std::unique_ptr<char[]> array, size_t size);

    ~FontBytes();
    FontBytes(const FontBytes&) = delete;
    FontBytes& operator=(const FontBytes&) = delete;

    const void* data() const { return mData; }
    size_t size() const { return mSize; }

private:
    enum class Kind { kMapping, kArray };

    FontBytes(Kind kind, void* data, size_t size) : mKind(kind), mData(data), mSize(size) {}
    static std::shared_ptr<const FontBytes> share(FontBytes* bytes);

    const Kind mKind;
    void* const mData;
    const size_t mSize;
};

}  // namespace QxFontEffect
