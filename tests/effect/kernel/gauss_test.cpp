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

GuardedPlane8 transposed(const GuardedPlane8& plane) {
    GuardedPlane8 turned(plane.height(), plane.width());
    for (int y = 0; y < plane.height(); ++y)
        for (int x = 0; x < plane.width(); ++x) turned.at(y, x) = plane.at(x, y);
    return turned;
}

/// What a job gives, by plain sums.
GuardedPlane8 plainBlur(const GuardedPlane8& src, const GaussJob& job) {
    const test::reference::Bell bell = test::reference::bell(job.bell->radius, static_cast<float>(job.bell->peak));
    const bool columnsUp = job.columns == GaussRounding::Up, rowsUp = job.rows == GaussRounding::Up;
    if (job.order == GaussOrder::ColumnsFirst) return plainBlur(src.view(), bell, job.out, true, columnsUp, rowsUp);
    const GaussRange turned = {job.out.yStart, job.out.yEnd, job.out.xStart, job.out.xEnd};
    const GuardedPlane8 columns = transposed(src);
    return transposed(plainBlur(columns.view(), bell, turned, true, rowsUp, columnsUp));
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
    std::vector<uint8_t> scratch = scratchOf(gaussScratchBytes(bell, src.width(), src.height()));
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
    std::vector<uint8_t> scratch = scratchOf(gaussScratchBytes(bell, 41, 41));
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

/// Every table of loops that this machine can run.
std::vector<BlurKernels> kernelsHere() {
    std::vector<BlurKernels> kernels = {{&narrowKernelsPortable(), &gaussKernelsPortable()}};
    if (gaussKernelsAvx2() != nullptr) kernels.push_back({narrowKernelsAvx2(), gaussKernelsAvx2()});
    return kernels;
}

GaussRounding rounding(bool up) {
    return up ? GaussRounding::Up : GaussRounding::Down;
}

void expectJobDone(const GuardedPlane8& src, const GaussJob& job, int number) {
    const GuardedPlane8 want = plainBlur(src, job);
    for (const BlurKernels& kernels : kernelsHere())
        for (const bool copies : {false, true}) {
            std::vector<uint8_t> scratch = scratchOf(GaussRows::scratchBytes(job));
            GaussRows rows(job, scratch.data(), kernels);
            GuardedPlane8 got(want.width(), want.height(), 1);
            int taken = 0;
            for (int count = 1; count > 0; taken += count) {
                if (copies) {
                    count = rows.next(got.view().row(taken), got.view().stride);
                    continue;
                }
                const ConstPlane8 made = rows.next();
                count = made.height;
                ASSERT_LE(taken + count, want.height());
                for (int y = 0; y < count; ++y) std::copy_n(made.row(y), want.width(), got.view().row(taken + y));
            }
            EXPECT_EQ(taken, want.height());
            EXPECT_SAME_PLANE(want, got, "case", number, "radius", job.bell->radius, "peak", job.bell->peak,
                              kernels.wide->name);
        }
}

TEST(GaussRows, PartsBeyondThePlaneInBothRoundingsAndOrders) {
    Rng rng(kSeed + 2);
    for (int i = 0; i < 400; ++i) {
        const GuardedPlane8 src = test::randomCoverage(rng, rng.between(0, 200), rng.between(0, 90));
        const int radius = i < 101 ? i : i < 200 ? rng.between(0, 12) : rng.between(0, 260);
        const GaussBell bell = makeGaussBell(radius, rng.oneIn(2) ? kSoftPeak : kGlowPeak);
        GaussRange out{rng.between(-radius - 30, src.width() + radius), 0,
                       rng.between(-radius - 30, src.height() + radius), 0};
        out.xEnd = out.xStart + rng.between(0, 170);
        out.yEnd = out.yStart + rng.between(0, 100);
        expectJobDone(src,
                      {src.view(), &bell, out, rounding(rng.oneIn(2)), rounding(rng.oneIn(2)),
                       rng.oneIn(2) ? GaussOrder::ColumnsFirst : GaussOrder::RowsFirst},
                      i);
    }
}

TEST(GaussRows, WordsAndLinesInBlankSurroundings) {
    // Ink here and there: most blocks and strips are blank, and their sums have to come back to nothing in between.
    Rng rng(kSeed + 3);
    for (int i = 0; i < 24; ++i) {
        GuardedPlane8 src(700, 250);
        for (int word = rng.between(0, 3); word > 0; --word) {
            const int left = rng.between(0, 650), top = rng.between(0, 230);
            for (int y = top; y < std::min(top + 20, 250); ++y)
                for (int x = left; x < std::min(left + 60, 700); ++x) src.at(x, y) = rng.byte();
        }
        const int radius = i < 11 ? i : rng.between(0, 40);
        const GaussBell bell = makeGaussBell(radius, kSoftPeak);
        const GuardedPlane8& ink = src;
        expectJobDone(ink,
                      {ink.view(),
                       &bell,
                       {-radius, 700 + radius, -radius, 250 + radius},
                       rounding(i % 2 != 0),
                       rounding(i % 3 == 0),
                       i % 4 == 0 ? GaussOrder::RowsFirst : GaussOrder::ColumnsFirst},
                      i);
    }
}

// Narrow bells know by the columns where there is ink, 8 by 8 and 512 in a word: they reach from one into the next.
TEST(GaussRows, InkOnEitherSideOfTheColumnsThatAWordCounts) {
    Rng rng(kSeed + 8);
    for (int radius = 1; radius <= NarrowBell::kMaxRadius; ++radius)
        for (int column = 484; column < 508; ++column) {
            GuardedPlane8 src(540, 3);
            for (int y = 0; y < 3; ++y) src.at(column, y) = static_cast<uint8_t>(rng.between(128, 255));
            const GuardedPlane8& ink = src;
            const GaussBell bell = makeGaussBell(radius, kSoftPeak);
            const GaussOrder order = column % 2 == 0 ? GaussOrder::ColumnsFirst : GaussOrder::RowsFirst;
            expectJobDone(ink, {ink.view(), &bell, {0, 540, 0, 3}, GaussRounding::Down, GaussRounding::Up, order},
                          column);
        }
}

// Ink whose last trace lies in the last of 16 rows, then blank rows, then ink again, which finds sums of nothing.
TEST(GaussRows, InkThatEndsWithAStripLeavesNothingBehind) {
    Rng rng(kSeed + 7);
    for (const int radius : {7, 20, 64, 100})
        for (int strip = 0; strip < 4; ++strip) {
            const int last = (radius / 64 + 1) * 64 + 16 * strip - 1 - radius, again = last + 2 * radius + 90;
            GuardedPlane8 src(2 * radius + 10, again + 30);
            for (int y = 0; y < src.height(); ++y) {
                // Equal columns: what is off by one in the vertical pass stays off by one.
                const uint8_t value = y <= last || y >= again ? rng.byte() : uint8_t{0};
                for (int x = 0; x < src.width(); ++x) src.at(x, y) = value;
            }
            const GuardedPlane8& ink = src;
            const GaussBell bell = makeGaussBell(radius, kSoftPeak);
            const GaussRange out{radius, radius + 10, 0, src.height()};
            expectJobDone(ink, {ink.view(), &bell, out, GaussRounding::Down, GaussRounding::Down}, strip);
        }
}

TEST(GaussLines, HorizontalPassAloneInBothRoundings) {
    Rng rng(kSeed + 4);
    for (int i = 0; i < 200; ++i) {
        const GuardedPlane8 src = test::randomCoverage(rng, rng.between(1, 300), rng.between(1, 40));
        const int radius = i < 101 ? i : rng.between(0, 400);
        const test::reference::Bell bell = test::reference::bell(radius, 100.0f);
        const int xStart = rng.between(-radius - 20, src.width() + radius), up = rng.between(0, 1);
        GuardedPlane8 want(rng.between(1, 200), src.height()), got(want.width(), src.height(), 7);
        for (int y = 0; y < want.height(); ++y)
            for (int x = 0; x < want.width(); ++x) {
                int64_t total = up != 0 ? bell.sum - 1 : 0;
                for (int d = -radius; d <= radius; ++d)
                    if (xStart + x + d >= 0 && xStart + x + d < src.width())
                        total += bell.at(d) * src.at(xStart + x + d, y);
                want.at(x, y) = static_cast<uint8_t>(total / bell.sum);
            }
        for (const BlurKernels& kernels : kernelsHere()) {
            const GaussPlan plan = makeGaussPlan(makeGaussBell(radius, kSoftPeak), *kernels.wide);
            std::vector<uint8_t> scratch =
                scratchOf(gaussLinesScratchBytes(plan.bell, src.width(), xStart, want.width()));
            gaussLinesPlane8(src.view(), plan, rounding(up != 0), xStart, scratch.data(), got.view());
            EXPECT_SAME_PLANE(want, got, "case", i, "radius", radius, kernels.wide->name);
        }
    }
}

TEST(GaussQuotient, DividesEverySumOfEveryRadius) {
    for (const int peak : {kSoftPeak, kGlowPeak})
        for (int radius = 0; radius <= 100; ++radius) {
            const GaussPlan plan = makeGaussPlan(makeGaussBell(radius, peak));
            const int32_t sum = plan.bell.sum;
            ASSERT_TRUE(plan.quotient.isSmall);
            // What rounding up adds included.
            for (int32_t total = 0; total < 256 * sum; ++total) {
                const float product = (static_cast<float>(total) + 0.5f) * plan.quotient.inverse;
                ASSERT_EQ(static_cast<int32_t>(product), total / sum) << radius << " " << total;
            }
        }
}

TEST(NarrowBell, DividesEverySum) {
    int wholes = 0, halves = 0, wrapping = 0;
    for (const int peak : {kSoftPeak, kGlowPeak})
        for (int radius = 0; radius <= NarrowBell::kMaxRadius; ++radius) {
            const GaussBell bell = makeGaussBell(radius, peak);
            const int index = narrowBellOf(bell);
            if (index < 0) continue;
            const NarrowBell narrow = makeNarrowBell(index);
            ASSERT_EQ(narrow.sum, bell.sum);
            const bool isHalved = radius > NarrowBell::kMaxWholeRadius;
            for (int total = 0; total < 256 * bell.sum; ++total) {
                const int n = isHalved ? total / 2 : total;
                const bool wraps = n > 65535;
                ASSERT_LE(wraps, narrow.mayWrap);
                const int rest = wraps ? n - 65536 + narrow.remainder : n;
                ASSERT_LE(rest, 65535);
                ASSERT_EQ(narrowQuotient(narrow, rest) + (wraps ? narrow.wrapped : 0), total / bell.sum)
                    << radius << " " << total;
            }
            ++(narrow.mayWrap ? wrapping : isHalved ? halves : wholes);
        }
    // All but those of radius 0 and 10 with the higher peak.
    EXPECT_EQ(wholes + halves + wrapping, kNarrowBells - 2);
    EXPECT_TRUE(wholes > 0 && halves > 0 && wrapping > 0) << wholes << " " << halves << " " << wrapping;
}

TEST(GaussTaps, EverySplitIsTheBell) {
    bool used[3] = {};
    for (const int peak : {kSoftPeak, kGlowPeak})
        for (int radius = 0; radius <= 300; ++radius) {
            const GaussBell bell = makeGaussBell(radius, peak);
            const GaussTaps taps = makeGaussTaps(bell);
            used[taps.highest] = true;
            // Heights by reach: as they stand, as steps, and as changes of the slope.
            std::vector<int> heights(static_cast<size_t>(radius) + 3);
            int level = 0, slope = 0;
            for (int k = 0; k <= radius + 2; ++k) {
                int parts[3] = {};
                for (int t = 0; t < taps.count; ++t)
                    if (taps.taps[t].distance == k) parts[taps.taps[t].source] += taps.taps[t].factor;
                slope += parts[GaussTaps::kSecondTotals];
                level += slope + parts[GaussTaps::kTotals];
                heights[static_cast<size_t>(k)] = level + parts[GaussTaps::kSamples];
            }
            std::vector<int> wanted(heights.size());
            for (int b = 0; b < bell.boxCount; ++b)
                wanted[static_cast<size_t>(bell.boxes[b].reach)] = bell.boxes[b].height;
            ASSERT_EQ(heights, wanted) << radius;
            ASSERT_LE(taps.count, bell.boxCount + GaussProgram::kSpareTaps) << radius;
        }
    EXPECT_TRUE(used[0] && used[1] && used[2]);
}

}  // namespace
}  // namespace QxFontEffect
