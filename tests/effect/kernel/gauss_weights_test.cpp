#include "effect/kernel/gauss_weights.h"

#include <gtest/gtest.h>

#include <vector>

#include "support/reference/gauss_reference.h"

namespace QxFontEffect {
namespace {

std::vector<int> weightsOf(int radius, int peak) {
    std::vector<int> weights;
    for (int d = 0; d <= radius; ++d) weights.push_back(gaussWeight(radius, peak, d));
    return weights;
}

TEST(GaussWeights, AgreeWithTheCLibraryForEveryRadiusInUse) {
    for (const int peak : {kSoftPeak, kGlowPeak})
        for (int radius = 0; radius <= 4096; ++radius)
            ASSERT_EQ(weightsOf(radius, peak), test::reference::bell(radius, static_cast<float>(peak)).weights)
                << "radius " << radius << " peak " << peak;
}

TEST(GaussWeights, ArePinned) {
    const struct {
        int radius;
        int peak;
        std::vector<int> wanted;
    } rows[] = {
        {0, kSoftPeak, {100}},
        {1, kSoftPeak, {100, 1}},
        {2, kSoftPeak, {100, 32, 1}},
        {5, kSoftPeak, {100, 83, 48, 19, 5, 1}},
        {10, kSoftPeak, {100, 95, 83, 66, 48, 32, 19, 10, 5, 2, 1}},
        {1, kGlowPeak, {128, 1}},
        {9, kGlowPeak, {128, 121, 102, 77, 52, 31, 17, 8, 3, 1}},
    };
    for (const auto& row : rows) EXPECT_EQ(weightsOf(row.radius, row.peak), row.wanted) << row.radius;

    // One checksum (FNV-1a) over the radii 0..100 per scale, so that no library and no compiler changes a weight.
    const auto checksum = [](int peak) {
        uint64_t hash = 0xcbf29ce484222325u;
        for (int radius = 0; radius <= 100; ++radius)
            for (const int weight : weightsOf(radius, peak))
                hash = (hash ^ static_cast<uint64_t>(weight)) * 0x100000001b3u;
        return hash;
    };
    EXPECT_EQ(checksum(kSoftPeak), 0x5cb3999ed9e6be11u);
    EXPECT_EQ(checksum(kGlowPeak), 0x8f424f559679f366u);
}

TEST(GaussWeights, BoxesAddUpToTheBell) {
    for (const int peak : {kSoftPeak, kGlowPeak})
        for (const int radius : {0, 1, 2, 3, 17, 100, 999, kMaxGaussRadius}) {
            const GaussBell bell = makeGaussBell(radius, peak);
            int64_t sum = 0;
            int reached = -1, left = peak;
            ASSERT_LE(bell.boxCount, peak);
            for (int b = 0; b < bell.boxCount; ++b) {
                const GaussBell::Box box = bell.boxes[b];
                EXPECT_GT(box.reach, reached);
                EXPECT_GT(box.height, 0);
                EXPECT_EQ(gaussWeight(radius, peak, box.reach), left) << radius << " " << box.reach;
                EXPECT_EQ(gaussWeight(radius, peak, reached + 1), left);
                reached = box.reach;
                left -= box.height;
                sum += int64_t{box.height} * (2 * box.reach + 1);
            }
            EXPECT_EQ(reached, radius);
            EXPECT_EQ(left, 0);
            EXPECT_EQ(bell.sum, sum);
            EXPECT_LT(sum * 255, int64_t{1} << 31);
        }
}

}  // namespace
}  // namespace QxFontEffect
