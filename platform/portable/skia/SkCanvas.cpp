#include "SkCanvas.h"

#include <cmath>
#include <cstring>

#include "glyph_mask.h"
#include "pixel_math.h"
#include "unpremul_blend.h"

using portable::RgbaPixel;

namespace {

bool isCoverage(const SkBitmap& bitmap) {
    return bitmap.colorType() == kAlpha_8_SkColorType;
}

bool isColor(const SkBitmap& bitmap) {
    return bitmap.colorType() == kRGBA_8888_SkColorType && bitmap.alphaType() == kUnpremul_SkAlphaType;
}

RgbaPixel readPixel(const uint8_t* at) {
    RgbaPixel pixel;
    std::memcpy(&pixel, at, sizeof pixel);
    return pixel;
}

void writePixel(RgbaPixel pixel, uint8_t* at) {
    std::memcpy(at, &pixel, sizeof pixel);
}

void blendPixel(RgbaPixel source, SkBlendMode mode, uint8_t* at) {
    if (mode == SkBlendMode::kClear)
        writePixel({0, 0, 0, 0}, at);
    else if (mode == SkBlendMode::kSrc)
        writePixel(source, at);
    else
        writePixel(portable::sourceOver(source, readPixel(at)), at);
}

void blendCoverage(unsigned alpha, SkBlendMode mode, uint8_t* at) {
    if (mode == SkBlendMode::kClear)
        *at = 0;
    else if (mode == SkBlendMode::kSrc)
        *at = static_cast<uint8_t>(alpha);
    else
        *at = portable::coverageOver(alpha, *at);
}

void addMask(const portable::GlyphMask& mask, const SkIRect& clip, unsigned alpha, const SkBitmap& bitmap) {
    const SkIRect area = portable::intersected(mask.box, clip);
    for (int y = area.fTop; y < area.fBottom; ++y) {
        const uint8_t* coverage = mask.row(y) - mask.box.fLeft;
        uint8_t* row = bitmap.row(y);
        for (int x = area.fLeft; x < area.fRight; ++x) {
            const unsigned c = portable::coverageTimesAlpha(coverage[x], alpha);
            row[x] = portable::coverageOver(c, row[x]);
        }
    }
}

}  // namespace

SkCanvas::SkCanvas(const SkBitmap& bitmap)
    : mBitmap(bitmap),
      mClip(bitmap.drawsNothing() ? SkIRect::MakeEmpty() : SkIRect::MakeWH(bitmap.width(), bitmap.height())) {}

SkIRect SkCanvas::clipped(const SkRect& rect) const {
    if (std::isnan(rect.fLeft) || std::isnan(rect.fTop) || std::isnan(rect.fRight) || std::isnan(rect.fBottom))
        return SkIRect::MakeEmpty();
    const auto [left, right] = std::minmax(rect.fLeft, rect.fRight);
    const auto [top, bottom] = std::minmax(rect.fTop, rect.fBottom);
    const SkIRect pixels = SkIRect::MakeLTRB(portable::roundedEdge(left), portable::roundedEdge(top),
                                             portable::roundedEdge(right), portable::roundedEdge(bottom));
    return portable::intersected(pixels, mClip);
}

void SkCanvas::clipRect(const SkRect& rect, SkClipOp, bool) {
    mClip = clipped(rect);
    if (mClip.isEmpty()) mClip = SkIRect::MakeEmpty();
}

void SkCanvas::drawColor(SkColor color, SkBlendMode mode) {
    fill(mClip, color, mode);
}

void SkCanvas::drawRect(const SkRect& rect, const SkPaint& paint) {
    fill(clipped(rect), paint.getColor(), paint.getBlendMode());
}

void SkCanvas::fill(const SkIRect& area, SkColor color, SkBlendMode mode) {
    if (mode == SkBlendMode::kSrcOver && SkColorGetA(color) == 0) return;
    const RgbaPixel pixel = portable::pixelOf(color);
    const bool coverage = isCoverage(mBitmap);
    if (!coverage && !isColor(mBitmap)) return;

    for (int y = area.fTop; y < area.fBottom; ++y) {
        uint8_t* row = mBitmap.row(y);
        for (int x = area.fLeft; x < area.fRight; ++x) {
            if (coverage)
                blendCoverage(pixel.a, mode, row + x);
            else
                blendPixel(pixel, mode, row + 4 * static_cast<ptrdiff_t>(x));
        }
    }
}

void SkCanvas::drawBitmap(const SkBitmap& bitmap, SkScalar left, SkScalar top, const SkPaint* paint) {
    if (!isColor(mBitmap) || !isColor(bitmap) || bitmap.drawsNothing() || std::isnan(left) || std::isnan(top)) return;
    const SkBlendMode mode = paint != nullptr ? paint->getBlendMode() : SkBlendMode::kSrcOver;
    const unsigned alpha = paint != nullptr ? paint->getAlpha() : 255;
    const int x0 = portable::roundedEdge(left);
    const int y0 = portable::roundedEdge(top);
    const int right = static_cast<int>(std::min<int64_t>(int64_t{x0} + bitmap.width(), mClip.fRight));
    const int bottom = static_cast<int>(std::min<int64_t>(int64_t{y0} + bitmap.height(), mClip.fBottom));

    for (int y = std::max(y0, mClip.fTop); y < bottom; ++y) {
        const uint8_t* from = bitmap.row(y - y0);
        uint8_t* row = mBitmap.row(y);
        for (int x = std::max(x0, mClip.fLeft); x < right; ++x) {
            RgbaPixel source = readPixel(from + 4 * static_cast<ptrdiff_t>(x - x0));
            source.a = static_cast<uint8_t>(portable::coverageTimesAlpha(source.a, alpha));
            blendPixel(source, mode, row + 4 * static_cast<ptrdiff_t>(x));
        }
    }
}

void SkCanvas::drawTextBlob(const sk_sp<SkTextBlob>& blob, SkScalar x, SkScalar y, const SkPaint& paint) {
    if (blob == nullptr || !isCoverage(mBitmap) || mClip.isEmpty()) return;
    for (const SkTextBlob::Run& run : blob->runs()) {
        portable::GlyphLoader loader(run.font);
        for (size_t i = 0; i < run.glyphs.size(); ++i) {
            const SkPoint origin = SkPoint::Make(run.points[i].fX + x, run.points[i].fY + y);
            addMask(portable::rasteriseGlyph(loader, run.glyphs[i], origin, mClip), mClip, paint.getAlpha(), mBitmap);
        }
    }
}
