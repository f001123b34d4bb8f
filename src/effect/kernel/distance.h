#pragma once

#include <cstdint>

#include "pixel/plane.h"

namespace QxFontEffect {

/// A squared distance that stands for "no pixel of the set on this line".
constexpr float kFarSquared = 1e20f;

/// Exact squared Euclidean distance transform of one line: dst[q] = min over v of f[v] + (q - v)^2.
///
/// The lower envelope of parabolas rooted at (v, f[v]), one pass to build it and one to read it off. Single
/// precision: on lines of several thousand samples the crossings are rounded, and the order of the operations decides
/// which of two almost equal parabolas is read.
///
/// Source: Felzenszwalb and Huttenlocher, Distance Transforms of Sampled Functions.
///
/// @param f           `count` samples; kFarSquared where the set has no pixel.
/// @param vertices    scratch of `count` elements.
/// @param boundaries  scratch of `count` + 1 elements.
/// @param dst         `count` elements, must not overlap f.
void squaredDistanceLine(const float* f, int count, int* vertices, float* boundaries, float* dst);

/// Refines a map of distances in place: every value becomes the least of itself and value + distance over its
/// neighbours below 1, up to `radius` columns and rows away. Distances are rounded to thousandths.
///
/// Pixels are visited in raster order and read what was written before. Values from 0 up to 1 say where inside a pixel
/// the outline lies; they never change.
///
/// @param rowStart, rowEnd  rows that are refined, the far one excluded; neighbours are read from the whole map.
void refineDistances(PlaneF map, int radius, int rowStart, int rowEnd);

/// Coverage as it lies on a map of distances; everything around it counts as 0.
struct PlacedInk {
    ConstPlane8 coverage;
    int x, y;  ///< of its first sample, in the map
};

/// Exact distances, up to `radius`, from the pixels that have any coverage or, with `inside`, from those that have
/// none. 0 on these pixels; elsewhere the fast square root of the squared distance.
///
/// @param scratch  exactDistanceScratchBytes(map width, map height) bytes, aligned for a float.
/// @param map      written.
void exactDistances(const PlacedInk& ink, bool inside, int radius, void* scratch, PlaneF map);

int64_t exactDistanceScratchBytes(int width, int height);

}  // namespace QxFontEffect
