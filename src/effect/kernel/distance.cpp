#include "effect/kernel/distance.h"

#include <algorithm>

#include "effect/kernel/sqrt_table.h"

namespace QxFontEffect {
namespace {

inline float squareOf(int value) {
    return static_cast<float>(int64_t{value} * value);
}

// Where the parabolas of two samples cross.
inline float crossing(const float* f, int right, int left) {
    return ((f[right] + squareOf(right)) - (f[left] + squareOf(left))) /
           static_cast<float>(2 * int64_t{right} - 2 * int64_t{left});
}

inline int32_t squaredDistance(int64_t dy, int64_t dx) {
    return static_cast<int32_t>(std::min<int64_t>(dy * dy + dx * dx, INT32_MAX));
}

float refined(const PlaneF& map, int radius, int x, int y) {
    float value = map.row(y)[x];
    const int left = std::max(x - radius, 0), right = std::min(x + radius, map.width - 1);
    const int top = std::max(y - radius, 0), bottom = std::min(y + radius, map.height - 1);
    for (int row = top; row <= bottom; ++row)
        for (int column = left; column <= right; ++column) {
            const float neighbour = map.row(row)[column];
            if (!(neighbour < 1.0f)) continue;
            value = std::min(value, neighbour + roundedIntSqrt(squaredDistance(row - y, column - x)));
        }
    return value;
}

uint8_t coverageAt(const PlacedInk& ink, int x, int y) {
    const int column = x - ink.x, row = y - ink.y;
    const bool covered = column >= 0 && row >= 0 && column < ink.coverage.width && row < ink.coverage.height;
    return covered ? ink.coverage.row(row)[column] : uint8_t{0};
}

}  // namespace

void squaredDistanceLine(const float* f, int count, int* vertices, float* boundaries, float* dst) {
    if (count < 1) return;
    int k = 0;
    vertices[0] = 0;
    boundaries[0] = -kFarSquared;
    boundaries[1] = kFarSquared;
    for (int q = 1; q < count; ++q) {
        float s = crossing(f, q, vertices[k]);
        // The first boundary is below every crossing of finite samples; k > 0 holds the others off.
        while (k > 0 && s <= boundaries[k]) s = crossing(f, q, vertices[--k]);
        vertices[++k] = q;
        boundaries[k] = s;
        boundaries[k + 1] = kFarSquared;
    }
    k = 0;
    for (int q = 0; q < count; ++q) {
        while (boundaries[k + 1] < static_cast<float>(q)) ++k;
        dst[q] = f[vertices[k]] + squareOf(q - vertices[k]);
    }
}

void refineDistances(PlaneF map, int radius, int rowStart, int rowEnd) {
    radius = std::min(radius, std::max(map.width, map.height));
    for (int y = rowStart; y < rowEnd; ++y)
        for (int x = 0; x < map.width; ++x)
            if (map.row(y)[x] != 0.0f) map.row(y)[x] = refined(map, radius, x, y);
}

int64_t exactDistanceScratchBytes(int width, int height) {
    return (4 * int64_t{std::max(width, height)} + 1) * static_cast<int64_t>(sizeof(float));
}

void exactDistances(const PlacedInk& ink, bool inside, int radius, void* scratch, PlaneF map) {
    const ptrdiff_t longer = std::max(map.width, map.height);
    float* samples = static_cast<float*>(scratch);
    float* squares = samples + longer;
    float* boundaries = squares + longer;
    int* vertices = reinterpret_cast<int*>(boundaries + longer + 1);

    for (int x = 0; x < map.width; ++x) {
        for (int y = 0; y < map.height; ++y) samples[y] = (coverageAt(ink, x, y) != 0) != inside ? 0.0f : kFarSquared;
        squaredDistanceLine(samples, map.height, vertices, boundaries, squares);
        for (int y = 0; y < map.height; ++y) map.row(y)[x] = squares[y];
    }
    const float limit = static_cast<float>(radius);
    for (int y = 0; y < map.height; ++y) {
        float* row = map.row(y);
        squaredDistanceLine(row, map.width, vertices, boundaries, squares);
        for (int x = 0; x < map.width; ++x)
            row[x] = squares[x] <= 0.0f ? 0.0f : squares[x] > limit * limit ? limit : fsqrt(squares[x]);
    }
}

}  // namespace QxFontEffect
