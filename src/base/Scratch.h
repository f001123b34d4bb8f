#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <type_traits>

namespace QxFontEffect {

/// Working memory of one image pass: `count` elements from the C allocator, freed when the object goes out of
/// scope. Test it before use; a failed or overflowing request is empty and never throws.
///
///     Scratch<uint8_t> padded(width, height);
///     if (!padded) return;
///
/// Contents are undefined unless made by `zeroed`.
template <typename T>
class Scratch {
    static_assert(std::is_trivially_copyable<T>::value && std::is_trivially_destructible<T>::value,
                  "scratch memory is raw");

public:
    explicit Scratch(int64_t count) : Scratch(count, 1) {}

    /// width x height elements. A negative side or a product that does not fit gives an empty buffer; a product of
    /// zero gives one that is valid and holds nothing.
    Scratch(int64_t width, int64_t height) { allocate(width, height, false); }

    static Scratch zeroed(int64_t width, int64_t height) {
        Scratch buffer;
        buffer.allocate(width, height, true);
        return buffer;
    }

    Scratch(Scratch&& other) noexcept : mData(other.mData), mCount(other.mCount) {
        other.mData = nullptr;
        other.mCount = 0;
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    Scratch& operator=(Scratch&&) = delete;
    // The analyzer takes the buffers of an empty std::optional for freed ones.
    ~Scratch() { std::free(mData); }  // NOLINT(clang-analyzer-unix.Malloc)

    explicit operator bool() const { return mData != nullptr; }
    T* data() { return mData; }
    const T* data() const { return mData; }
    size_t count() const { return mCount; }
    T& operator[](size_t index) { return mData[index]; }
    const T& operator[](size_t index) const { return mData[index]; }

private:
    Scratch() = default;

    void allocate(int64_t width, int64_t height, bool zero) {
        if (width < 0 || height < 0) return;
        const uint64_t limit = static_cast<uint64_t>(PTRDIFF_MAX) / sizeof(T);
        const uint64_t columns = static_cast<uint64_t>(width);
        const uint64_t rows = static_cast<uint64_t>(height);
        if (rows != 0 && columns > limit / rows) return;
        mCount = static_cast<size_t>(columns * rows);
        // One spare element keeps an empty but successful request apart from a failed one.
        const size_t elements = mCount == 0 ? 1 : mCount;
        mData = static_cast<T*>(zero ? std::calloc(elements, sizeof(T)) : std::malloc(elements * sizeof(T)));
        if (mData == nullptr) mCount = 0;
    }

    T* mData = nullptr;
    size_t mCount = 0;
};

}  // namespace QxFontEffect
