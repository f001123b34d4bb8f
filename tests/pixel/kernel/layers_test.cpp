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

TEST(Layers, TextAlphasOutsideAByteFollowTheSameFormula) {
    Rng rng(4);
    const std::vector<uint8_t> start = randomBytes(rng, 4000);
    for (int textAlpha : {-300, -256, -255, -2, -1, 0, 1, 255, 256, 257, 1000, 1 << 22}) {
        std::vector<uint8_t> wanted = start, got = start;
        for (size_t i = 0; i < start.size(); i += 4) reference::unpremultiply(textAlpha, &wanted[i]);
        kernel::unpremultiplyRow(textAlpha, got.data(), 1000);
        EXPECT_EQ(wanted, got) << "text alpha " << textAlpha;
    }
    // -1: what a picture is composed with when no text colour was ever given.
    std::vector<uint8_t> untold = {255, 128, 0, 200}, extreme = start;
    kernel::unpremultiplyRow(-1, untold.data(), 1);
    EXPECT_EQ((std::vector<uint8_t>{0, 0, 0, 255}), untold);
    for (int textAlpha : {INT_MIN, INT_MAX}) kernel::unpremultiplyRow(textAlpha, extreme.data(), 1000);
}

TEST(Layers, ComposingInOneWalkEqualsTheTwoSteps) {
    Rng rng(3);
    for (size_t count : {1u, 2047u, 2048u, 2049u, 5000u}) {
        const std::vector<uint8_t> layer = randomBytes(rng, 4 * count), start = randomBytes(rng, 4 * count);
        const std::vector<uint8_t> coverage = randomBytes(rng, count);
        const ptrdiff_t pixels = static_cast<ptrdiff_t>(count);
        std::vector<uint8_t> wanted = start, got = start, wantedAlone = start, alone = start;
        for (size_t i = 0; i < count; ++i) {
            reference::compositeLayer(&layer[4 * i], coverage[i], &wanted[4 * i]);
            reference::unpremultiply(200, &wanted[4 * i]);
            reference::unpremultiply(200, &wantedAlone[4 * i]);
        }
        kernel::composeLayers(layer.data(), coverage.data(), 200, got.data(), pixels);
        EXPECT_EQ(wanted, got) << count;
        kernel::composeLayers(nullptr, coverage.data(), 200, alone.data(), pixels);
        EXPECT_EQ(wantedAlone, alone) << count;
    }
}

}  // namespace
}  // namespace QxFontEffect::test
