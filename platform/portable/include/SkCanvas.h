#pragma once

#include "SkBitmap.h"
#include "SkBlendMode.h"
#include "SkClipOp.h"
#include "SkColor.h"
#include "SkPaint.h"
#include "SkRect.h"
#include "SkRefCnt.h"
#include "SkTextBlob.h"

/// Draws into a bitmap's pixels, inside a clip rectangle of whole pixels that starts as the whole bitmap.
///
/// Rectangles cover the pixels whose centres they hold: an edge v falls on column floor(v + 0.5). Reversed edges
/// are sorted, an edge that is NaN makes the rectangle empty. Nothing is ever written outside the clip.
///
/// Two kinds of bitmap are drawn to: alpha-8, and RGBA 8888 whose colours are not multiplied by alpha. Calls that
/// do not apply to the bitmap at hand draw nothing.
class SkCanvas {
public:
    explicit SkCanvas(const SkBitmap& bitmap);

    void clear(SkColor color) { drawColor(color, SkBlendMode::kSrc); }
    void drawColor(SkColor color, SkBlendMode mode = SkBlendMode::kSrcOver);

    /// Narrows the clip. Edges always fall on whole pixels, `doAntiAlias` or not.
    void clipRect(const SkRect& rect, SkClipOp op, bool doAntiAlias = false);

    /// Fills a rectangle with the paint's colour and blend mode, never antialiased.
    void drawRect(const SkRect& rect, const SkPaint& paint);

    /// Draws one RGBA bitmap onto another with its corner at (left, top), rounded to whole pixels. A paint adds its
    /// alpha and its blend mode. The two must not overlap in memory.
    void drawBitmap(const SkBitmap& bitmap, SkScalar left, SkScalar top, const SkPaint* paint = nullptr);

    /// Adds the glyphs' coverage, times the paint's alpha, to an alpha-8 bitmap. Coloured glyphs leave their alpha.
    /// An RGBA bitmap is left as it is.
    void drawTextBlob(const sk_sp<SkTextBlob>& blob, SkScalar x, SkScalar y, const SkPaint& paint);

private:
    SkIRect clipped(const SkRect& rect) const;
    void fill(const SkIRect& area, SkColor color, SkBlendMode mode);

    SkBitmap mBitmap;
    SkIRect mClip;
};
