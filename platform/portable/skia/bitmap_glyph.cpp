#include "bitmap_glyph.h"

#include <cmath>

#include "pixel_math.h"

namespace portable {
namespace {

/// Alpha of one pixel of a font's picture.
class AlphaReader {
public:
    explicit AlphaReader(const FT_Bitmap& bitmap) : mBitmap(bitmap) {}

    bool readable() const {
        const bool known = mBitmap.pixel_mode == FT_PIXEL_MODE_BGRA || mBitmap.pixel_mode == FT_PIXEL_MODE_GRAY ||
                           mBitmap.pixel_mode == FT_PIXEL_MODE_MONO;
        return known && mBitmap.pitch > 0 && mBitmap.buffer != nullptr && mBitmap.width > 0 && mBitmap.rows > 0;
    }
    int width() const { return static_cast<int>(mBitmap.width); }
    int height() const { return static_cast<int>(mBitmap.rows); }

    int at(int x, int y) const {
        const uint8_t* row = mBitmap.buffer + static_cast<ptrdiff_t>(y) * mBitmap.pitch;
        if (mBitmap.pixel_mode == FT_PIXEL_MODE_BGRA) return row[4 * x + 3];
        if (mBitmap.pixel_mode == FT_PIXEL_MODE_GRAY) return row[x];
        return (row[x / 8] >> (7 - x % 8) & 1) != 0 ? 255 : 0;
    }

private:
    const FT_Bitmap& mBitmap;
};

/// A stretch of the picture, in picture pixels.
struct Span {
    double from, to;
};

/// The picture's columns (or rows) under canvas pixel `pixel`.
Span under(double pixel, double start, double scale) {
    const double a = (pixel - start) / scale;
    const double b = (pixel + 1 - start) / scale;
    return {std::min(a, b), std::max(a, b)};
}

int firstOf(Span span) {
    return std::max(0, saturatedFloor(span.from));
}
int endOf(Span span, int limit) {
    return std::min(limit, saturatedFloor(std::ceil(span.to)));
}
double overlap(Span span, int pixel) {
    return std::min(span.to, pixel + 1.0) - std::max(span.from, 1.0 * pixel);
}

uint8_t averageAlpha(const AlphaReader& alpha, Span columns, Span rows) {
    double sum = 0;
    for (int y = firstOf(rows); y < endOf(rows, alpha.height()); ++y) {
        double line = 0;
        for (int x = firstOf(columns); x < endOf(columns, alpha.width()); ++x)
            line += overlap(columns, x) * alpha.at(x, y);
        sum += overlap(rows, y) * line;
    }
    const double area = (columns.to - columns.from) * (rows.to - rows.from);
    return static_cast<uint8_t>(std::clamp(std::lround(sum / area), 0L, 255L));
}

SkIRect canvasBox(const AlphaReader& alpha, const BitmapPlacement& at) {
    const double right = at.left + alpha.width() * at.scaleX;
    const double bottom = at.top + alpha.height() * at.scaleY;
    const double lean0 = at.skewX * at.top;
    const double lean1 = at.skewX * bottom;
    return SkIRect::MakeLTRB(saturatedFloor(std::min(at.left, right) + std::min(lean0, lean1)), saturatedFloor(at.top),
                             saturatedFloor(std::ceil(std::max(at.left, right) + std::max(lean0, lean1))),
                             saturatedFloor(std::ceil(bottom)));
}

}  // namespace

GlyphMask silhouetteOf(const FT_Bitmap& bitmap, const BitmapPlacement& placement, const SkIRect& clip) {
    GlyphMask mask;
    const AlphaReader alpha(bitmap);
    if (!alpha.readable()) return mask;
    if (!mask.allocate(intersected(canvasBox(alpha, placement), clip))) return mask;

    for (int y = mask.box.fTop; y < mask.box.fBottom; ++y) {
        const Span rows = under(y, placement.top, placement.scaleY);
        const double left = placement.left + placement.skewX * (y + 0.5);
        for (int x = mask.box.fLeft; x < mask.box.fRight; ++x)
            mask.row(y)[x - mask.box.fLeft] = averageAlpha(alpha, under(x, left, placement.scaleX), rows);
    }
    return mask;
}

}  // namespace portable
