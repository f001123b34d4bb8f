#include "pixel/QxBitmap.h"

#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <memory>
#include <new>
#include <numeric>
#include <vector>

#include "support/failing_alloc.h"

namespace QxFontEffect::test {
namespace {

size_t bytesOf(const QxBitmap& bitmap) {
    return static_cast<size_t>(bitmap.width) * bitmap.height * bitmap.bytesPerPixel;
}

std::vector<uint8_t> contents(const QxBitmap& bitmap) {
    return std::vector<uint8_t>(bitmap.pixels, bitmap.pixels + bytesOf(bitmap));
}

/// Bytes 0, 1, 2, ... so that a pixel's value says where it came from.
QxBitmap counting(unsigned width, unsigned height, unsigned depth) {
    std::vector<uint8_t> bytes(static_cast<size_t>(width) * height * depth);
    std::iota(bytes.begin(), bytes.end(), uint8_t{0});
    return QxBitmap(width, height, bytes.data(), depth);
}

TEST(Bitmap, StartsZeroedWithTheFormatOfItsDepth) {
    const QxBitmap empty;
    EXPECT_EQ(4u, empty.format);
    EXPECT_EQ(0u, empty.width + empty.height + empty.bytesPerPixel);
    EXPECT_EQ(nullptr, empty.pixels);

    for (unsigned depth : {1u, 3u, 4u}) {
        const QxBitmap bitmap(10, 5, depth);
        EXPECT_EQ(depth == 4 ? 1u : 2u, bitmap.format);
        EXPECT_EQ(std::vector<uint8_t>(50 * depth, 0), contents(bitmap));
    }
    EXPECT_EQ(std::vector<uint8_t>(6, 0), contents(QxBitmap(3, 2, nullptr, 1)));
}

TEST(Bitmap, CopiesOwnTheirBytes) {
    std::vector<uint8_t> bytes = {1, 2, 3, 4, 5, 6, 7, 8};
    QxBitmap first(2, 1, bytes.data(), 4);
    bytes.assign(8, 99);
    const QxBitmap second(first);
    QxBitmap third(7, 7, 1);
    third = first;
    first.pixels[0] = 77;
    const std::vector<uint8_t> wanted = {1, 2, 3, 4, 5, 6, 7, 8};
    for (const QxBitmap* copy : {&second, static_cast<const QxBitmap*>(&third)}) {
        EXPECT_EQ(wanted, contents(*copy));
        EXPECT_EQ(2u, copy->width);
        EXPECT_EQ(1u, copy->format);
    }

    QxBitmap& alias = third;
    const uint8_t* before = third.pixels;
    third = alias;
    EXPECT_EQ(before, third.pixels);
    EXPECT_EQ(wanted, contents(third));

    third = QxBitmap();
    EXPECT_EQ(nullptr, third.pixels);
    EXPECT_EQ(4u, third.format);
}

TEST(Bitmap, WhoseSizeDoesNotFit32BitsHasNoPixels) {
    const struct {
        unsigned width, height, depth;
    } sizes[] = {{65536, 65536, 1}, {32768, 32768, 4}, {UINT_MAX, UINT_MAX, UINT_MAX}, {UINT_MAX, 1, 4}};
    uint8_t byte = 0;
    for (const auto& s : sizes) {
        QxBitmap big(s.width, s.height, s.depth);
        EXPECT_EQ(nullptr, big.pixels);
        EXPECT_EQ(s.width, big.width);
        EXPECT_EQ(nullptr, QxBitmap(s.width, s.height, &byte, s.depth).pixels) << "data must not be read";
        const QxBitmap copy(big);
        EXPECT_EQ(nullptr, copy.pixels);
        EXPECT_EQ(s.height, copy.height);
        QxBitmap assigned(2, 2, 1);
        assigned = big;
        EXPECT_EQ(nullptr, assigned.pixels);
        QxRect rect(0, 0, 3, 3);
        const QxBitmap cut(big, &rect);
        EXPECT_EQ(3u, cut.width);
        if (s.depth == UINT_MAX)
            EXPECT_EQ(nullptr, cut.pixels);
        else
            EXPECT_EQ(std::vector<uint8_t>(9 * s.depth, 0), contents(cut));
    }
}

TEST(Bitmap, KeepsItsSizeAndHasNoPixelsWhenMemoryIsShort) {
    const QxBitmap source = counting(4, 4, 1);
    QxRect rect(1, 1, 3, 3);
    QxBitmap assigned(2, 2, 1);
    const std::function<QxBitmap*()> makers[] = {
        [] { return new (std::nothrow) QxBitmap(4, 4, 4); },
        [&] { return new (std::nothrow) QxBitmap(4, 4, source.pixels, 1); },
        [&] { return new (std::nothrow) QxBitmap(source); },
        [&] { return new (std::nothrow) QxBitmap(source, &rect); },
    };
    for (const auto& make : makers) {
        std::unique_ptr<QxBitmap> bitmap;
        {
            FailingAlloc failing(1);  // request 0 is the bitmap itself
            bitmap.reset(make());
        }
        EXPECT_EQ(nullptr, bitmap->pixels);
        EXPECT_LE(2u, bitmap->width);
    }
    {
        FailingAlloc failing(0);
        assigned = source;
    }
    EXPECT_EQ(nullptr, assigned.pixels);
    EXPECT_EQ(4u, assigned.width);
}

TEST(Bitmap, CutsARectangleOutOfAnotherOne) {
    const QxBitmap source = counting(10, 6, 1);
    QxRect rect(2, 1, 5, 3);
    const QxBitmap cut(source, &rect);
    EXPECT_EQ(3u, cut.width);
    EXPECT_EQ(2u, cut.height);
    EXPECT_EQ((std::vector<uint8_t>{12, 13, 14, 22, 23, 24}), contents(cut));

    // Colour bitmaps are cut at byte strides too: only the first quarter gets bytes.
    const QxBitmap colors = counting(4, 4, 4);
    QxRect corner(1, 1, 3, 3);
    const QxBitmap quarter(colors, &corner);
    EXPECT_EQ(1u, quarter.format);
    EXPECT_EQ((std::vector<uint8_t>{5, 6, 9, 10, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}), contents(quarter));
}

TEST(Bitmap, CutsWithReversedOrStrayRectanglesStayInsideTheSource) {
    const QxBitmap source = counting(4, 3, 1);
    const struct {
        QxRect rect;
        uint32_t width, height;
    } cases[] = {
        {{3, 2, 1, 0}, 2, 2},
        {{1, 1, 1, 3}, 0, 2},
        {{0, 2, 2, 0}, 2, 2},
        {{2, 0, 0, 2}, 2, 2},
        {{-50, 0, -40, 2}, 10, 2},
        {{0, 90, 2, 93}, 2, 3},
        {{INT_MAX - 2, 0, INT_MAX, 1}, 2, 1},
        {{INT_MIN, 0, INT_MIN + 3, 2}, 3, 2},
    };
    for (const auto& c : cases) {
        QxRect rect = c.rect;
        const QxBitmap cut(source, &rect);
        EXPECT_EQ(c.width, cut.width) << rect.left;
        EXPECT_EQ(c.height, cut.height) << rect.left;
        EXPECT_NE(nullptr, cut.pixels);
    }
    QxRect around(-1, -1, 5, 4);
    const std::vector<uint8_t> bytes = contents(QxBitmap(source, &around));
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 4; ++x)
            EXPECT_EQ(source.pixels[y * 4 + x], bytes[static_cast<size_t>((y + 1) * 6 + x + 1)]);

    // Sides whose difference does not fit 32 bits, no rectangle, no pixels to cut from.
    for (QxRect rect : {QxRect(INT_MIN, INT_MIN, INT_MAX, INT_MAX), QxRect(INT_MAX, 0, INT_MIN, 1),
                        QxRect(INT_MIN, 0, 0, 2), QxRect(0, INT_MIN, 2, INT_MAX)})
        QxBitmap(source, &rect);
    EXPECT_EQ(nullptr, QxBitmap(source, nullptr).pixels);
    EXPECT_EQ(2u, QxBitmap(source, nullptr).format);
    QxRect rect(0, 0, 2, 2);
    EXPECT_EQ(0u, QxBitmap(QxBitmap(), &rect).bytesPerPixel);
}

}  // namespace
}  // namespace QxFontEffect::test
