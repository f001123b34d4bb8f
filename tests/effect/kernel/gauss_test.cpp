#include "effect/kernel/gauss.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "effect/kernel/gauss_rows.h"
#include "support/planes.h"
#include "support/reference/gauss_reference.h"

namespace QxFontEffect {
namespace {

using test::GuardedPlane8;
using test::Rng;

constexpr uint64_t kSeed = 31;

/// The blur over a range by plain sums over all taps. Samples outside the plane, and of the line outside the range's
/// columns unless `wholeLine`, are 0.
GuardedPlane8 plainBlur(ConstPlane8 src, const test::reference::Bell& bell, GaussRange range, bool wholeLine,
                        bool columnsUp, bool rowsUp) {
    GuardedPlane8 out(range.xEnd - range.xStart, range.yEnd - range.yStart);
    const int lineStart = wholeLine ? 0 : range.xStart, lineEnd = wholeLine ? src.width : range.xEnd;
    for (int y = range.yStart; y < range.yEnd; ++y) {
        std::vector<int64_t> line(static_cast<size_t>(src.width));
        for (int x = lineStart; x < lineEnd; ++x) {
            int64_t total = columnsUp ? bell.sum - 1 : 0;
            for (int v = std::max(y - bell.radius, 0); v <= std::min(y + bell.radius, src.height - 1); ++v)
                total += bell.at(v - y) * src.row(v)[x];
            line[static_cast<size_t>(x)] = total / bell.sum;
        }
        for (int x = range.xStart; x < range.xEnd; ++x) {
            int64_t total = rowsUp ? bell.sum - 1 : 0;
            for (int u = std::max(x - bell.radius, 0); u <= std::min(x + bell.radius, src.width - 1); ++u)
                total += bell.at(u - x) * line[static_cast<size_t>(u)];
            out.at(x - range.xStart, y - range.yStart) = static_cast<uint8_t>(total / bell.sum);
        }
    }
    return out;
}

std::vector<uint8_t> scratchOf(int64_t bytes) {
    return std::vector<uint8_t>(static_cast<size_t>(bytes), 0xEE);
}

void expectRangeBlurred(const GuardedPlane8& src, int radius, int peak, GaussRange range, Rng& rng) {
    const GaussBell bell = makeGaussBell(radius, peak);
    GuardedPlane8 got = test::randomPlane8(rng, src.width(), src.height(), 3, radius & 15);
    GuardedPlane8 want = got;
    const GuardedPlane8 inside =
        plainBlur(src.view(), test::reference::bell(radius, static_cast<float>(peak)), range, false, false, false);
    for (int y = 0; y < inside.height(); ++y)
        for (int x = 0; x < inside.width(); ++x) want.at(range.xStart + x, range.yStart + y) = inside.at(x, y);
    std::vector<uint8_t> scratch = scratchOf(static_cast<int64_t>(gaussScratchBytes(bell, src.width())));
    gaussBlurPlane8(src.view(), bell, range, scratch.data(), got.view());
    EXPECT_SAME_PLANE(want, got, "width", src.width(), "radius", radius, "peak", peak);
}

TEST(GaussBlurPlane, EveryWidthAndRadius) {
    Rng rng(kSeed);
    for (int width = 1; width <= 67; ++width) {
        const GuardedPlane8 src = test::randomCoverage(rng, width, 9, 1, width & 15);
        for (int radius = width % 4; radius <= 100; radius += 4)
            expectRangeBlurred(src, radius, rng.oneIn(2) ? kSoftPeak : kGlowPeak, {0, width, 0, 9}, rng);
    }
}

TEST(GaussBlurPlane, LeavesWhatLiesOutsideTheRange) {
    Rng rng(kSeed + 1);
    for (int i = 0; i < 200; ++i) {
        const GuardedPlane8 src = test::randomCoverage(rng, rng.between(1, 150), rng.between(1, 60));
        GaussRange range{rng.between(0, src.width()), 0, rng.between(0, src.height()), 0};
        range.xEnd = rng.between(range.xStart, src.width());
        range.yEnd = rng.between(range.yStart, src.height());
        expectRangeBlurred(src, rng.between(0, 40), kSoftPeak, range, rng);
    }
}

TEST(GaussBlurPlane, FlatStaysFlatAndABlurIsSymmetric) {
    const GaussBell bell = makeGaussBell(7, kSoftPeak);
    std::vector<uint8_t> scratch = scratchOf(static_cast<int64_t>(gaussScratchBytes(bell, 41)));
    const GuardedPlane8 flat(41, 41, 201);
    GuardedPlane8 out(41, 41);
    gaussBlurPlane8(flat.view(), bell, {0, 41, 0, 41}, scratch.data(), out.view());
    for (int y = 14; y < 27; ++y)
        for (int x = 14; x < 27; ++x) EXPECT_EQ(out.at(x, y), 201);

    GuardedPlane8 dot(41, 41);
    dot.at(20, 20) = 255;
    gaussBlurPlane8(std::as_const(dot).view(), bell, {0, 41, 0, 41}, scratch.data(), out.view());
    for (int y = 0; y < 41; ++y)
        for (int x = 0; x < 41; ++x) {
            EXPECT_EQ(out.at(x, y), out.at(40 - x, y));
            EXPECT_EQ(out.at(x, y), out.at(x, 40 - y));
            EXPECT_LE(out.at(std::max(x - 1, 0), y), out.at(std::min(x, 20), y)) << "rises to the middle";
        }
}

TEST(GaussRows, PartsBeyondThePlaneInBothRoundings) {
    Rng rng(kSeed + 2);
    for (int i = 0; i < 300; ++i) {
        const GuardedPlane8 src = test::randomCoverage(rng, rng.between(0, 90), rng.between(0, 50));
        const int radius = i < 101 ? i : rng.between(0, 260);
        const int peak = rng.oneIn(2) ? kSoftPeak : kGlowPeak;
        GaussRange out{rng.between(-radius - 30, src.width() + radius), 0,
                       rng.between(-radius - 30, src.height() + radius), 0};
        out.xEnd = out.xStart + rng.between(0, 80);
        out.yEnd = out.yStart + rng.between(0, 60);
        const bool columnsUp = rng.oneIn(2), rowsUp = rng.oneIn(2);
        const GaussBell bell = makeGaussBell(radius, peak);
        const GaussJob job = {src.view(), &bell, out, columnsUp ? GaussRounding::Up : GaussRounding::Down,
                              rowsUp ? GaussRounding::Up : GaussRounding::Down};
        const GuardedPlane8 want = plainBlur(src.view(), test::reference::bell(radius, static_cast<float>(peak)), out,
                                             true, columnsUp, rowsUp);
        std::vector<uint8_t> scratch = scratchOf(GaussRows::scratchBytes(job));
        GaussRows rows(job, scratch.data());
        GuardedPlane8 got(want.width(), want.height(), 1);
        int taken = 0;
        while (const int count = rows.next({got.view().row(taken), want.width(),
                                            std::min(rng.between(1, 19), want.height() - taken), got.view().stride}))
            taken += count;
        EXPECT_EQ(taken, want.height());
        EXPECT_SAME_PLANE(want, got, "case", i, "radius", radius, "peak", peak);
    }
}

}  // namespace
}  // namespace QxFontEffect
