#include "pixel/QxBlender.h"

#include "base/platform_log.h"
#include "pixel/kernel/clip.h"
#include "pixel/kernel/rows.h"

namespace QxFontEffect {
namespace {

constexpr char kTag[] = "Blender";

using MaskBlend = kernel::MaskBlendRow kernel::PixelRows::*;
using PixelBlend = kernel::PixelBlendRow kernel::PixelRows::*;

/// A source and where it goes. 64-bit, so that a bitmap's unsigned sides fit as well as any argument.
struct Placed {
    int64_t x;
    int64_t y;
    int64_t width;
    int64_t height;
    int64_t stride;  ///< elements from one source row to the next
};

/// True when `dst` has pixels of exactly `depth` bytes: the routines write no others.
bool hasPixels(const QxBitmap* dst, uint32_t depth) {
    return dst != nullptr && dst->pixels != nullptr && dst->bytesPerPixel == depth;
}

/// Bytes of the rows of a box, from the first to the end of the last.
struct Extent {
    Extent(const void* first, int64_t rows, int64_t rowStep, int64_t rowBytes)
        : begin(reinterpret_cast<uintptr_t>(first)),
          end(begin + static_cast<uintptr_t>((rows - 1) * rowStep + rowBytes)) {}

    bool meets(const Extent& other) const { return begin < other.end && other.begin < end; }

