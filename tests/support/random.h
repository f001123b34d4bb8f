#pragma once

#include <cstdint>

namespace QxFontEffect::test {

/// A seeded generator (xorshift64*) whose numbers are the same with every compiler and library, so that a failing
/// case can be named by its seed.
class Rng {
public:
    explicit Rng(uint64_t seed) : mState(seed * 0x9E3779B97F4A7C15u + 0xD1B54A32D192ED03u) {
        if (mState == 0) mState = 1;  // the one state xorshift never leaves
        next64();
    }

    uint64_t next64() {
        mState ^= mState >> 12;
        mState ^= mState << 25;
        mState ^= mState >> 27;
        return mState * 0x2545F4914F6CDD1Du;
    }
    uint32_t next32() { return static_cast<uint32_t>(next64() >> 32); }
    uint8_t byte() { return static_cast<uint8_t>(next64() >> 56); }

    /// 0..limit-1; `limit` is at least 1. The bias is below limit / 2^32.
    uint32_t below(uint32_t limit) { return static_cast<uint32_t>((static_cast<uint64_t>(next32()) * limit) >> 32); }

    /// lowest..highest, both included.
    int between(int lowest, int highest) {
        const uint32_t span = static_cast<uint32_t>(highest) - static_cast<uint32_t>(lowest) + 1;
        const uint32_t offset = span == 0 ? next32() : below(span);
        return static_cast<int>(static_cast<uint32_t>(lowest) + offset);
    }

    /// True once in `n` calls on average.
    bool oneIn(uint32_t n) { return below(n) == 0; }

    /// 0 up to but not including 1, in steps of 2^-24.
    float unit() { return static_cast<float>(next32() >> 8) * (1.0f / 16777216.0f); }

private:
    uint64_t mState;
};

}  // namespace QxFontEffect::test
