#include "pixel/kernel/blend.h"

#include <gtest/gtest.h>

#include <vector>

#include "pixel/reference/pixel_reference.h"
#include "support/random.h"

namespace QxFontEffect::test {
namespace {

struct MaskBlend {
    const char* name;
    void (*row)(const uint8_t* mask, uint32_t color, uint8_t* dst, ptrdiff_t count);
    void (*pixel)(uint8_t mask, uint32_t color, uint8_t* dst);
};

const MaskBlend kMaskBlends[] = {
    {"source over", kernel::blendSrcOverRow8To32, reference::srcOver8To32},
    {"destination over", kernel::blendDstOverRow8To32, reference::dstOver8To32},
    {"destination over, mask value ignored", kernel::blendDstOverNsaRow8To32, reference::dstOverNsa8To32},
    {"destination over, scaled by the mask", kernel::blendDstOverSaRow8To32, reference::dstOverSa8To32},
    {"plain draw", kernel::drawRow8To32, reference::draw8To32},
};

struct ColorBlend {
    const char* name;
    void (*row)(const uint8_t* src, uint8_t* dst, ptrdiff_t count);
    void (*pixel)(const uint8_t* src, uint8_t* dst);
};

const ColorBlend kColorBlends[] = {
    {"destination over", kernel::blendDstOverRow32, reference::dstOver32To32},
    {"destination over, red first", kernel::blendDstOverRow32Rgba, reference::dstOver32To32Rgba},
    {"source over", kernel::blendSrcOverRow32, reference::srcOver32To32},
};

// One row holds every pair of a mask (or source alpha), the high byte of the index, and a destination alpha, the low
// byte. 86 rounds of three channels bring every channel value of the destination to each of the pairs.
constexpr int kPairs = 65536;
constexpr int kRounds = 86;

std::vector<uint8_t> destinationOfRound(int round) {
    std::vector<uint8_t> row;
    for (int i = 0; i < kPairs; ++i)
        for (int byte : {3 * round, 3 * round + 1, 3 * round + 2, i}) row.push_back(static_cast<uint8_t>(byte));
    return row;
}

/// Every channel value of the source comes up as well, with full, empty and arbitrary alphas, premultiplied or not.
uint32_t colorOfRound(int round, Rng& rng) {
    const uint32_t alphas[] = {255, 0, 128, 1, rng.byte()};
    const uint32_t first = static_cast<uint32_t>(3 * round);
    return (alphas[round % 5] << 24) | ((first & 255) << 16) | (((first + 86) & 255) << 8) | ((first + 173) & 255);
}

TEST(Blend, EveryMaskOnEveryAlphaAndChannelValueEqualsTheReference) {
    Rng rng(1);
    std::vector<uint8_t> mask;
    for (int i = 0; i < kPairs; ++i) mask.push_back(static_cast<uint8_t>(i >> 8));
    for (int round = 0; round < kRounds; ++round) {
        const uint32_t color = colorOfRound(round, rng);
        const std::vector<uint8_t> start = destinationOfRound(round);
        for (const MaskBlend& blend : kMaskBlends) {
            std::vector<uint8_t> wanted = start, got = start;
            for (size_t i = 0; i < kPairs; ++i) blend.pixel(mask[i], color, &wanted[4 * i]);
            blend.row(mask.data(), color, got.data(), kPairs);
            ASSERT_EQ(wanted, got) << blend.name << ", color " << std::hex << color;
        }
    }
}

TEST(Blend, EverySourceAlphaOnEveryAlphaAndChannelValueEqualsTheReference) {
    Rng rng(2);
    for (int round = 0; round < kRounds; ++round) {
        const uint32_t color = colorOfRound(round, rng);
        std::vector<uint8_t> source;
        for (uint32_t i = 0; i < kPairs; ++i)
            for (uint32_t byte : {color, color >> 8, color >> 16, i >> 8}) source.push_back(static_cast<uint8_t>(byte));
        const std::vector<uint8_t> start = destinationOfRound(round);
        for (const ColorBlend& blend : kColorBlends) {
            std::vector<uint8_t> wanted = start, got = start;
            for (size_t i = 0; i < kPairs; ++i) blend.pixel(&source[4 * i], &wanted[4 * i]);
            blend.row(source.data(), got.data(), kPairs);
            ASSERT_EQ(wanted, got) << blend.name << ", round " << round;
        }
    }
}

TEST(Blend, PlainDrawIntoCoverageKeepsTheLargerByte) {
    std::vector<uint8_t> mask, coverage, wanted;
    for (int i = 0; i < kPairs; ++i) {
        mask.push_back(static_cast<uint8_t>(i >> 8));
        coverage.push_back(static_cast<uint8_t>(i));
        wanted.push_back(std::max(mask.back(), coverage.back()));
    }
    kernel::drawRow8To8(mask.data(), coverage.data(), kPairs);
    EXPECT_EQ(wanted, coverage);
}

}  // namespace
}  // namespace QxFontEffect::test
