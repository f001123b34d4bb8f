#pragma once

#include <cstdint>

#include "pixel/QxBitmap.h"

namespace QxFontEffect {

/// Blend modes of `QxBlender`'s entries; every other value does nothing.
enum QxBlendMode : int {
    QXE_BLEND_SRC_OVER = 1,      ///< source over destination
    QXE_BLEND_DST_OVER = 2,      ///< destination over source: the source goes beneath
    QXE_BLEND_DST_OVER_NSA = 3,  ///< destination over, mask read as zero or not zero only
    QXE_BLEND_OTHER = 7,         ///< destination over, then the pixel scaled by the mask
};

/// Puts masks and colour images into a bitmap, clipped to it. Stateless.
///
/// Destinations of 4 bytes a pixel hold R, G, B, A in memory, premultiplied. A colour or a 32-bit source value holds
/// alpha in bits 24-31, red 16-23, green 8-15, blue 0-7. `x`, `y` place the source's top-left pixel in destination
/// pixels and may be anything; `maskStride` / `srcStride` count elements. Null destinations, pixels or sources, sizes
/// below 1, negative strides and destinations of another depth than the routine's do nothing. A source that lies in the
/// destination is read and drawn pixel by pixel, row by row from the left, which is slow.
class QxBlender {
public:
    static void drawBitmapBlend8(int x, int y, const QxBitmap* dst, unsigned char* mask, int maskWidth, int maskHeight,
                                 int maskStride, unsigned int color, int mode);

    static void drawBitmapBlend32(int x, int y, const QxBitmap* dst, unsigned int* src, int srcWidth, int srcHeight,
                                  int srcStride, int mode);

    /// Destination-over of a byte image, whatever `ignored` says. `srcStride` counts pixels.
    /// @param order  0: source bytes are R, G, B, A; 1: B, G, R, A. Others do nothing.
    static void drawBitmapBlend32(int x, int y, const QxBitmap* dst, unsigned char* src, int srcWidth, int srcHeight,
                                  int srcStride, int ignored, int order);

    /// Plain draw. Into 4 bytes a pixel: every pixel of the clipped mask rectangle becomes the colour with the mask as
    /// alpha, mask 0 included. Into 1 byte a pixel: the maximum of both.
    static void drawBitmap(int x, int y, const QxBitmap* dst, unsigned char* mask, int maskWidth, int maskHeight,
                           unsigned int color);
    static void drawBitmap(int x, int y, const QxBitmap* dst, QxBitmap* src, unsigned int color);
    static void drawBitmap8To32(int x, int y, const QxBitmap* dst, unsigned char* mask, int maskWidth, int maskHeight,
                                unsigned int color);
    static void drawBitmap8To8(int x, int y, const QxBitmap* dst, unsigned char* mask, int maskWidth, int maskHeight);

    static void blendSrcOver8To32(int x, int y, const QxBitmap* dst, unsigned char* mask, int maskWidth, int maskHeight,
                                  int maskStride, unsigned int color);
    static void blendDstOver8To32(int x, int y, const QxBitmap* dst, unsigned char* mask, int maskWidth, int maskHeight,
                                  int maskStride, unsigned int color);
    static void blendDstOver8To32NSA(int x, int y, const QxBitmap* dst, unsigned char* mask, int maskWidth,
                                     int maskHeight, int maskStride, unsigned int color);
    static void blendDstOverSA8To32(int x, int y, const QxBitmap* dst, unsigned char* mask, int maskWidth,
                                    int maskHeight, int maskStride, unsigned int color);
    static void blendDstOver32To32(int x, int y, const QxBitmap* dst, unsigned int* src, int srcWidth, int srcHeight,
                                   int srcStride);
    static void blendSrcOver32To32(int x, int y, const QxBitmap* dst, unsigned int* src, int srcWidth, int srcHeight,
                                   int srcStride);

    /// Exchanges bytes 0 and 2 (red and blue) of every 4-byte pixel.
    static void convertBGRAToARGB(QxBitmap* bitmap);
};

}  // namespace QxFontEffect
