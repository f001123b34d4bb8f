#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "effect/band_heights.h"
#include "effect/exact_distances.h"
#include "effect/outline_distances.h"
#include "support/planes.h"
#include "support/reference/bevel_reference.h"

namespace QxFontEffect {
namespace {

using test::GuardedPlane8;
using test::GuardedPlaneF;
using test::Rng;

std::vector<const DistanceKernels*> kernelsHere() {
    std::vector<const DistanceKernels*> all{&distanceKernelsPortable()};
    if (distanceKernelsAvx2() != nullptr) all.push_back(distanceKernelsAvx2());
    return all;
}

GuardedPlane8 randomInk(Rng& rng, int width, int height) {
    if (rng.oneIn(4)) return test::randomCoverage(rng, width, height);
    // Solid stretches with edges, as letters have them.
    GuardedPlane8 plane(width, height);
    for (int shape = 0; shape < 4; ++shape) {
        const float cx = static_cast<float>(rng.between(0, width)), cy = static_cast<float>(rng.between(0, height));
        const float radius = 1.0f + 20.0f * rng.unit();
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                const float inside = radius - std::hypot(static_cast<float>(x) - cx, static_cast<float>(y) - cy);
                const float cover = 255.0f * std::clamp(inside + 0.5f, 0.0f, 1.0f);
                plane.at(x, y) = std::max(plane.at(x, y), static_cast<uint8_t>(cover));
            }
    }
    return plane;
}

// A map that sees part of the ink, all of it or none, and a plane around both that the plain loops work on.
struct Scene {
    Scene(Rng& rng, int mapWidth, int reach)
        : width(mapWidth), height(rng.between(1, 40)), plane(randomInk(rng, rng.between(1, 70), rng.between(1, 40))) {
        ink = {static_cast<const GuardedPlane8&>(plane).view(), rng.between(-60, width), rng.between(-30, height)};
        left = std::min(ink.x, 0) - reach - 1;
        top = std::min(ink.y, 0) - reach - 1;
        wholeWidth = std::max(ink.x + plane.width(), width) + reach + 1 - left;
        wholeHeight = std::max(ink.y + plane.height(), height) + reach + 1 - top;
    }

    uint8_t coverageAt(int x, int y) const {
        const int u = x + left - ink.x, v = y + top - ink.y;
        const bool within = u >= 0 && v >= 0 && u < plane.width() && v < plane.height();
        return within ? static_cast<const GuardedPlane8&>(plane).at(u, v) : uint8_t{0};
    }

    GuardedPlaneF cut(const std::vector<float>& whole) const {
        GuardedPlaneF map(width, height);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                map.at(x, y) = whole[static_cast<size_t>((y - top) * wholeWidth + x - left)];
        return map;
    }

