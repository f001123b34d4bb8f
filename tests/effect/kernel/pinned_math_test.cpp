#include "effect/kernel/pinned_math.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "support/random.h"

namespace QxFontEffect {
namespace {

using test::Rng;

uint32_t bits(float value) {
    uint32_t word;
    std::memcpy(&word, &value, sizeof word);
    return word;
}

/// Distance in representable floats; 0 for equal bits.
int64_t ulps(float a, float b) {
    const auto ordered = [](float value) {
        const int64_t word = bits(value);
        return word < 0x80000000 ? word : 0x80000000 - word;
    };
    return std::abs(ordered(a) - ordered(b));
}

// What the C library may be off by. GNU's is the one the functions are pinned to.
#if defined(__GLIBC__)
constexpr int64_t kLibraryUlps = 0;
#else
constexpr int64_t kLibraryUlps = 1;
#endif

TEST(PinnedMath, AnglesInEveryWayTheEffectsTurnThemIntoRadians) {
    int64_t worst[3] = {};
    for (int eighths = -720 * 8; eighths <= 720 * 8; ++eighths) {
        const float degrees = static_cast<float>(eighths) / 8.0f;
        for (const float x :
             {degrees * 3.14159f / 180.0f, (180.0f - degrees) * 3.14159f / 180.0f, degrees * -0.01745328f}) {
            worst[0] = std::max(worst[0], ulps(pinnedSin(x), std::sin(x)));
            worst[1] = std::max(worst[1], ulps(pinnedCos(x), std::cos(x)));
            worst[2] = std::max(worst[2], ulps(pinnedTan(x), std::tan(x)));
        }
    }
    for (const int64_t difference : worst) EXPECT_LE(difference, kLibraryUlps);
}

TEST(PinnedMath, FollowsTheTrueValueOverAllFloats) {
    Rng rng(20240607);
    for (int i = 0; i < 200000; ++i) {
        uint32_t word = rng.next32();
        float x;
        std::memcpy(&x, &word, sizeof x);
        if (!std::isfinite(x)) continue;
        const double exact = x;
        EXPECT_LE(ulps(pinnedSin(x), static_cast<float>(std::sin(exact))), 1) << x;
        EXPECT_LE(ulps(pinnedCos(x), static_cast<float>(std::cos(exact))), 1) << x;
        EXPECT_LE(ulps(pinnedTan(x), static_cast<float>(std::tan(exact))), 1) << x;
        EXPECT_LE(ulps(pinnedExp(x), static_cast<float>(std::exp(exact))), 0) << x;
    }
}

TEST(PinnedMath, EndsOfTheRange) {
    const float infinity = std::numeric_limits<float>::infinity();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(pinnedExp(0.0f), 1.0f);
    EXPECT_EQ(pinnedExp(-infinity), 0.0f);
    EXPECT_EQ(pinnedExp(infinity), infinity);
    EXPECT_EQ(pinnedExp(-1e30f), 0.0f);
    EXPECT_EQ(pinnedExp(-103.0f), std::exp(-103.0f));
    EXPECT_EQ(bits(pinnedSin(-0.0f)), bits(-0.0f));
    for (const float x : {infinity, -infinity, nan})
        for (float (*function)(float) : {pinnedSin, pinnedCos, pinnedTan}) EXPECT_TRUE(std::isnan(function(x)));
    EXPECT_TRUE(std::isnan(pinnedExp(nan)));
}

}  // namespace
}  // namespace QxFontEffect
