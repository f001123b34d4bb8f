#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

namespace QxFontEffect::test {

/// Takes values off the front of a fuzzer's bytes; past the end everything is 0.
class Input {
public:
    Input(const uint8_t* data, size_t size) : mData(data), mSize(size) {}

    bool empty() const { return mSize == 0; }
    size_t left() const { return mSize; }

    template <typename Value>
    Value take() {
        Value value{};
        const size_t count = mSize < sizeof(Value) ? mSize : sizeof(Value);
        if (count > 0) std::memcpy(&value, mData, count);
        skip(count);
        return value;
    }

    uint8_t byte() { return take<uint8_t>(); }
    int below(int limit) { return byte() % limit; }

    std::string bytes(size_t count) {
        if (count > mSize) count = mSize;
        const std::string result(reinterpret_cast<const char*>(mData), count);
        skip(count);
        return result;
    }
    std::string rest() { return bytes(mSize); }

private:
    void skip(size_t count) {
        mData += count;
        mSize -= count;
    }

    const uint8_t* mData;
    size_t mSize;
};

}  // namespace QxFontEffect::test

/// What libFuzzer, or the replaying main, calls for each input.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);
