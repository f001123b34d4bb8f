#include <cmath>
#include <cstring>
#include <limits>

#include "drawn_text.h"
#include "support/random.h"

using namespace testsupport;

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

/// An unpremultiplied RGBA picture with a column of guard pixels at the end of each row.
struct ColorPlane {
    ColorPlane(int w, int h, uint32_t fill = 0) : width(w), height(h), pixels(static_cast<size_t>((w + 1) * h), fill) {
        for (int y = 0; y < h; ++y) at(w, y) = kGuard;
    }

    SkBitmap bitmap() {
        SkBitmap made;
        EXPECT_TRUE(made.installPixels(
            SkImageInfo::Make(width, height, kRGBA_8888_SkColorType, kUnpremul_SkAlphaType, SkColorSpace::MakeSRGB()),
            pixels.data(), static_cast<size_t>(width + 1) * 4));
        return made;
    }
    SkCanvas canvas() { return SkCanvas(bitmap()); }
    uint32_t& at(int x, int y) { return pixels[static_cast<size_t>(y * (width + 1) + x)]; }
    bool guarded() {
        for (int y = 0; y < height; ++y)
            if (at(width, y) != kGuard) return false;
        return true;
    }

    static constexpr uint32_t kGuard = 0x12345678;
    int width, height;
    std::vector<uint32_t> pixels;
};

/// Bytes r, g, b, a in memory order.
uint32_t rgba(int r, int g, int b, int a) {
    const uint8_t bytes[4] = {static_cast<uint8_t>(r), static_cast<uint8_t>(g), static_cast<uint8_t>(b),
                              static_cast<uint8_t>(a)};
    uint32_t pixel;
    std::memcpy(&pixel, bytes, 4);
    return pixel;
}

SkPaint colored(SkColor color) {
    SkPaint paint;
    paint.setColor(color);
    return paint;
}

struct EdgeRow {
    const char* what;
    SkRect rect;
    int left, top, right, bottom;
};

const EdgeRow kEdges[] = {
    {"whole pixels", {2, 3, 5, 7}, 2, 3, 5, 7},
    {"half up", {0.5f, 0.49f, 3.5f, 3.49f}, 1, 0, 4, 3},
    {"between two centres", {2.5f, 2.5f, 3.4f, 3.4f}, 3, 3, 3, 3},
    {"reversed edges are sorted", {3, 1, 1, 3}, 1, 1, 3, 3},
    {"both directions reversed", {5, 7, 2, 3}, 2, 3, 5, 7},
    {"empty", {4, 1, 4, 9}, 0, 0, 0, 0},
    {"beyond the canvas", {-5, -5, 50, 50}, 0, 0, 10, 10},
    {"beside the canvas", {20, 0, 30, 10}, 0, 0, 0, 0},
    {"infinite", {-kInfinity, 1, kInfinity, 2}, 0, 1, 10, 2},
    {"huge", {-3e38f, -3e38f, 3e38f, 3e38f}, 0, 0, 10, 10},
    {"NaN", {kNan, 0, 10, 10}, 0, 0, 0, 0},
    {"NaN above", {0, kNan, 10, 5}, 0, 0, 0, 0},
    {"NaN at the far edge", {0, 5, kNan, 10}, 0, 0, 0, 0},
};

void expectFilled(ColorPlane& plane, const EdgeRow& row, uint32_t color, uint32_t elsewhere) {
    for (int y = 0; y < plane.height; ++y)
        for (int x = 0; x < plane.width; ++x) {
            const bool inside = x >= row.left && x < row.right && y >= row.top && y < row.bottom;
            ASSERT_EQ(plane.at(x, y), inside ? color : elsewhere) << row.what << " at " << x << "," << y;
        }
    EXPECT_TRUE(plane.guarded());
}

}  // namespace

TEST(Canvas, RectanglesAndClipsCoverPixelCentres) {
    for (const EdgeRow& row : kEdges) {
        ColorPlane drawn(10, 10), clipped(10, 10, 5);
        drawn.canvas().drawRect(row.rect, colored(0xFF112233));
        expectFilled(drawn, row, rgba(0x11, 0x22, 0x33, 0xFF), 0);

        SkCanvas canvas = clipped.canvas();
        canvas.clipRect(row.rect, SkClipOp::kIntersect, false);
        canvas.clear(0x80FF0000);
        expectFilled(clipped, row, rgba(0xFF, 0, 0, 0x80), 5);
    }
}

TEST(Canvas, ClipsOnlyEverGetSmaller) {
    ColorPlane plane(10, 10);
    SkCanvas canvas = plane.canvas();
    canvas.clipRect(SkRect::MakeLTRB(2, 2, 6, 6), SkClipOp::kIntersect);
    canvas.clipRect(SkRect::MakeLTRB(4, 0, 9, 5), SkClipOp::kIntersect);
    canvas.drawColor(SK_ColorWHITE);
    expectFilled(plane, {"intersection", {}, 4, 2, 6, 5}, 0xFFFFFFFF, 0);

    canvas.clipRect(SkRect::MakeLTRB(8, 8, 9, 9), SkClipOp::kIntersect);
    canvas.clipRect(SkRect::MakeLTRB(0, 0, 10, 10), SkClipOp::kIntersect);
    canvas.clear(0);
    expectFilled(plane, {"nothing left", {}, 4, 2, 6, 5}, 0xFFFFFFFF, 0);
}

