#pragma once

#include <cstddef>
#include <cstdint>

/// Row kernels of the pixel layer: what happens to each pixel of one row.
///
/// All of them take `count` pixels, do nothing for a count below 1, and want their buffers apart. Pixels are 4 bytes
/// R, G, B, A, premultiplied, and need no alignment. Masks and coverage are one byte a pixel. A `color` holds alpha in
/// bits 24-31, red 16-23, green 8-15, blue 0-7.
///
/// The arithmetic is integer: a product of two 8-bit values is ((u + 1) * v) >> 8, so that 255 is exactly one on the
/// side that carries the + 1, and a sum that passes 255 stays there. Which side carries it differs from kernel to
/// kernel and is part of the pixels.
namespace QxFontEffect::kernel {

using MaskBlendRow = void (*)(const uint8_t* mask, uint32_t color, uint8_t* dst, ptrdiff_t count);
using PixelBlendRow = void (*)(const uint8_t* src, uint8_t* dst, ptrdiff_t count);

struct PixelRows {
    const char* name;  ///< of the instructions it is made of

    /// Source over destination. The colour's channels are scaled by the mask, not by its alpha times the mask: the
    /// colour is expected premultiplied. Where that alpha comes out as 0 the pixel stays.
    MaskBlendRow srcOver8;

    /// Destination over source: the colour, scaled by the mask, goes beneath.
    MaskBlendRow dstOver8;

    /// Destination over source with the full colour wherever the mask is not 0. The mask's value comes in later, when
    /// the layer is composed by coverage.
    MaskBlendRow dstOverNsa8;

    /// Destination over source, then the pixel scaled by the mask, which clips earlier layers to the mask's edge.
    /// Pixels where the mask is 0 stay; empty pixels take the scaled colour without a second scaling.
    MaskBlendRow dstOverSa8;

    /// Overwrites with the colour's channels and the mask times its alpha, mask 0 included.
    MaskBlendRow draw8;

    /// Keeps the larger of mask and destination, both one byte a pixel.
    PixelBlendRow maximum;

    /// Destination over source. Source pixels are bytes B, G, R, A: a colour value as it lies in memory.
    PixelBlendRow dstOver32;

    /// The same with source pixels in the destination's order.
    PixelBlendRow dstOver32Rgba;

    /// Source over destination, source bytes B, G, R, A.
    PixelBlendRow srcOver32;

    /// Exchanges bytes 0 and 2 of every pixel in place.
    void (*swapRedBlue)(uint8_t* pixels, ptrdiff_t count);

    /// See layers.h; `textAlpha` is 0..255 here.
    void (*compositeLayer)(const uint8_t* layer, const uint8_t* coverage, uint8_t* picture, ptrdiff_t count);
    void (*unpremultiply)(int textAlpha, uint8_t* picture, ptrdiff_t count);
};

/// The fastest rows this processor can run. All give the same bytes.
const PixelRows& pixelRows();

/// What every processor of the architecture runs.
extern const PixelRows kPortableRows;

/// Null where the build has no such form. Only for processors with AVX2.
extern const PixelRows* const kAvx2Rows;

}  // namespace QxFontEffect::kernel
