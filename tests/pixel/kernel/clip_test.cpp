#include "pixel/kernel/clip.h"

#include <gtest/gtest.h>

#include <climits>

namespace QxFontEffect::kernel {
namespace {

TEST(Clip, IsEmptyJustOutsideAndForExtremeArguments) {
    const struct {
        int64_t x, y, width, height;
    } outside[] = {
        {-4, 0, 4, 4},
        {10, 0, 4, 4},
        {0, -4, 4, 4},
        {0, 8, 4, 4},
        {0, 0, 0, 4},
        {0, 0, 4, -1},
        {INT_MAX, INT_MAX, INT_MAX, INT_MAX},
        {INT_MIN, INT_MIN, INT_MAX, INT_MAX},
        {3, 3, INT_MIN, INT_MIN},
        {INT_MIN, 0, INT_MIN, 1},
    };
    for (const auto& c : outside)
        EXPECT_TRUE(clipToPlane(c.x, c.y, c.width, c.height, 10, 8).empty()) << c.x << ", " << c.y;

    EXPECT_EQ(INT_MAX - 1, clipToPlane(-1, 0, INT_MAX, 1, UINT32_MAX, 1).width);
    EXPECT_EQ(10, clipToPlane(-5, 0, INT_MAX, 1, 10, 8).width);
}

}  // namespace
}  // namespace QxFontEffect::kernel