TEST(Canvas, ColoursStayUnpremultiplied) {
    const struct {
        const char* what;
        uint32_t ground;
        SkColor color;
        SkBlendMode mode;
        uint32_t wanted;
    } rows[] = {
        {"half red over nothing", 0, 0x80FF0000, SkBlendMode::kSrcOver, rgba(255, 0, 0, 128)},
        {"faint colour over nothing", rgba(9, 9, 9, 0), 0x01A0B0C0, SkBlendMode::kSrcOver, rgba(0xA0, 0xB0, 0xC0, 1)},
        {"transparent over something", rgba(1, 2, 3, 4), 0x00FFFFFF, SkBlendMode::kSrcOver, rgba(1, 2, 3, 4)},
        {"transparent fill draws nothing", rgba(1, 2, 3, 0), 0x00FFFFFF, SkBlendMode::kSrcOver, rgba(1, 2, 3, 0)},
        {"opaque", rgba(1, 2, 3, 4), 0xFF112233, SkBlendMode::kSrcOver, rgba(0x11, 0x22, 0x33, 255)},
        {"half white over black", rgba(0, 0, 0, 255), 0x80FFFFFF, SkBlendMode::kSrcOver, rgba(128, 128, 128, 255)},
        // a = 0.50196 + 0.25098 x 0.49804 = 0.62696; red 0.50196 / a, green 0.125 / a
        {"two translucent", rgba(0, 255, 0, 64), 0x80FF0000, SkBlendMode::kSrcOver, rgba(204, 51, 0, 160)},
        {"source", rgba(1, 2, 3, 4), 0x40302010, SkBlendMode::kSrc, rgba(0x30, 0x20, 0x10, 0x40)},
        {"source, transparent", rgba(1, 2, 3, 4), 0, SkBlendMode::kSrc, 0},
        {"clear", rgba(1, 2, 3, 4), 0xFFFFFFFF, SkBlendMode::kClear, 0},
    };
    for (const auto& row : rows) {
        ColorPlane whole(3, 2, row.ground), rect(3, 2, row.ground);
        whole.canvas().drawColor(row.color, row.mode);
        SkPaint paint = colored(row.color);
        paint.setBlendMode(row.mode);
        rect.canvas().drawRect(SkRect::MakeWH(3, 2), paint);
        EXPECT_EQ(whole.at(2, 1), row.wanted) << row.what;
        EXPECT_EQ(whole.pixels, rect.pixels) << row.what;
    }
}

TEST(Canvas, BitmapsBlendByTheUnpremultipliedFormula) {
    QxFontEffect::test::Rng rng(7);
    ColorPlane source(256, 256), ground(256, 256);
    for (int y = 0; y < 256; ++y)  // every pair of alphas
        for (int x = 0; x < 256; ++x) {
            source.at(x, y) = rgba(rng.byte(), rng.byte(), rng.byte(), x);
            ground.at(x, y) = rgba(rng.byte(), rng.byte(), rng.byte(), y);
        }
    ColorPlane drawn = ground;
    drawn.canvas().drawBitmap(source.bitmap(), 0, 0);

    int byOne = 0;
    for (int y = 0; y < 256; ++y)
        for (int x = 0; x < 256; ++x) {
            uint8_t s[4], d[4], got[4];
            std::memcpy(s, &source.at(x, y), 4);
            std::memcpy(d, &ground.at(x, y), 4);
            std::memcpy(got, &drawn.at(x, y), 4);
            const double sa = x / 255.0, da = y / 255.0, a = sa + da * (1 - sa);
            for (int k = 0; k < 4; ++k) {
                const double exact = a == 0 ? 0 : k == 3 ? a * 255 : (s[k] * sa + d[k] * da * (1 - sa)) / a;
                const int wanted = static_cast<int>(std::floor(exact + 0.5));
                ASSERT_NEAR(got[k], wanted, 1) << x << "," << y;
                byOne += got[k] != wanted;
            }
        }
    EXPECT_LT(byOne, 100) << "only ties may fall the other way in single precision";
    EXPECT_TRUE(drawn.guarded());
}

