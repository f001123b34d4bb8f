#pragma once

#include <cstddef>
#include <cstdint>

/// Row kernels of the blender: what happens to each pixel of one row.
///
/// All of them take `count` pixels, do nothing for a count below 1, and want source and destination apart. Pixels of
/// the destination are 4 bytes R, G, B, A, premultiplied; they need no alignment. Masks are one byte a pixel. A
/// `color` holds alpha in bits 24-31, red 16-23, green 8-15, blue 0-7.
///
/// The arithmetic is integer: a product of two 8-bit values is ((u + 1) * v) >> 8, so that 255 is exactly one on the
/// side that carries the + 1, and a sum that passes 255 stays there. Which side carries it differs from kernel to
/// kernel and is part of the pixels.
namespace QxFontEffect::kernel {

/// Source over destination. The colour's channels are scaled by the mask, not by its alpha times the mask: the colour
/// is expected premultiplied. Where that alpha comes out as 0 the pixel stays.
void blendSrcOverRow8To32(const uint8_t* mask, uint32_t color, uint8_t* dst, ptrdiff_t count);

/// Destination over source: the colour, scaled by the mask, goes beneath.
void blendDstOverRow8To32(const uint8_t* mask, uint32_t color, uint8_t* dst, ptrdiff_t count);

/// Destination over source with the full colour wherever the mask is not 0. The mask's value comes in later, when the
/// layer is composed by coverage.
void blendDstOverNsaRow8To32(const uint8_t* mask, uint32_t color, uint8_t* dst, ptrdiff_t count);

/// Destination over source, then the pixel scaled by the mask, which clips earlier layers to the mask's edge. Pixels
/// where the mask is 0 stay; empty pixels take the scaled colour without a second scaling.
void blendDstOverSaRow8To32(const uint8_t* mask, uint32_t color, uint8_t* dst, ptrdiff_t count);

/// Overwrites with the colour's channels and the mask times its alpha, mask 0 included.
void drawRow8To32(const uint8_t* mask, uint32_t color, uint8_t* dst, ptrdiff_t count);

/// The larger of mask and destination, both one byte a pixel.
void drawRow8To8(const uint8_t* mask, uint8_t* dst, ptrdiff_t count);

/// Destination over source. Source pixels are bytes B, G, R, A: a colour as it lies in memory.
void blendDstOverRow32(const uint8_t* bgra, uint8_t* dst, ptrdiff_t count);

/// The same with source pixels in the destination's order R, G, B, A.
void blendDstOverRow32Rgba(const uint8_t* rgba, uint8_t* dst, ptrdiff_t count);

/// Source over destination, source bytes B, G, R, A.
void blendSrcOverRow32(const uint8_t* bgra, uint8_t* dst, ptrdiff_t count);

}  // namespace QxFontEffect::kernel
