#pragma once

#include <cstdint>

#include "pixel/QxRect.h"

namespace QxFontEffect {

/// The one pixel container: tightly packed rows of `width * bytesPerPixel` bytes, owned.
///
/// Coverage masks have 1 byte a pixel, colour pictures 4. Nothing here reports errors: a bitmap whose memory could
/// not be had, or whose size in bytes does not fit 32 bits, keeps its dimensions and has null `pixels`. Every user
/// tests `pixels`.
class QxBitmap {
public:
    /// An empty bitmap: 0 x 0, format 4, depth 0, no pixels.
    QxBitmap();

    /// A zero-filled bitmap of `w` x `h` pixels of `depth` bytes.
    QxBitmap(unsigned int w, unsigned int h, unsigned int depth);

    /// The same with `w * h * depth` bytes copied from `data`, which stays the caller's.
    /// A null `data` leaves the pixels zero.
    QxBitmap(unsigned int w, unsigned int h, unsigned char* data, unsigned int depth);

    /// A deep copy.
    QxBitmap(const QxBitmap& other);

    /// Cuts `rect` out of an 8-bit source. One byte is moved per pixel at a byte stride of the width whatever the
    /// depth is, because only coverage is ever cut. A reversed rectangle gives a bitmap of the absolute size; what no
    /// source byte was copied to is left undefined (bytes outside the source are never read).
    QxBitmap(const QxBitmap& source, QxRect* rect);

    /// Drops the old buffer, then copies the other's size, format and bytes. Self-assignment changes nothing.
    QxBitmap& operator=(const QxBitmap& other);

    virtual ~QxBitmap();

    uint32_t width;
    uint32_t height;
    uint8_t* pixels;         ///< owned; null when empty or when its memory could not be had
    uint32_t format;         ///< 1 for 4 bytes a pixel, 2 for any other depth, 4 when empty; stored, never interpreted
    uint32_t bytesPerPixel;  ///< 1 coverage, 4 colour, 0 empty
};

}  // namespace QxFontEffect