TEST(Canvas, BitmapsAreCopiedWhereNothingLiesBeneathAndClippedAtTheEdges) {
    QxFontEffect::test::Rng rng(3);
    ColorPlane source(7, 6);
    for (int y = 0; y < 6; ++y)
        for (int x = 0; x < 7; ++x) source.at(x, y) = rgba(rng.byte(), rng.byte(), rng.byte(), 1 + (y * 7 + x) * 6);

    const float places[][2] = {{0, 0},   {-3, -2},    {6, 5},    {2.5f, 1.49f}, {-2.5f, 0},
                               {100, 0}, {-3e38f, 0}, {kNan, 0}, {0, kInfinity}};
    for (const auto& place : places) {
        ColorPlane ground(9, 8);
        SkCanvas canvas = ground.canvas();
        canvas.clipRect(SkRect::MakeLTRB(1, 2, 8, 7), SkClipOp::kIntersect);
        canvas.drawBitmap(source.bitmap(), place[0], place[1]);
        for (int y = 0; y < 8; ++y)
            for (int x = 0; x < 9; ++x) {
                const double sx = x - std::floor(place[0] + 0.5), sy = y - std::floor(place[1] + 0.5);
                const bool inside = x >= 1 && x < 8 && y >= 2 && y < 7 && sx >= 0 && sx < 7 && sy >= 0 && sy < 6;
                ASSERT_EQ(ground.at(x, y), inside ? source.at(static_cast<int>(sx), static_cast<int>(sy)) : 0)
                    << place[0] << "," << place[1] << " at " << x << "," << y;
            }
        EXPECT_TRUE(ground.guarded());
    }
}

TEST(Canvas, CoveragePlanesTakeAlphaOnly) {
    CoveragePlane plane(4, 4, 200);
    SkCanvas canvas = plane.canvas();
    canvas.clear(0);
    EXPECT_EQ(plane.sum(), 0);
    canvas.drawRect(SkRect::MakeWH(2, 2), colored(0x40FFFFFF));
    EXPECT_EQ(plane.at(1, 1), 0x40);
    EXPECT_EQ(plane.sum(), 4 * 0x40);
    canvas.drawColor(0x40000000);
    EXPECT_EQ(plane.at(1, 1), (255 * 64 + 64 * 191 + 255) >> 8);
    EXPECT_EQ(plane.at(3, 3), 0x40);
}

TEST(Canvas, TextLeavesColourPicturesAlone) {
    ColorPlane plane(60, 60, rgba(1, 2, 3, 4));
    const ColorPlane before = plane;
    plane.canvas().drawTextBlob(blobOf(SkFont(openFont(kRobotoRegular), 48), 44), 5, 50, SkPaint());
    EXPECT_EQ(plane.pixels, before.pixels);
}

TEST(Bitmap, LooksOnlyAtPixelsThatCanBeThere) {
    uint8_t pixels[64] = {};
    const struct {
        int width, height;
        SkColorType type;
        size_t rowBytes;
        bool taken;
    } rows[] = {
        {4, 4, kAlpha_8_SkColorType, 4, true},    {4, 4, kAlpha_8_SkColorType, 3, false},
        {4, 4, kRGBA_8888_SkColorType, 16, true}, {4, 4, kRGBA_8888_SkColorType, 15, false},
        {0, 4, kAlpha_8_SkColorType, 0, true},    {4, 0, kRGBA_8888_SkColorType, 16, true},
        {-1, 4, kAlpha_8_SkColorType, 4, false},  {4, -1, kAlpha_8_SkColorType, 4, false},
        {4, 4, kUnknown_SkColorType, 16, false},  {1, INT32_MAX, kAlpha_8_SkColorType, SIZE_MAX / 2, false},
    };
    for (const auto& row : rows) {
        SkBitmap bitmap;
        const SkImageInfo info = SkImageInfo::Make(row.width, row.height, row.type, kUnpremul_SkAlphaType);
        EXPECT_EQ(bitmap.installPixels(info, pixels, row.rowBytes), row.taken) << row.width << "x" << row.height;
        EXPECT_EQ(bitmap.drawsNothing(), !row.taken || row.width == 0 || row.height == 0);
        SkCanvas(bitmap).clear(0);  // with a side of 0, or nothing taken, there is nothing to draw into
    }
}

TEST(TextBlob, IsMadeOfItsRunsAndEmptiesTheBuilder) {
    SkTextBlobBuilder builder;
    EXPECT_EQ(builder.make(), nullptr);
    EXPECT_EQ(builder.allocRunPos(SkFont(), 0).glyphs, nullptr);
    EXPECT_EQ(builder.allocRunPos(SkFont(), -5).pos, nullptr);
    EXPECT_EQ(builder.make(), nullptr);

    const SkTextBlobBuilder::RunBuffer& run = builder.allocRunPos(SkFont(nullptr, 20), 2);
    run.glyphs[1] = 9;
    run.points()[1] = SkPoint::Make(3, 4);
    EXPECT_EQ(run.pos[3], 4);
    builder.allocRunPos(SkFont(nullptr, 30), 1);
    const sk_sp<SkTextBlob> blob = builder.make();
    ASSERT_EQ(blob->runs().size(), 2u);
    EXPECT_EQ(blob->runs()[0].glyphs, (std::vector<SkGlyphID>{0, 9}));
    EXPECT_EQ(blob->runs()[0].points[1].fX, 3);
    EXPECT_EQ(blob->runs()[1].font.getSize(), 30);
    EXPECT_EQ(builder.make(), nullptr);
}