    uintptr_t begin, end;
};

/// Calls `row(source element, destination byte, pixels)` for each row of the source that meets the bitmap; pixel by
/// pixel where the source lies in the bitmap itself, since rows read some pixels ahead of what they write.
template <typename T, typename Row>
void forEachRow(const Placed& at, const T* src, int64_t elementsPerPixel, const QxBitmap& dst, Row row) {
    if (at.stride < 0) return;
    const kernel::ClippedBox box = kernel::clipToPlane(at.x, at.y, at.width, at.height, dst.width, dst.height);
    if (box.empty()) return;
    const int64_t depth = dst.bytesPerPixel;
    const T* from = src + (box.srcY * at.stride + box.srcX) * elementsPerPixel;
    uint8_t* to = dst.pixels + (box.dstY * dst.width + box.dstX) * depth;
    const int64_t fromStep = at.stride * elementsPerPixel, toStep = dst.width * depth;
    const Extent read(from, box.height, fromStep * int64_t{sizeof(T)},
                      box.width * elementsPerPixel * int64_t{sizeof(T)});
    const bool alone = !read.meets(Extent(to, box.height, toStep, box.width * depth));
    const int64_t step = alone ? box.width : 1;
    for (int64_t y = 0; y < box.height; ++y, from += fromStep, to += toStep)
        for (int64_t x = 0; x < box.width; x += step)
            row(from + x * elementsPerPixel, to + x * depth, static_cast<ptrdiff_t>(step));
}

void drawMask(const Placed& at, const QxBitmap* dst, const uint8_t* mask, uint32_t color, MaskBlend blend) {
    if (!hasPixels(dst, 4) || mask == nullptr) return;
    const kernel::MaskBlendRow blendRow = kernel::pixelRows().*blend;
    forEachRow(at, mask, 1, *dst,
               [=](const uint8_t* from, uint8_t* to, ptrdiff_t count) { blendRow(from, color, to, count); });
}

void drawMaximum(const Placed& at, const QxBitmap* dst, const uint8_t* mask) {
    if (!hasPixels(dst, 1) || mask == nullptr) return;
    forEachRow(at, mask, 1, *dst, kernel::pixelRows().maximum);
}

void drawColors(const Placed& at, const QxBitmap* dst, const uint8_t* src, PixelBlend blend) {
    if (!hasPixels(dst, 4) || src == nullptr) return;
    forEachRow(at, src, 4, *dst, kernel::pixelRows().*blend);
}

/// The plain draw, into whichever depth the destination has.
void drawPlain(const Placed& at, const QxBitmap* dst, const uint8_t* mask, uint32_t color) {
    drawMask(at, dst, mask, color, &kernel::PixelRows::draw8);
    drawMaximum(at, dst, mask);
}

/// Colour values are read as the bytes they lie in memory as: B, G, R, A on the little-endian processors we run on.
const uint8_t* bytesOf(const unsigned int* values) {
    return reinterpret_cast<const uint8_t*>(values);
}

}  // namespace

void QxBlender::drawBitmapBlend8(int x, int y, const QxBitmap* dst, unsigned char* mask, int maskWidth, int maskHeight,
                                 int maskStride, unsigned int color, int mode) {
    if (dst == nullptr || dst->pixels == nullptr || mask == nullptr) return;
    switch (mode) {
        case QXE_BLEND_SRC_OVER:
            blendSrcOver8To32(x, y, dst, mask, maskWidth, maskHeight, maskStride, color);
            break;
        case QXE_BLEND_DST_OVER:
            blendDstOver8To32(x, y, dst, mask, maskWidth, maskHeight, maskStride, color);
            break;
        case QXE_BLEND_DST_OVER_NSA:
            blendDstOver8To32NSA(x, y, dst, mask, maskWidth, maskHeight, maskStride, color);
            logDebug(kTag, "Blender - QXE_BLEND_DST_OVER_NSA");
            break;
        case QXE_BLEND_OTHER:
            blendDstOverSA8To32(x, y, dst, mask, maskWidth, maskHeight, maskStride, color);
            logDebug(kTag, "Blender - QXE_BLEND_OTHER");
            break;
        default:
            break;
    }
}

void QxBlender::drawBitmapBlend32(int x, int y, const QxBitmap* dst, unsigned int* src, int srcWidth, int srcHeight,
                                  int srcStride, int mode) {
    if (mode == QXE_BLEND_DST_OVER) blendDstOver32To32(x, y, dst, src, srcWidth, srcHeight, srcStride);
    if (mode == QXE_BLEND_SRC_OVER) blendSrcOver32To32(x, y, dst, src, srcWidth, srcHeight, srcStride);
}

void QxBlender::drawBitmapBlend32(int x, int y, const QxBitmap* dst, unsigned char* src, int srcWidth, int srcHeight,
                                  int srcStride, int /*ignored*/, int order) {
    const Placed at{x, y, srcWidth, srcHeight, srcStride};
    if (order == 0) drawColors(at, dst, src, &kernel::PixelRows::dstOver32Rgba);
    if (order == 1) drawColors(at, dst, src, &kernel::PixelRows::dstOver32);
}

void QxBlender::drawBitmap(int x, int y, const QxBitmap* dst, unsigned char* mask, int maskWidth, int maskHeight,
                           unsigned int color) {
    drawPlain({x, y, maskWidth, maskHeight, maskWidth}, dst, mask, color);
}

void QxBlender::drawBitmap(int x, int y, const QxBitmap* dst, QxBitmap* src, unsigned int color) {
    if (src == nullptr || src->bytesPerPixel == 0) return;
    drawPlain({x, y, src->width, src->height, src->width}, dst, src->pixels, color);
}

void QxBlender::drawBitmap8To32(int x, int y, const QxBitmap* dst, unsigned char* mask, int maskWidth, int maskHeight,
                                unsigned int color) {
    drawMask({x, y, maskWidth, maskHeight, maskWidth}, dst, mask, color, &kernel::PixelRows::draw8);
}

void QxBlender::drawBitmap8To8(int x, int y, const QxBitmap* dst, unsigned char* mask, int maskWidth, int maskHeight) {
    drawMaximum({x, y, maskWidth, maskHeight, maskWidth}, dst, mask);
}

void QxBlender::blendSrcOver8To32(int x, int y, const QxBitmap* dst, unsigned char* mask, int maskWidth, int maskHeight,
                                  int maskStride, unsigned int color) {
    drawMask({x, y, maskWidth, maskHeight, maskStride}, dst, mask, color, &kernel::PixelRows::srcOver8);
}

void QxBlender::blendDstOver8To32(int x, int y, const QxBitmap* dst, unsigned char* mask, int maskWidth, int maskHeight,
                                  int maskStride, unsigned int color) {
    drawMask({x, y, maskWidth, maskHeight, maskStride}, dst, mask, color, &kernel::PixelRows::dstOver8);
}

void QxBlender::blendDstOver8To32NSA(int x, int y, const QxBitmap* dst, unsigned char* mask, int maskWidth,
                                     int maskHeight, int maskStride, unsigned int color) {
    drawMask({x, y, maskWidth, maskHeight, maskStride}, dst, mask, color, &kernel::PixelRows::dstOverNsa8);
}

void QxBlender::blendDstOverSA8To32(int x, int y, const QxBitmap* dst, unsigned char* mask, int maskWidth,
                                    int maskHeight, int maskStride, unsigned int color) {
    drawMask({x, y, maskWidth, maskHeight, maskStride}, dst, mask, color, &kernel::PixelRows::dstOverSa8);
}

void QxBlender::blendDstOver32To32(int x, int y, const QxBitmap* dst, unsigned int* src, int srcWidth, int srcHeight,
                                   int srcStride) {
    drawColors({x, y, srcWidth, srcHeight, srcStride}, dst, bytesOf(src), &kernel::PixelRows::dstOver32);
}

void QxBlender::blendSrcOver32To32(int x, int y, const QxBitmap* dst, unsigned int* src, int srcWidth, int srcHeight,
                                   int srcStride) {
    drawColors({x, y, srcWidth, srcHeight, srcStride}, dst, bytesOf(src), &kernel::PixelRows::srcOver32);
}

void QxBlender::convertBGRAToARGB(QxBitmap* bitmap) {
    if (!hasPixels(bitmap, 4)) return;
    kernel::pixelRows().swapRedBlue(bitmap->pixels, static_cast<ptrdiff_t>(bitmap->width) * bitmap->height);
}

}  // namespace QxFontEffect
