#include "pixel/QxBlender.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <string>
#include <vector>

#include "pixel/reference/pixel_reference.h"
#include "support/captured_log.h"
#include "support/planes.h"

namespace QxFontEffect::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr unsigned kColor = 0xC0406080;

QxBitmap randomBitmap(Rng& rng, unsigned width, unsigned height, unsigned depth) {
    QxBitmap bitmap(width, height, depth);
    for (size_t i = 0; i < size_t{width} * height * depth; ++i) bitmap.pixels[i] = rng.oneIn(4) ? 0 : rng.byte();
    return bitmap;
}

std::vector<uint8_t> contents(const QxBitmap& bitmap) {
    return {bitmap.pixels, bitmap.pixels + size_t{bitmap.width} * bitmap.height * bitmap.bytesPerPixel};
}

/// A source and the place it goes to, all as the routines take them.
struct Source {
    int x, y;
    const QxBitmap* dst;
    unsigned char* bytes;
    int width, height, stride;

    unsigned* values() const { return reinterpret_cast<unsigned*>(bytes); }
};

struct Routine {
    const char* name;
    unsigned dstDepth, srcDepth;
    bool packed;  ///< takes no stride
    std::function<void(const Source&)> draw;
    std::function<void(const uint8_t* src, uint8_t* dst)> pixel;
};

/// Every routine, reached through its entry, with what it does to one pixel.
const std::vector<Routine>& routines() {
    using B = QxBlender;
    namespace R = reference;
    const auto mode8 = [](int mode) {
        return [mode](const Source& s) {
            B::drawBitmapBlend8(s.x, s.y, s.dst, s.bytes, s.width, s.height, s.stride, kColor, mode);
        };
    };
    const auto mode32 = [](int mode) {
        return [mode](const Source& s) {
            B::drawBitmapBlend32(s.x, s.y, s.dst, s.values(), s.width, s.height, s.stride, mode);
        };
    };
    const auto bytes32 = [](int order) {
        return [order](const Source& s) {
            B::drawBitmapBlend32(s.x, s.y, s.dst, s.bytes, s.width, s.height, s.stride, 5, order);
        };
    };
    const auto plain = [](const Source& s) { B::drawBitmap(s.x, s.y, s.dst, s.bytes, s.width, s.height, kColor); };
    const auto plainBitmap = [](const Source& s) {
        QxBitmap src(static_cast<unsigned>(s.width), static_cast<unsigned>(s.height), s.bytes, 1);
        B::drawBitmap(s.x, s.y, s.dst, &src, kColor);
    };
    const auto plain32 = [](const Source& s) {
        B::drawBitmap8To32(s.x, s.y, s.dst, s.bytes, s.width, s.height, kColor);
    };
    const auto plain8 = [](const Source& s) { B::drawBitmap8To8(s.x, s.y, s.dst, s.bytes, s.width, s.height); };

    const auto masked = [](void (*pixel)(uint8_t, uint32_t, uint8_t*)) {
        return [pixel](const uint8_t* m, uint8_t* d) { pixel(*m, kColor, d); };
    };
    const auto maximum = [](const uint8_t* m, uint8_t* d) { *d = std::max(*m, *d); };

    static const std::vector<Routine> all = {
        {"mode 1", 4, 1, false, mode8(1), masked(R::srcOver8To32)},
        {"mode 2", 4, 1, false, mode8(2), masked(R::dstOver8To32)},
        {"mode 3", 4, 1, false, mode8(3), masked(R::dstOverNsa8To32)},
        {"mode 7", 4, 1, false, mode8(7), masked(R::dstOverSa8To32)},
        {"values, mode 1", 4, 4, false, mode32(1), R::srcOver32To32},
        {"values, mode 2", 4, 4, false, mode32(2), R::dstOver32To32},
        {"bytes, order 0", 4, 4, false, bytes32(0), R::dstOver32To32Rgba},
        {"bytes, order 1", 4, 4, false, bytes32(1), R::dstOver32To32},
        {"drawBitmap on colour", 4, 1, true, plain, masked(R::draw8To32)},
        {"drawBitmap on coverage", 1, 1, true, plain, maximum},
        {"drawBitmap of a bitmap on colour", 4, 1, true, plainBitmap, masked(R::draw8To32)},
        {"drawBitmap of a bitmap on coverage", 1, 1, true, plainBitmap, maximum},
        {"drawBitmap8To32", 4, 1, true, plain32, masked(R::draw8To32)},
        {"drawBitmap8To8", 1, 1, true, plain8, maximum},
    };
    return all;
}

