#include "effect/kernel/sqrt_table.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace QxFontEffect {
namespace {

TEST(SqrtTable, EntriesReadBackAsTheRootPrintedWithThreeDecimals) {
    for (int i = 0; i < QX_INT_SQRT_TABLE_SIZE; ++i) {
        char text[32];
        std::snprintf(text, sizeof text, "%.3f", std::sqrt(static_cast<double>(i)));
        ASSERT_EQ(QX_INT_SQRT_TABLE[i], std::strtof(text, nullptr)) << i;
    }
    EXPECT_EQ(QX_INT_SQRT_TABLE[2], 1.414f);
    EXPECT_EQ(QX_INT_SQRT_TABLE[5489], 74.088f);
}

TEST(SqrtTable, RootsBehindTheTableAreRoundedAlike) {
    for (int squared : {0, 2, 5489, 5490, 5491, 40000, 1 << 20, 999999999, std::numeric_limits<int>::max()}) {
        const double thousandths = std::floor(std::sqrt(static_cast<double>(squared)) * 1000.0 + 0.5);
        EXPECT_EQ(roundedIntSqrt(squared), static_cast<float>(thousandths / 1000.0)) << squared;
    }
    EXPECT_EQ(roundedIntSqrt(-1), 0.0f);
}

TEST(Fsqrt, IsWithinTwoPerMilleOverTheWholeRange) {
    for (float x = 1e-37f; x < 1e37f; x *= 1.01f) ASSERT_NEAR(fsqrt(x) / std::sqrt(x), 1.0f, 0.002f) << x;
}

// Worked by hand from the bits: the guess for 4 is 0x3EF759DF, 0.48310754.
TEST(Fsqrt, GivesThesePinnedValuesAndIsDefinedForTheRest) {
    EXPECT_EQ(fsqrt(0.0f), 0.0f);
    const float guess = 0.48310754f;
    EXPECT_EQ(fsqrt(4.0f), 4.0f * (guess * (1.5f - 0.5f * 4.0f * guess * guess)));
    for (float x : {-1.0f, -0.0f, -1e38f, std::numeric_limits<float>::infinity(), std::nanf("")}) fsqrt(x);
}

}  // namespace
}  // namespace QxFontEffect
