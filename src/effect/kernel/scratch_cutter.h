#pragma once

#include <cstddef>
#include <cstdint>

namespace QxFontEffect {

/// Cuts a piece of scratch memory into arrays that start at cache lines, or only counts how much that takes.
///
/// Vectors that cross the end of a line cost twice, and the blurs read little else than vectors.
class ScratchCutter {
public:
    /// Counts: `take` gives null.
    ScratchCutter() : mStart(nullptr), mBytes(0) {}

    /// @param memory  as many bytes as a counting cutter asked the same arrays reports.
    explicit ScratchCutter(uint8_t* memory)
        : mStart(memory + (kLine - reinterpret_cast<uintptr_t>(memory) % kLine) % kLine), mBytes(0) {}

    template <typename T>
    T* take(int64_t count) {
        uint8_t* array = mStart == nullptr ? nullptr : mStart + mBytes;
        mBytes += (count * static_cast<int64_t>(sizeof(T)) + kLine - 1) / kLine * kLine;
        return reinterpret_cast<T*>(array);
    }

    /// Memory to be had, wherever it starts. In 64 bits, because a job may want more than there is.
    int64_t bytes() const { return mBytes + kLine - 1; }

private:
    static constexpr int kLine = 64;

    uint8_t* mStart;
    int64_t mBytes;
};

/// Bytes of scratch for what a `Memory` cuts out of it, which takes these sizes and then the cutter.
template <typename Memory, typename... Sizes>
int64_t scratchBytesOf(const Sizes&... sizes) {
    ScratchCutter counter;
    static_cast<void>(Memory(sizes..., counter));
    return counter.bytes();
}

/// Cuts a `Memory` out of as many bytes.
template <typename Memory, typename... Sizes>
Memory cutFrom(uint8_t* scratch, const Sizes&... sizes) {
    ScratchCutter cutter(scratch);
    return Memory(sizes..., cutter);
}

}  // namespace QxFontEffect
