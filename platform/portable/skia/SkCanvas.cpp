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
    RgbaPixel pixel = {};
    std::memcpy(&pixel, at, sizeof pixel);
    return pixel;
}

void writePixel(RgbaPixel pixel, uint8_t* at) {
    std::memcpy(at, &pixel, sizeof pixel);
}

RgbaPixel blended(RgbaPixel source, SkBlendMode mode, RgbaPixel ground) {
    if (mode == SkBlendMode::kClear) return {0, 0, 0, 0};
    return mode == SkBlendMode::kSrc ? source : portable::sourceOver(source, ground);
}

void fillCoverageRow(unsigned alpha, SkBlendMode mode, uint8_t* row, int count) {
    if (mode != SkBlendMode::kSrcOver) {
        std::memset(row, mode == SkBlendMode::kClear ? 0 : static_cast<int>(alpha), static_cast<size_t>(count));
        return;
    }
    for (int x = 0; x < count; ++x) row[x] = portable::coverageOver(alpha, row[x]);
}

void fillColorRow(RgbaPixel color, SkBlendMode mode, uint8_t* row, int count) {
    for (int x = 0; x < count; ++x, row += 4) writePixel(blended(color, mode, readPixel(row)), row);
}

void addMask(const portable::GlyphMask& mask, const SkIRect& clip, unsigned alpha, const SkBitmap& bitmap) {
    const SkIRect area = portable::intersected(mask.box, clip);
    for (int y = area.fTop; y < area.fBottom; ++y) {
        const uint8_t* coverage = mask.row(y);
        uint8_t* row = bitmap.row(y);
        for (int x = area.fLeft; x < area.fRight; ++x) {
            const unsigned c = portable::coverageTimesAlpha(coverage[x - mask.box.fLeft], alpha);
            row[x] = portable::coverageOver(c, row[x]);
        }
    }
}

}  // namespace

SkCanvas::SkCanvas(const SkBitmap& bitmap)
    : mBitmap(bitmap),
      mClip(bitmap.drawsNothing() ? SkIRect::MakeEmpty()
                                  : SkIRect::MakeWH(std::min(bitmap.width(), portable::kFarthestPixel),
                                                    std::min(bitmap.height(), portable::kFarthestPixel))) {}

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
    if (area.isEmpty() || (mode == SkBlendMode::kSrcOver && SkColorGetA(color) == 0)) return;
    const RgbaPixel pixel = portable::pixelOf(color);
    for (int y = area.fTop; y < area.fBottom; ++y) {
        if (isCoverage(mBitmap))
            fillCoverageRow(pixel.a, mode, mBitmap.row(y) + area.fLeft, area.width());
        else if (isColor(mBitmap))
            fillColorRow(pixel, mode, mBitmap.row(y) + 4 * static_cast<ptrdiff_t>(area.fLeft), area.width());
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
            uint8_t* at = row + 4 * static_cast<ptrdiff_t>(x);
            writePixel(blended(source, mode, readPixel(at)), at);
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
