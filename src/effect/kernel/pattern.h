#pragma once

#include <cstdint>

namespace QxFontEffect {
namespace kernel {

/// An image that is repeated as tiles: 4 bytes a pixel, alpha, red, green, blue in memory, rows packed. Sides are at
/// least 1 and less than 2^30.
struct PatternImage {
    const uint8_t* pixels;
    int32_t width;
    int32_t height;
};

/// Where a column of the scaled tile falls in the image: between columns `first` and `second`, which is column 0
/// behind the last one. Rows alike.
struct PatternTap {
    int32_t first;
    int32_t second;
    uint32_t weight;  ///< of `second`, 0..254; `first` has 255 minus it
};

/// The tap at `position` pixels into the scaled tile.
///
/// @param position   0 to the tile's side minus 1.
/// @param scale      tile pixels per image pixel, above 0, may be infinite.
/// @param imageSide  columns or rows of the image.
PatternTap patternTap(int32_t position, float scale, int32_t imageSide);

/// Draws a span of one row of the scaled tile, bilinear and premultiplied.
///
/// The weights of the four neighbours add up to 255 * 255 and the sum is divided by 65536: full white comes out as
/// 253. The slight darkening is part of the look.
///
/// @param row      tap of the tile row.
/// @param columns  taps of the `count` columns.
/// @param alphas   256 entries: the alpha byte with the fill's opacity applied, by the sampled alpha.
/// @param dst      `count` values A 24-31, R 16-23, G 8-15, B 0-7; must not overlap the image.
void patternSpan(const PatternImage& image, const PatternTap& row, const PatternTap* columns, const uint8_t* alphas,
                 int32_t count, uint32_t* dst);

}  // namespace kernel
}  // namespace QxFontEffect
