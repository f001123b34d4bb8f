#include "effect/QxStroke.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <vector>

#include "effect/core_picture.h"
#include "support/failing_alloc.h"
#include "support/planes.h"
#include "support/reference/stroke_reference.h"

namespace QxFontEffect {
namespace {

using test::CorePicture;
using test::Rng;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

void setStroke(QxStroke& core, float size, int position, unsigned color = 0xFF102030u) {
    QxStrokeProperty record(size, color, 1.0f, 0, position);
    core.setProperty(&record);
}

struct KernelCase {
    float radius;
    int side;
    std::vector<int> firstRows;
};

TEST(CircleKernel, IsARingWithItsCentreOverridden) {
    const KernelCase cases[] = {
        {0.0f, 1, {0}},
        {0.25f, 1, {64}},
        {0.5f, 3, {22, 128, 22, 128, 128, 128}},
        {1.0f, 3, {149, 255, 149, 255, 255, 255}},
        {1.5f, 5, {0, 67, 128, 67, 0, 67, 255, 255, 255, 67, 128, 255, 255, 255, 128}},
        {-0.3f, 1, {0}},
    };
    for (const KernelCase& c : cases) {
        unsigned char* kernel = nullptr;
        ASSERT_EQ(c.side, makeCircleKernel(&kernel, c.radius)) << c.radius;
        for (size_t i = 0; i < c.firstRows.size(); ++i) EXPECT_EQ(c.firstRows[i], kernel[i]) << c.radius << " at " << i;
        std::free(kernel);
    }
    for (const float radius : {kNaN, kInfinity, -kInfinity, -1.5f, -80.0f, 1e9f, 3e9f, 1e30f}) {
        unsigned char* kernel = reinterpret_cast<unsigned char*>(1);
        EXPECT_EQ(0, makeCircleKernel(&kernel, radius)) << radius;
        EXPECT_EQ(nullptr, kernel) << radius;
    }
}

struct Slice {
    std::vector<uint8_t> src, kernel, planes;
    StrokeWork work;
};

// A record over random coverage, inside a larger source and a larger output that both hold other data.
Slice randomSlice(Rng& rng, float radius, int columns, int rows) {
    const test::reference::Disc disc = test::reference::disc(radius);
    const int half = disc.side >> 1;
    Slice slice{{}, disc.cells, {}, {}};
    const int srcStride = columns + 7, srcHeight = rows + 3;
    const int dstStride = columns + 2 * half + 5, dstHeight = rows + 2 * half + 4;
    slice.src.resize(static_cast<size_t>(srcStride * srcHeight));
    for (uint8_t& c : slice.src) c = rng.oneIn(2) ? uint8_t{0} : rng.oneIn(2) ? uint8_t{255} : rng.byte();
    slice.planes.resize(static_cast<size_t>(2 * dstStride * dstHeight));
    for (uint8_t& d : slice.planes) d = static_cast<uint8_t>(rng.below(90));
    slice.work = {slice.planes.data(),
                  slice.src.data(),
                  slice.kernel.data(),
                  srcStride,
                  srcHeight,
                  2,
                  4,
                  dstStride,
                  dstHeight,
                  half + 1,
                  half + 3,
                  dstStride * dstHeight,
                  static_cast<int>(radius),
                  disc.side,
                  columns,
                  rows,
                  0,
                  rows};
    return slice;
}

// The definition, for one output byte: the best of what is there and what reaches it from every source pixel.
int wantedByte(const Slice& slice, bool complement, int before, int x, int y) {
    const StrokeWork& w = slice.work;
    const int half = w.kernelSize / 2;
    int best = before;
    for (int sy = w.firstRow; sy < w.endRow; ++sy)
        for (int sx = 0; sx < w.columns; ++sx) {
            const int i = y - (w.dstY + sy - half), j = x - (w.dstX + sx - half);
            if (i < 0 || j < 0 || i >= w.kernelSize || j >= w.kernelSize) continue;
            const int c = slice.src[static_cast<size_t>((w.srcY + sy) * w.srcStride + w.srcX + sx)];
            const int reached =
                slice.kernel[static_cast<size_t>(i * w.kernelSize + j)] - 255 + (complement ? 255 - c : c);
            best = std::max(best, reached);
        }
    return best;
}

TEST(StrokeDilation, SlicesWriteTheBestOfEverySourcePixelIntoTheirPlanes) {
    Rng rng(5);
    for (const float radius : {0.0f, 0.5f, 1.0f, 2.3f, 4.0f})
        for (const int routine : {0, 1, 2}) {
            Slice slice = randomSlice(rng, radius, 13, 9);
            const std::vector<uint8_t> before = slice.planes;
            // In two parts, which together are the whole.
            int (*const routines[])(void*) = {partalDTStrokeCenter, partalDTStrokeOutside, partalDTStrokeInside};
            slice.work.endRow = 4;
            EXPECT_EQ(0, routines[routine](&slice.work));
            slice.work.firstRow = 4;
            slice.work.endRow = 9;
            EXPECT_EQ(0, routines[routine](&slice.work));
            slice.work.firstRow = 0;

            const int stride = slice.work.dstStride, height = slice.work.dstHeight;
            for (int plane = 0; plane < 2; ++plane)
                for (int y = 0; y < height; ++y)
                    for (int x = 0; x < stride; ++x) {
                        const size_t at = static_cast<size_t>((plane * height + y) * stride + x);
                        const bool written = plane == 0 || routine == 0;
                        const bool complement = routine == 0 ? plane == 1 : routine == 2;
                        const int want = written ? wantedByte(slice, complement, before[at], x, y) : before[at];
                        ASSERT_EQ(want, slice.planes[at]) << "radius " << radius << " routine " << routine << " plane "
                                                          << plane << " at " << x << ", " << y;
                    }
        }
}

TEST(Stroke, EqualsThePlainLoopsOnRandomPictures) {
    const float sizes[] = {0.0f, 0.4f, 0.5f, 1.0f, 1.49f, 2.0f, 3.0f, 5.0f, 7.7f, 25.0f};
    for (uint32_t seed = 0; seed < 600; ++seed) {
        Rng rng(seed);
        CorePicture picture(1 + static_cast<int>(seed % 67), rng.between(1, 40));
        picture.inkAtRandom(rng);
        picture.paintAtRandom(rng);
        // Some rectangles reach over the edge of the picture.
        picture.rect.left = rng.between(-3, picture.rect.right - 1);
        picture.rect.top = rng.between(-3, picture.rect.bottom - 1);
        picture.rect.right = rng.between(picture.rect.left, picture.rect.right + 3);
        picture.rect.bottom = rng.between(picture.rect.top, picture.rect.bottom + 3);
        const QxStrokeProperty record(sizes[rng.below(10)], rng.next32(), 1.0f, 0, rng.between(-1, 3));
        const int32_t layerMode = rng.between(0, 1);

        CorePicture want = picture, base = picture, wantBase = picture;
        ParamPostProcessing wanted = want.params(layerMode), given = picture.params(layerMode);
        if (rng.oneIn(2)) {
            wanted.baseBitmap = &wantBase.output;
            given.baseBitmap = &base.output;
        }
        test::reference::stroke(record, wanted);
        QxStroke core;
        core.setProperty(const_cast<QxStrokeProperty*>(&record));
        core.doPostProcessing(&given);
        ASSERT_TRUE(test::samePlane(want.outputPlane(), picture.outputPlane(), "seed", seed, "size", record.size,
                                    "position", record.position));
        ASSERT_TRUE(test::samePlane(wantBase.outputPlane(), base.outputPlane(), "base, seed", seed));
    }
}

TEST(Stroke, CentredStrokesThatJustReachThroughTheGlyphsOrDoNot) {
    // Bars as wide as the disc's full columns, less or more, at the edges of the picture and away from them.
    for (const float size : {23.0f, 24.5f, 26.0f, 31.0f})
        for (int wide = 18; wide <= 34; ++wide) {
            CorePicture picture(90, 50);
            const auto bar = [&](int left, int top, int right, int bottom) {
                for (int y = top; y < bottom; ++y)
                    for (int x = left; x < right; ++x) picture.ink(x, y) = x + y == left + top + 3 ? 1 : 255;
            };
            bar(0, 0, wide, 34);
            bar(90 - wide / 2, 12, 90, 50);
            const QxStrokeProperty record(size, 0xE0A01030u, 1.0f, 0, 0);
            CorePicture want = picture;
            ParamPostProcessing wanted = want.params();
            test::reference::stroke(record, wanted);
            QxStroke core;
            setStroke(core, size, 0, record.color);
            picture.runs(core);
            ASSERT_TRUE(test::samePlane(want.outputPlane(), picture.outputPlane(), "size", size, "bar", wide));
        }
}

TEST(Stroke, WidthsThatAreNoNumberOrNegativeDrawNothing) {
    for (const float size : {kNaN, kInfinity, -kInfinity, -3.0f, -1e30f})
        for (const int position : {0, 1, 2}) {
            CorePicture picture(9, 7);
            std::fill_n(picture.coverage.pixels, 63, uint8_t{200});
            QxStroke core;
            setStroke(core, size, position);
            picture.runs(core);
            EXPECT_TRUE(picture.blank()) << size << " at " << position;
        }
}

TEST(Stroke, RectanglesFarAwayDrawNothing) {
    constexpr int kFar = 2147483000;
    for (const QxRect& rect : {QxRect{kFar, kFar, kFar + 400, kFar + 400}, QxRect{-kFar, -kFar, 400 - kFar, 400 - kFar},
                               QxRect{-kFar, kFar, kFar, kFar + 1}})
        for (const int position : {0, 1, 2}) {
            CorePicture picture(4, 4);
            picture.rect = rect;
            QxStroke core;
            setStroke(core, 5, position);
            picture.runs(core);
            EXPECT_TRUE(picture.blank()) << rect.left << " at " << position;
        }
    EXPECT_EQ(0, makeCircleKernel(nullptr, 3));
    EXPECT_EQ(0, partalDTStrokeCenter(nullptr) + partalDTStrokeOutside(nullptr) + partalDTStrokeInside(nullptr));
}

TEST(Stroke, WidthsFarBeyondThePictureFillIt) {
    for (const float size : {500.0f, 1e6f, 1e9f})
        for (const int position : {0, 1, 2}) {
            CorePicture picture(30, 20);
            picture.rect = {10, 5, 20, 15};
            picture.ink(12, 9) = 255;
            QxStroke core;
            setStroke(core, size, position);
            picture.runs(core);
            for (int y = 0; y < 20; ++y)
                for (int x = 0; x < 30; ++x) ASSERT_EQ(255, picture.out(x, y, 3)) << size << " at " << position;
        }
}

TEST(Stroke, OffsetIsTheWidthOutsideAndHalfOfItCentred) {
    const struct {
        float size;
        int position, offset;
    } cases[] = {{5.0f, 1, 5}, {5.49f, 1, 5}, {5.5f, 1, 6},
                 {5.0f, 0, 3}, {4.9f, 0, 2},  {5.0f, 2, 0},
                 {5.0f, 7, 0}, {kNaN, 1, 0},  {1e30f, 1, std::numeric_limits<int>::max()}};
    QxStroke core;
    EXPECT_EQ(0, core.getOffset());
    for (const auto& c : cases) {
        setStroke(core, c.size, c.position);
        EXPECT_EQ(c.offset, core.getOffset()) << c.size << " at " << c.position;
    }
}

TEST(Stroke, DrawsNothingWhenAnyAllocationFails) {
    // Narrow and wide strokes take different ways.
    for (const int round : {0, 1, 2, 3, 4, 5})
        for (int n = 0;; ++n) {
            const int position = round % 3;
            CorePicture picture(40, 30);
            picture.ink(20, 15) = 255;
            QxStroke core;
            setStroke(core, round < 3 ? 6.0f : 30.0f, position);
            ParamPostProcessing params = picture.params();
            test::FailingAlloc failing(n);
            core.doPostProcessing(&params);
            if (!failing.refused()) break;
            test::AllocationPause pause;
            EXPECT_TRUE(picture.blank()) << "request " << n << " position " << position;
        }
}

}  // namespace
}  // namespace QxFontEffect
