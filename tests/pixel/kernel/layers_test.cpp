#include "pixel/kernel/layers.h"

#include <gtest/gtest.h>

#include <climits>
#include <vector>

#include "pixel/reference/pixel_reference.h"
#include "support/random.h"

namespace QxFontEffect::test {
namespace {

std::vector<uint8_t> randomBytes(Rng& rng, size_t count) {
    std::vector<uint8_t> bytes(count);
    for (uint8_t& byte : bytes) byte = rng.byte();
    return bytes;
}

TEST(Layers, EveryCoverageOfEveryPairOfBytesEqualsTheReference) {
    constexpr size_t kPixels = 65536 / 4;
    std::vector<uint8_t> layer(65536), start(65536);
    for (size_t i = 0; i < 65536; ++i) {
        layer[i] = static_cast<uint8_t>(i >> 8);
        start[i] = static_cast<uint8_t>(i);
    }
    for (int c = 0; c < 256; ++c) {
        const std::vector<uint8_t> coverage(kPixels, static_cast<uint8_t>(c));
        std::vector<uint8_t> wanted = start, got = start;
        for (size_t i = 0; i < kPixels; ++i) reference::compositeLayer(&layer[4 * i], coverage[i], &wanted[4 * i]);
        kernel::compositeLayerRow(layer.data(), coverage.data(), got.data(), kPixels);
        ASSERT_EQ(wanted, got) << "coverage " << c;
    }
}

/// Every alpha with every channel value, one row: three values a pixel.
std::vector<uint8_t> everyAlphaAndValue() {
    std::vector<uint8_t> row;
    for (int alpha = 0; alpha < 256; ++alpha)
        for (int value = 0; value < 256; value += 3)
            for (int byte : {value, value + 1, value + 2, alpha}) row.push_back(static_cast<uint8_t>(byte));
    return row;
}

TEST(Layers, UnpremultiplyEqualsTheReferenceForEveryTextAlpha) {
    const std::vector<uint8_t> start = everyAlphaAndValue();
    for (int textAlpha = -3; textAlpha <= 300; ++textAlpha) {
        std::vector<uint8_t> wanted = start, got = start;
        for (size_t i = 0; i < start.size(); i += 4) reference::unpremultiply(textAlpha, &wanted[i]);
        kernel::unpremultiplyRow(textAlpha, got.data(), static_cast<ptrdiff_t>(start.size() / 4));
        ASSERT_EQ(wanted, got) << "text alpha " << textAlpha;
    }
    std::vector<uint8_t> extreme = start;
    kernel::unpremultiplyRow(INT_MAX, extreme.data(), static_cast<ptrdiff_t>(start.size() / 4));
    kernel::unpremultiplyRow(INT_MIN, extreme.data(), static_cast<ptrdiff_t>(start.size() / 4));
}

TEST(Layers, OpaquePixelsUnderOpaqueTextStayAndPixelsWithoutTextAlphaTurnBlank) {
    uint8_t opaque[] = {255, 128, 0, 255};
    kernel::unpremultiplyRow(255, opaque, 1);
    EXPECT_EQ(std::vector<uint8_t>({255, 128, 0, 255}), std::vector<uint8_t>(opaque, opaque + 4));

    // -1: what a picture is composed with when no text colour was ever given.
    uint8_t untold[] = {255, 128, 0, 200};
    kernel::unpremultiplyRow(-1, untold, 1);
    EXPECT_EQ(std::vector<uint8_t>({0, 0, 0, 255}), std::vector<uint8_t>(untold, untold + 4));
}

TEST(Layers, ComposingInOneWalkEqualsTheTwoSteps) {
    Rng rng(3);
    for (size_t count : {1u, 2047u, 2048u, 2049u, 5000u}) {
        const std::vector<uint8_t> layer = randomBytes(rng, 4 * count), start = randomBytes(rng, 4 * count);
        const std::vector<uint8_t> coverage = randomBytes(rng, count);
        const ptrdiff_t pixels = static_cast<ptrdiff_t>(count);
        std::vector<uint8_t> wanted = start, got = start, alone = start, wantedAlone = start;
        kernel::compositeLayerRow(layer.data(), coverage.data(), wanted.data(), pixels);
        kernel::unpremultiplyRow(200, wanted.data(), pixels);
        kernel::composeLayers(layer.data(), coverage.data(), 200, got.data(), pixels);
        EXPECT_EQ(wanted, got) << count;
        kernel::unpremultiplyRow(200, wantedAlone.data(), pixels);
        kernel::composeLayers(nullptr, coverage.data(), 200, alone.data(), pixels);
        EXPECT_EQ(wantedAlone, alone) << count;
    }
}

}  // namespace
}  // namespace QxFontEffect::test
