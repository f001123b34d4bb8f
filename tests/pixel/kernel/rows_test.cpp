#include "pixel/kernel/rows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "pixel/kernel/cpu.h"
#include "pixel/reference/pixel_reference.h"
#include "support/planes.h"

namespace QxFontEffect::test {
namespace {

using kernel::MaskBlendRow;
using kernel::PixelBlendRow;
using kernel::PixelRows;

/// Every form of the rows that this processor runs.
std::vector<const PixelRows*> formsHere() {
    std::vector<const PixelRows*> forms = {&kernel::kPortableRows};
    if (kernel::kAvx2Rows != nullptr && kernel::cpuHasAvx2()) forms.push_back(kernel::kAvx2Rows);
    return forms;
}

struct MaskBlend {
    const char* name;
    MaskBlendRow PixelRows::*row;
    void (*pixel)(uint8_t mask, uint32_t color, uint8_t* dst);
};

const MaskBlend kMaskBlends[] = {
    {"srcOver8", &PixelRows::srcOver8, reference::srcOver8To32},
    {"dstOver8", &PixelRows::dstOver8, reference::dstOver8To32},
    {"dstOverNsa8", &PixelRows::dstOverNsa8, reference::dstOverNsa8To32},
    {"dstOverSa8", &PixelRows::dstOverSa8, reference::dstOverSa8To32},
    {"draw8", &PixelRows::draw8, reference::draw8To32},
};

struct PixelBlend {
    const char* name;
    PixelBlendRow PixelRows::*row;
    void (*pixel)(const uint8_t* src, uint8_t* dst);
};

const PixelBlend kPixelBlends[] = {
    {"dstOver32", &PixelRows::dstOver32, reference::dstOver32To32},
    {"dstOver32Rgba", &PixelRows::dstOver32Rgba, reference::dstOver32To32Rgba},
    {"srcOver32", &PixelRows::srcOver32, reference::srcOver32To32},
};

// One row holds every pair of a mask (or source alpha), the high byte of the index, and a destination alpha, the low
// byte. 86 rounds of three channels bring every channel value of the destination to each of the pairs.
constexpr int kPairs = 65536;
constexpr int kRounds = 86;
#if defined(__SANITIZE_ADDRESS__)
constexpr int kRoundStep = 5;  // a sample: unoptimised code under sanitizers takes minutes for all rounds
#else
constexpr int kRoundStep = 1;
#endif

std::vector<uint8_t> destinationOfRound(int round) {
    std::vector<uint8_t> row;
    for (int i = 0; i < kPairs; ++i)
        for (int byte : {3 * round, 3 * round + 1, 3 * round + 2, i}) row.push_back(static_cast<uint8_t>(byte));
    return row;
}

/// Every channel value of the source comes up as well, with full, empty and arbitrary alphas, premultiplied or not.
uint32_t colorOfRound(int round, Rng& rng) {
    const uint32_t alphas[] = {255, 0, 1, rng.byte()};
    const uint32_t first = static_cast<uint32_t>(3 * round);
    return (alphas[round % 4] << 24) | ((first & 255) << 16) | (((first + 86) & 255) << 8) | ((first + 173) & 255);
}

TEST(PixelRows, EveryMaskOnEveryAlphaAndChannelValueEqualsTheReference) {
    Rng rng(1);
    std::vector<uint8_t> mask;
    for (int i = 0; i < kPairs; ++i) mask.push_back(static_cast<uint8_t>(i >> 8));
    for (int round = 0; round < kRounds; round += kRoundStep) {
        const uint32_t color = colorOfRound(round, rng);
        const std::vector<uint8_t> start = destinationOfRound(round);
        for (const MaskBlend& blend : kMaskBlends) {
            std::vector<uint8_t> wanted = start;
            for (size_t i = 0; i < kPairs; ++i) blend.pixel(mask[i], color, &wanted[4 * i]);
            for (const PixelRows* form : formsHere()) {
                std::vector<uint8_t> got = start;
                (form->*blend.row)(mask.data(), color, got.data(), kPairs);
                ASSERT_EQ(wanted, got) << blend.name << ", " << form->name << ", color " << std::hex << color;
            }
        }
    }
}

TEST(PixelRows, EveryMaskOfEveryChannelValueOnNothingEqualsTheReference) {
    // Whole blocks of each mask, and some that hold two of them.
    Rng rng(3);
    std::vector<uint8_t> mask;
    for (int i = 0; i < 256 * 40; ++i) mask.push_back(static_cast<uint8_t>(i / 40));
    for (int round = 0; round < kRounds; ++round) {
        const uint32_t color = colorOfRound(round, rng);
        for (const MaskBlend& blend : kMaskBlends) {
            std::vector<uint8_t> wanted(4 * mask.size());
            for (size_t i = 0; i < mask.size(); ++i) blend.pixel(mask[i], color, &wanted[4 * i]);
            for (const PixelRows* form : formsHere()) {
                std::vector<uint8_t> got(4 * mask.size());
                (form->*blend.row)(mask.data(), color, got.data(), static_cast<ptrdiff_t>(mask.size()));
                ASSERT_EQ(wanted, got) << blend.name << ", " << form->name << ", color " << std::hex << color;
            }
        }
    }
}

TEST(PixelRows, EverySourceAlphaOnEveryAlphaAndChannelValueEqualsTheReference) {
    Rng rng(2);
    for (int round = 0; round < kRounds; round += kRoundStep) {
        const uint32_t color = colorOfRound(round, rng);
        std::vector<uint8_t> source;
        for (uint32_t i = 0; i < kPairs; ++i)
            for (uint32_t byte : {color, color >> 8, color >> 16, i >> 8}) source.push_back(static_cast<uint8_t>(byte));
        const std::vector<uint8_t> start = destinationOfRound(round);
        for (const PixelBlend& blend : kPixelBlends) {
            std::vector<uint8_t> wanted = start;
            for (size_t i = 0; i < kPairs; ++i) blend.pixel(&source[4 * i], &wanted[4 * i]);
            for (const PixelRows* form : formsHere()) {
                std::vector<uint8_t> got = start;
                (form->*blend.row)(source.data(), got.data(), kPairs);
                ASSERT_EQ(wanted, got) << blend.name << ", " << form->name << ", round " << round;
            }
        }
    }
}

TEST(PixelRows, EveryCoverageOfEveryPairOfBytesEqualsTheReference) {
    constexpr size_t kPixels = kPairs / 4;
    std::vector<uint8_t> layer, start;
    for (int i = 0; i < kPairs; ++i) {
        layer.push_back(static_cast<uint8_t>(i >> 8));
        start.push_back(static_cast<uint8_t>(i));
    }
    for (int c = 0; c < 256; ++c) {
        // Two coverages by turns, so that no block of pixels is all of one.
        std::vector<uint8_t> coverage(kPixels, static_cast<uint8_t>(c)), wanted = start;
        for (size_t i = 0; i < kPixels; i += 7) coverage[i] = static_cast<uint8_t>(c ^ 85);
        for (size_t i = 0; i < kPixels; ++i) reference::compositeLayer(&layer[4 * i], coverage[i], &wanted[4 * i]);
        for (const PixelRows* form : formsHere()) {
            std::vector<uint8_t> got = start;
            form->compositeLayer(layer.data(), coverage.data(), got.data(), kPixels);
            ASSERT_EQ(wanted, got) << form->name << ", coverage " << c;
        }
    }
}

TEST(PixelRows, EveryQuotientOfUnpremultipliedColorEqualsTheReference) {
    std::vector<uint8_t> start;
    for (int alpha = 0; alpha < 256; ++alpha)
        for (int value = 0; value < 256; value += 3)
            for (int byte : {value, value + 1, value + 2, alpha}) start.push_back(static_cast<uint8_t>(byte));
    for (int textAlpha = 0; textAlpha < 256; ++textAlpha) {
        std::vector<uint8_t> wanted = start;
        for (size_t i = 0; i < start.size(); i += 4) reference::unpremultiply(textAlpha, &wanted[i]);
        for (const PixelRows* form : formsHere()) {
            std::vector<uint8_t> got = start;
            form->unpremultiply(textAlpha, got.data(), static_cast<ptrdiff_t>(start.size() / 4));
            ASSERT_EQ(wanted, got) << form->name << ", text alpha " << textAlpha;
        }
    }
}

/// Runs of blank, opaque and arbitrary pixels, some with colour but no alpha, at any width and alignment.
GuardedPlane8 randomPixels(Rng& rng, int count, int shift) {
    GuardedPlane8 row = randomPlane8(rng, 4 * count, 1, 5, shift);
    for (int x = 0, end = 0, kind = 0; x < count; ++x) {
        if (x == end) end += rng.between(1, 40), kind = static_cast<int>(rng.below(5));
        uint8_t* pixel = &row.at(4 * x, 0);
        if (kind == 0) std::fill_n(pixel, 4, uint8_t{0});
        if (kind == 1 || kind == 2) pixel[3] = kind == 1 ? 255 : 0;
    }
    return row;
}

GuardedPlane8 randomMask(Rng& rng, int count, int shift) {
    GuardedPlane8 row = randomPlane8(rng, count, 1, 5, shift);
    for (int x = 0, end = 0, kind = 0; x < count; ++x) {
        if (x == end) end += rng.between(1, 40), kind = static_cast<int>(rng.below(4));
        if (kind < 2) row.at(x, 0) = kind == 0 ? 0 : 255;
    }
    return row;
}

/// Draws all kernels in one row, over one another or on fresh ground, once by the reference and once by `form`.
void compareStack(const PixelRows& form, int width, uint64_t seed) {
    Rng rng(seed);
    const auto shift = [&rng] { return static_cast<int>(rng.below(16)); };
    GuardedPlane8 got = randomPixels(rng, width, shift());
    GuardedPlane8 wanted(got);
    const auto bytes = [](GuardedPlane8& row) { return row.view().data; };
    const auto check = [&](const char* step) {
        ASSERT_TRUE(samePlane(wanted, got, form.name, step, "width", width, "seed", seed));
        if (rng.oneIn(2)) wanted = got = randomPixels(rng, width, shift());
    };
    for (const MaskBlend& blend : kMaskBlends) {
        GuardedPlane8 mask = randomMask(rng, width, shift());
        const uint32_t color = rng.next32();
        for (int x = 0; x < width; ++x) blend.pixel(mask.at(x, 0), color, &wanted.at(4 * x, 0));
        (form.*blend.row)(bytes(mask), color, bytes(got), width);
        ASSERT_NO_FATAL_FAILURE(check(blend.name));
    }
    for (const PixelBlend& blend : kPixelBlends) {
        GuardedPlane8 src = randomPixels(rng, width, shift());
        for (int x = 0; x < width; ++x) blend.pixel(&src.at(4 * x, 0), &wanted.at(4 * x, 0));
        (form.*blend.row)(bytes(src), bytes(got), width);
        ASSERT_NO_FATAL_FAILURE(check(blend.name));
    }
    GuardedPlane8 layer = randomPixels(rng, width, shift()), coverage = randomMask(rng, width, shift());
    for (int x = 0; x < width; ++x)
        reference::compositeLayer(&layer.at(4 * x, 0), coverage.at(x, 0), &wanted.at(4 * x, 0));
    form.compositeLayer(bytes(layer), bytes(coverage), bytes(got), width);
    ASSERT_NO_FATAL_FAILURE(check("compositeLayer"));
    const int textAlpha = rng.oneIn(2) ? 255 : rng.byte();
    for (int x = 0; x < width; ++x) reference::unpremultiply(textAlpha, &wanted.at(4 * x, 0));
    form.unpremultiply(textAlpha, bytes(got), width);
    ASSERT_NO_FATAL_FAILURE(check("unpremultiply"));
    for (int x = 0; x < width; ++x) std::swap(wanted.at(4 * x, 0), wanted.at(4 * x + 2, 0));
    form.swapRedBlue(bytes(got), width);
    ASSERT_NO_FATAL_FAILURE(check("swapRedBlue"));
    for (int x = 0; x < width; ++x) wanted.at(x, 0) = std::max(wanted.at(x, 0), layer.at(x, 0));
    form.maximum(bytes(layer), bytes(got), width);
    ASSERT_NO_FATAL_FAILURE(check("maximum"));
}

TEST(PixelRows, StacksOfAllKernelsEqualTheReferenceAtEveryWidthAndOffset) {
    for (const PixelRows* form : formsHere())
        for (int width = 0; width <= 67; ++width)
            for (uint64_t seed = 0; seed < 40; ++seed) ASSERT_NO_FATAL_FAILURE(compareStack(*form, width, seed));
}

}  // namespace
}  // namespace QxFontEffect::test