/// Asks each destination pixel which source pixel covers it.
QxBitmap drawnByReference(const Routine& routine, const Source& s) {
    QxBitmap dst(*s.dst);
    for (int64_t y = 0; y < dst.height; ++y)
        for (int64_t x = 0; x < dst.width; ++x) {
            const int64_t column = x - s.x, row = y - s.y;
            if (column < 0 || column >= s.width || row < 0 || row >= s.height) continue;
            routine.pixel(s.bytes + (row * s.stride + column) * routine.srcDepth,
                          dst.pixels + (y * dst.width + x) * routine.dstDepth);
        }
    return dst;
}

TEST(Blender, EveryRoutineDrawsTheClippedSourceAndNothingElse) {
    CapturedLog quiet;
    Rng rng(11);
    const struct {
        int x, y, width, height;  // on a destination of 10 x 8
    } places[] = {{0, 0, 10, 8},    {-3, 0, 6, 4}, {0, -2, 5, 5}, {7, 1, 6, 3},  {2, 5, 3, 9},
                  {-4, -4, 30, 20}, {9, 7, 4, 4},  {-5, 2, 5, 2}, {10, 0, 3, 3}, {0, -6, 4, 6},
                  {0, 8, 4, 4},     {3, 3, 0, 2},  {3, 3, 2, 0}};
    for (const Routine& routine : routines())
        for (const auto& place : places) {
            const int stride = place.width + (routine.packed ? 0 : 3);
            QxBitmap bytes =
                randomBitmap(rng, static_cast<unsigned>(stride), static_cast<unsigned>(place.height), routine.srcDepth);
            QxBitmap dst = randomBitmap(rng, 10, 8, routine.dstDepth);
            const Source source{place.x, place.y, &dst, bytes.pixels, place.width, place.height, stride};
            const QxBitmap wanted = drawnByReference(routine, source);
            routine.draw(source);
            EXPECT_EQ(contents(wanted), contents(dst)) << routine.name << " at " << place.x << ", " << place.y;
        }
}

TEST(Blender, ASourceInTheDestinationIsReadAndDrawnPixelByPixel) {
    CapturedLog quiet;
    Rng rng(12);
    constexpr int kSide = 53, kRows = 3, kWidth = 34;
    for (const Routine& routine : routines()) {
        if (std::string(routine.name).find("of a bitmap") != std::string::npos) continue;  // its source is a copy
        for (int shift = -9; shift <= 9; ++shift) {
            QxBitmap dst = randomBitmap(rng, kSide, kRows, routine.dstDepth);
            QxBitmap wanted(dst);
            const int stride = routine.packed ? kWidth : kSide;
            const ptrdiff_t first = ptrdiff_t{10} * routine.dstDepth;
            for (int y = 0; y < kRows - 1; ++y)
                for (int x = 0; x < kWidth; ++x)
                    routine.pixel(wanted.pixels + first + ptrdiff_t{y * stride + x} * routine.srcDepth,
                                  wanted.pixels + ptrdiff_t{y * kSide + 10 + shift + x} * routine.dstDepth);
            routine.draw({10 + shift, 0, &dst, dst.pixels + first, kWidth, kRows - 1, stride});
            EXPECT_EQ(contents(wanted), contents(dst)) << routine.name << " moved by " << shift;
        }
    }
}

TEST(Blender, DoesNothingWithoutASourceOrADestinationOfTheRightDepth) {
    CapturedLog quiet;
    std::vector<uint8_t> source(4 * 64, 200);
    for (const Routine& routine : routines()) {
        const auto draws = [&](const QxBitmap* dst, int width, int height, int stride) {
            routine.draw({0, 0, dst, source.data(), width, height, stride});
        };
        SCOPED_TRACE(routine.name);
        draws(nullptr, 8, 8, 8);
        const QxBitmap empty, tooBig(65536, 65536, 4);
        draws(&empty, 8, 8, 8);
        draws(&tooBig, 8, 8, 8);

        const QxBitmap dst(8, 8, routine.dstDepth);
        if (std::string(routine.name).find("of a bitmap") == std::string::npos) {
            routine.draw({0, 0, &dst, nullptr, 8, 8, 8});
            draws(&dst, -8, 8, 8);
            draws(&dst, 8, INT_MIN, 8);
            if (!routine.packed) draws(&dst, 8, 8, -8);
        }
        const int edges[] = {INT_MIN, INT_MAX};
        for (int x : edges)
            for (int y : edges) routine.draw({x, y, &dst, source.data(), 8, 8, 8});
        EXPECT_EQ(std::vector<uint8_t>(64 * routine.dstDepth, 0), contents(dst));

        if (std::string(routine.name).find("drawBitmap ") == 0) continue;  // takes both depths
        for (unsigned depth : {1u, 2u, 3u, 4u, 5u}) {
            if (depth == routine.dstDepth) continue;
            const QxBitmap other(8, 8, depth);
            draws(&other, 8, 8, 8);
            EXPECT_EQ(std::vector<uint8_t>(64 * depth, 0), contents(other)) << depth;
        }
    }
    QxBitmap dst(2, 2, 4), unreadable(65536, 65536, 1), depthless(2, 2, 0);
    QxBlender::drawBitmap(0, 0, &dst, static_cast<QxBitmap*>(nullptr), kColor);
    QxBlender::drawBitmap(0, 0, &dst, &unreadable, kColor);
    QxBlender::drawBitmap(0, 0, &dst, &depthless, kColor);
    EXPECT_EQ(std::vector<uint8_t>(16, 0), contents(dst));
}

