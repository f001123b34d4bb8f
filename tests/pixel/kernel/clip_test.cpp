#include "pixel/kernel/clip.h"

#include <gtest/gtest.h>

#include <climits>

namespace QxFontEffect::kernel {
namespace {

TEST(Clip, KeepsWhatLiesInsideOnEverySide) {
    const struct {
        int64_t x, y, width, height;                            // a source on a destination of 10 x 8
        int64_t srcX, srcY, dstX, dstY, seenWidth, seenHeight;  // what is seen of it
    } cases[] = {
        {2, 3, 4, 5, 0, 0, 2, 3, 4, 5},       // inside, touching the last row
        {-3, 1, 5, 2, 3, 0, 0, 1, 2, 2},      // over the left edge
        {1, -2, 2, 5, 0, 2, 1, 0, 2, 3},      // over the top
        {7, 0, 5, 1, 0, 0, 7, 0, 3, 1},       // over the right edge
        {0, 6, 1, 4, 0, 0, 0, 6, 1, 2},       // over the bottom
        {-2, -1, 30, 30, 2, 1, 0, 0, 10, 8},  // larger on all sides
        {9, 7, 1, 1, 0, 0, 9, 7, 1, 1},       // the last pixel
        {INT_MIN, 0, INT_MAX, 1, -1LL * INT_MIN, 0, 0, 0, -1, 1},
        {-5, 0, INT_MAX, 1, 5, 0, 0, 0, 10, 1},
    };
    for (const auto& c : cases) {
        const ClippedBox box = clipToPlane(c.x, c.y, c.width, c.height, 10, 8);
        SCOPED_TRACE(testing::Message() << "source " << c.width << " x " << c.height << " at " << c.x << ", " << c.y);
        EXPECT_EQ(c.srcX, box.srcX);
        EXPECT_EQ(c.srcY, box.srcY);
        EXPECT_EQ(c.dstX, box.dstX);
        EXPECT_EQ(c.dstY, box.dstY);
        EXPECT_EQ(c.seenWidth, box.width);
        EXPECT_EQ(c.seenHeight, box.height);
    }
}

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

    const ClippedBox whole = clipToPlane(-1, 0, INT_MAX, 1, UINT32_MAX, 1);
    EXPECT_EQ(INT_MAX - 1, whole.width);
}

}  // namespace
}  // namespace QxFontEffect::kernel