    int width, height;
    GuardedPlane8 plane;
    PlacedInk ink;
    int left, top, wholeWidth, wholeHeight;
};

/// What `start` makes of the coverage, everywhere the ink or the map is.
template <typename Start>
std::vector<float> wholeMap(const Scene& scene, Start start) {
    std::vector<float> whole;
    for (int y = 0; y < scene.wholeHeight; ++y)
        for (int x = 0; x < scene.wholeWidth; ++x) whole.push_back(start(scene.coverageAt(x, y)));
    return whole;
}

GuardedPlaneF exactMap(const Scene& scene, bool inside, int radius) {
    std::vector<float> whole = wholeMap(scene, [&](uint8_t ink) { return (ink != 0) != inside ? 0.0f : 1e20f; });
    test::reference::exactDistances(whole, scene.wholeWidth, scene.wholeHeight, static_cast<float>(radius));
    return scene.cut(whole);
}

GuardedPlaneF outlineMap(const Scene& scene, bool inside, int radius) {
    std::vector<float> whole =
        wholeMap(scene, [&](uint8_t ink) { return test::reference::outlineStart(ink, inside, radius); });
    test::reference::refine(whole.data(), scene.wholeWidth, scene.wholeHeight, radius, 0, scene.wholeHeight);
    return scene.cut(whole);
}

GuardedPlaneF allRows(HeightRows& rows, int width, int height) {
    EXPECT_TRUE(rows.ready());
    GuardedPlaneF map(width, height);
    const int whole = (width + kDistanceBlock - 1) / kDistanceBlock * kDistanceBlock;
    GuardedPlaneF row(whole, 1);
    for (int y = 0; y < height && rows.ready(); ++y) {
        rows.next(row.view().data);
        std::copy_n(row.view().data, width, map.view().row(y));
    }
    EXPECT_TRUE(row.guardsIntact());
    return map;
}

TEST(Heights, ExactDistancesEqualThePlainTransform) {
    Rng rng(1);
    int plainMaps = 0;
    for (int width = 1; width <= 67; ++width)
        for (const int radius : {1, 2, 11, rng.between(3, 60), kMaxSearchRadius}) {
            const Scene scene(rng, width, radius);
            const bool inside = rng.oneIn(2);
            const GuardedPlaneF want = exactMap(scene, inside, radius);
            for (const DistanceKernels* kernels : kernelsHere()) {
                ExactDistances rows(scene.ink, inside, radius, scene.width, scene.height, *kernels);
                ASSERT_TRUE(test::samePlane(want, allRows(rows, scene.width, scene.height), kernels->name, "width",
                                            width, "radius", radius, "inside", inside));
            }
            // The plain form sees nothing beyond its map: it takes one with a blank edge.
            const bool within = scene.ink.x >= 1 && scene.ink.y >= 1 && scene.ink.x + scene.plane.width() < width &&
                                scene.ink.y + scene.plane.height() < scene.height;
            if (!within) continue;
            ++plainMaps;
            PlainDistances plain(scene.ink, inside, radius, scene.width, scene.height);
            EXPECT_SAME_PLANE(want, allRows(plain, scene.width, scene.height), "plain, width", width);
        }
    EXPECT_GT(plainMaps, 0);
}

TEST(Heights, OutlineDistancesEqualTheFullSearchBothWays) {
    Rng rng(2);
    for (int width = 1; width <= 67; ++width)
        for (const int radius : {1, 3, rng.between(4, 20), width % 16 == 0 ? 40 : 9}) {
            const Scene scene(rng, width, radius);
            const bool inside = rng.oneIn(2);
            const GuardedPlaneF want = outlineMap(scene, inside, radius);
            for (const DistanceKernels* kernels : kernelsHere()) {
                FarOutlineDistances far(scene.ink, inside, radius, scene.width, scene.height, *kernels);
                ASSERT_TRUE(test::samePlane(want, allRows(far, scene.width, scene.height), kernels->name, "far, width",
                                            width, "radius", radius, "inside", inside));
                if (radius > NearOutlineDistances::kMaxRadius) continue;
                NearOutlineDistances near(scene.ink, inside, radius, scene.width, scene.height, *kernels);
                ASSERT_TRUE(test::samePlane(want, allRows(near, scene.width, scene.height), kernels->name,
                                            "near, width", width, "radius", radius, "inside", inside));
            }
        }
}

// Part of a pixel that lies where (x - cx) * nx + (y - cy) * ny < 0, by counting.
uint8_t halfPlaneCoverage(int x, int y, double cx, double cy, double nx, double ny) {
    constexpr int kSteps = 32;
    int covered = 0;
    for (int j = 0; j < kSteps; ++j)
        for (int i = 0; i < kSteps; ++i) {
            const double px = x + (i + 0.5) / kSteps - 0.5, py = y + (j + 0.5) / kSteps - 0.5;
            if ((px - cx) * nx + (py - cy) * ny < 0) ++covered;
        }
    return static_cast<uint8_t>(std::lround(255.0 * covered / (kSteps * kSteps)));
}

TEST(Heights, BandAlongAStraightEdgeIsAStraightSlopeAtEveryAngle) {
    const int side = 61;
    const float half = 8.0f;
    for (int degrees = 0; degrees < 360; degrees += 7) {
        const double nx = std::cos(degrees * 0.0174532925), ny = std::sin(degrees * 0.0174532925);
        const double cx = 30.3, cy = 29.8;
        GuardedPlane8 plane(side, side);
        for (int y = 0; y < side; ++y)
            for (int x = 0; x < side; ++x) plane.at(x, y) = halfPlaneCoverage(x, y, cx, cy, nx, ny);
        const PlacedInk ink{static_cast<const GuardedPlane8&>(plane).view(), 0, 0};
        BandHeights rows(ink, half, side, side);
        const GuardedPlaneF map = allRows(rows, side, side);
        for (int y = 16; y < side - 16; ++y)
            for (int x = 16; x < side - 16; ++x) {
                const double distance = (x - cx) * nx + (y - cy) * ny;
                const double want = std::clamp(distance + half, 0.0, 2.0 * half);
                ASSERT_NEAR(want, map.at(x, y), 0.1) << degrees << " degrees at " << x << ", " << y;
            }
    }
}

TEST(Heights, BandIsTheSameOnEveryPathAndInEveryPart) {
    Rng rng(4);
    for (int round = 0; round < 60; ++round) {
        const float half = 0.3f + 12.0f * rng.unit();
        const Scene scene(rng, rng.between(1, 67), 1);
        // The ink shifted into a map around everything, and that map's part where the scene's map lies.
        const PlacedInk shifted{scene.ink.coverage, scene.ink.x - scene.left, scene.ink.y - scene.top};
        BandHeights whole(shifted, half, scene.wholeWidth, scene.wholeHeight, distanceKernelsPortable());
        const GuardedPlaneF wholeMap = allRows(whole, scene.wholeWidth, scene.wholeHeight);
        for (const DistanceKernels* kernels : kernelsHere()) {
            BandHeights rows(scene.ink, half, scene.width, scene.height, *kernels);
            const GuardedPlaneF map = allRows(rows, scene.width, scene.height);
            for (int y = 0; y < scene.height; ++y)
                for (int x = 0; x < scene.width; ++x)
                    ASSERT_EQ(wholeMap.at(x - scene.left, y - scene.top), map.at(x, y))
                        << kernels->name << " round " << round << " at " << x << ", " << y;
        }
    }
}

}  // namespace
}  // namespace QxFontEffect