TEST(Blender, ReadsOneRowAgainForAStrideOfZero) {
    uint8_t mask[] = {10, 20, 30};
    const QxBitmap dst(3, 4, 4);
    QxBlender::blendDstOver8To32(0, 0, &dst, mask, 3, INT_MAX, 0, 0xFF000000);
    for (size_t i = 0; i < 12; ++i) EXPECT_EQ(mask[i % 3], dst.pixels[4 * i + 3]);
}

TEST(Blender, KnownPixels) {
    CapturedLog log;
    const struct {
        int mode;
        uint8_t mask;
        unsigned color;
        uint8_t before[4], after[4];
    } cases[] = {
        {2, 255, 0xFF102030, {0, 0, 0, 0}, {0x10, 0x20, 0x30, 0xFF}},
        {2, 255, 0xFF102030, {9, 8, 7, 255}, {9, 8, 7, 255}},
        {3, 1, 0x80102030, {0, 0, 0, 0}, {0x10, 0x20, 0x30, 0x80}},
        {7, 128, 0xFF102030, {200, 100, 50, 255}, {100, 50, 25, 128}},
        {1, 255, 0xFF102030, {200, 100, 50, 255}, {0x10, 0x20, 0x30, 0xFF}},
        {1, 255, 0x80FFFFFF, {255, 255, 255, 255}, {255, 255, 255, 255}},  // not premultiplied: limited
    };
    for (const auto& c : cases) {
        QxBitmap dst(1, 1, const_cast<unsigned char*>(c.before), 4);
        uint8_t mask = c.mask;
        QxBlender::drawBitmapBlend8(0, 0, &dst, &mask, 1, 1, 1, c.color, c.mode);
        EXPECT_THAT(contents(dst), testing::ElementsAreArray(c.after)) << "mode " << c.mode << " on " << c.before[3];
    }
}

TEST(Blender, OnlyModesThreeAndSevenLogAndOtherModesDoNothing) {
    CapturedLog log;
    QxBitmap dst(4, 4, 4);
    uint8_t mask[16] = {};
    unsigned values[16] = {};
    std::fill_n(mask, 16, uint8_t{255});
    std::fill_n(values, 16, 0xFFFFFFFFu);
    for (int mode : {1, 2}) QxBlender::drawBitmapBlend8(0, 0, &dst, mask, 4, 4, 4, 0, mode);
    for (int mode : {0, 4, 5, 6, 8, -1, INT_MIN}) QxBlender::drawBitmapBlend8(0, 0, &dst, mask, 4, 4, 4, kColor, mode);
    for (int mode : {0, 3, 5, 7}) QxBlender::drawBitmapBlend32(0, 0, &dst, values, 4, 4, 4, mode);
    for (int order : {-1, 2})
        QxBlender::drawBitmapBlend32(0, 0, &dst, reinterpret_cast<unsigned char*>(values), 4, 4, 4, 2, order);
    EXPECT_EQ(std::vector<uint8_t>(64, 0), contents(dst));
    EXPECT_THAT(log.take(), IsEmpty());

    QxBlender::drawBitmapBlend8(0, 0, &dst, mask, 4, 4, 4, kColor, 3);
    QxBlender::drawBitmapBlend8(0, 0, &dst, mask, 4, 4, 4, kColor, 7);
    EXPECT_THAT(log.take(), ElementsAre(isDebugLine("Blender", "Blender - QXE_BLEND_DST_OVER_NSA"),
                                        isDebugLine("Blender", "Blender - QXE_BLEND_OTHER")));
}

TEST(Blender, SwapsRedAndBlue) {
    uint8_t bytes[] = {1, 2, 3, 4, 250, 251, 252, 253, 0, 0, 9, 0};
    QxBitmap picture(3, 1, bytes, 4);
    QxBlender::convertBGRAToARGB(&picture);
    EXPECT_EQ((std::vector<uint8_t>{3, 2, 1, 4, 252, 251, 250, 253, 9, 0, 0, 0}), contents(picture));

    QxBitmap coverage(12, 1, bytes, 1), empty;
    QxBlender::convertBGRAToARGB(&coverage);
    EXPECT_EQ(std::vector<uint8_t>(bytes, bytes + 12), contents(coverage));
    QxBlender::convertBGRAToARGB(&empty);
    QxBlender::convertBGRAToARGB(nullptr);
}

}  // namespace
}  // namespace QxFontEffect::test
