#pragma once

#include <cstddef>
#include <cstdint>

/// The last two steps of a picture: layers are joined by coverage, then premultiplied colour becomes straight colour.
/// Bitmaps are packed, so a "row" may be the whole picture: `count` pixels, nothing for a count below 1. Pixels are
/// 4 bytes with alpha last; buffers must not overlap and need no alignment.
namespace QxFontEffect::kernel {

/// Shows `picture` inside the glyphs and `layer` outside, weighted by the coverage byte of each pixel:
/// ((layer + 1) * (255 - c) >> 8) + ((picture + 1) * c >> 8) for each of the four bytes.
void compositeLayerRow(const uint8_t* layer, const uint8_t* coverage, uint8_t* picture, ptrdiff_t count);

/// Scales `picture` by the alpha of the text colour and divides its colour by the resulting alpha.
///
/// @param textAlpha  0..255. Other values are possible, -1 when no text colour was ever given; the same formula holds
///                   for them and what comes out is cut to bytes.
void unpremultiplyRow(int32_t textAlpha, uint8_t* picture, ptrdiff_t count);

/// Both steps in one walk over memory. A null `layer` or `coverage` leaves the first one out.
void composeLayers(const uint8_t* layer, const uint8_t* coverage, int32_t textAlpha, uint8_t* picture, ptrdiff_t count);

}  // namespace QxFontEffect::kernel
