#include "sheet.h"

#include <gtest/gtest.h>

namespace contactsheet {
namespace {

using qxrender::Picture;

Picture filled(int width, int height, uint32_t color) {
    Picture picture;
    picture.width = width;
    picture.height = height;
    picture.pixels.assign(static_cast<size_t>(width) * height, color);
    return picture;
}

TEST(Sheet, ShrinksByAveragingAndNeverEnlarges) {
    Picture checks = filled(4, 2, 0xFF000000u);
    checks.at(0, 0) = checks.at(1, 1) = 0xFFFFFFFFu;
    checks.at(2, 0) = checks.at(3, 0) = checks.at(2, 1) = checks.at(3, 1) = 0x00FF0000u;
    const Picture small = shrunkToFit(checks, 2, 100);
    ASSERT_EQ(small.width, 2);
    ASSERT_EQ(small.height, 1);
    EXPECT_EQ(small.at(0, 0), 0xFF808080u);
    EXPECT_EQ(small.at(1, 0), 0u);
    EXPECT_EQ(shrunkToFit(checks, 100, 100).pixels, checks.pixels);
}

TEST(Sheet, PutsPicturesIntoTheMiddleOfTheirCells) {
    const Layout layout{2, 10, 10, 3, 0xFFEEEEEEu};
    const Picture sheet =
        makeSheet({filled(4, 6, 0xFF0000FFu), filled(10, 2, 0xFF00FF00u), filled(2, 2, 0xFFFF0000u)}, layout);
    EXPECT_EQ(sheet.width, 3 + 2 * (10 + 3));
    EXPECT_EQ(sheet.height, 3 + (6 + 3) + (2 + 3));
    EXPECT_EQ(sheet.at(3 + 3, 3), 0xFF0000FFu);
    EXPECT_EQ(sheet.at(3 + 2, 3), 0xFFEEEEEEu);
    EXPECT_EQ(sheet.at(16, 3 + 2), 0xFF00FF00u);
    EXPECT_EQ(sheet.at(3 + 4, 3 + 6 + 3), 0xFFFF0000u);
}

}  // namespace
}  // namespace contactsheet
