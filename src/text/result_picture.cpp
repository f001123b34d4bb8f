#include "text/result_picture.h"

#include <SkBitmap.h>
#include <SkBlendMode.h>
#include <SkCanvas.h>
#include <SkColorSpace.h>
#include <SkImageInfo.h>
#include <SkPaint.h>
#include <SkRect.h>

#include <algorithm>

#include "base/list_walk.h"
#include "pixel/QxBitmap.h"
#include "pixel/QxBlender.h"
#include "text/QxLineInfo.h"
#include "text/QxView.h"

namespace QxFontEffect {

namespace {

// Android gravity values.
constexpr int kHorizontalMask = 0x07;
constexpr int kLeft = 3;
constexpr int kRight = 5;
constexpr int kVerticalMask = 0x70;
constexpr int kTop = 0x30;
constexpr int kBottom = 0x50;

int clampedEdge(int64_t edge, int limit) {
    return static_cast<int>(std::min<int64_t>(std::max<int64_t>(edge, 0), limit));
}

SkRect rectOf(int left, int top, int right, int bottom) {
    return SkRect::MakeLTRB(static_cast<float>(left), static_cast<float>(top), static_cast<float>(right),
                            static_cast<float>(bottom));
}

bool wrap(const QxBitmap& picture, SkBitmap* bitmap) {
    const SkImageInfo info = SkImageInfo::Make(static_cast<int>(picture.width), static_cast<int>(picture.height),
                                               kRGBA_8888_SkColorType, kUnpremul_SkAlphaType, SkColorSpace::MakeSRGB());
    return bitmap->installPixels(info, picture.pixels, static_cast<size_t>(picture.width) * 4);
}

void paintBackgrounds(const LineBackgrounds& backgrounds, SkCanvas* canvas) {
    SkPaint paint;
    paint.setColor(backgrounds.color);
    paint.setStyle(SkPaint::kFill_Style);
    walkList(*backgrounds.lines, false, [&](void* item) {
        if (item == nullptr) return true;
        const QxRect& bounds = static_cast<const QxLineInfo*>(item)->bounds;
        canvas->drawRect(rectOf(bounds.left, bounds.top, bounds.right, bounds.bottom), paint);
        return true;
    });
}

}  // namespace

ContentClip contentClip(const QxView* view, int width, int height) {
    if (view == nullptr) return {0, 0, width, height};
    const int horizontal = view->gravity & kHorizontalMask;
    const int vertical = view->gravity & kVerticalMask;
    const int64_t viewRight = view->GetBitmapWidth();
    const int64_t viewBottom = view->GetBitmapHeight();
    const ContentClip clip = {
        clampedEdge(horizontal == kLeft ? 0 : view->paddingLeft, width),
        clampedEdge(vertical == kTop ? 0 : view->paddingTop, height),
        clampedEdge(horizontal == kRight ? viewRight : viewRight - view->paddingRight, width),
        clampedEdge(vertical == kBottom ? viewBottom : viewBottom - view->paddingBottom, height),
    };
    // A canvas would sort crossed edges and show the strip between them.
    if (clip.left >= clip.right || clip.top >= clip.bottom) return {0, 0, 0, 0};
    return clip;
}

void composeResult(const ContentClip& clip, const LineBackgrounds& backgrounds, QxBitmap* effects, QxBitmap* output) {
    SkBitmap outputBitmap;
    SkBitmap effectBitmap;
    if (effects->pixels == nullptr || output->pixels == nullptr) return;
    if (!wrap(*output, &outputBitmap) || !wrap(*effects, &effectBitmap)) return;

    SkCanvas canvas(outputBitmap);
    canvas.drawColor(0, SkBlendMode::kSrc);
    canvas.clipRect(rectOf(clip.left, clip.top, clip.right, clip.bottom), SkClipOp::kIntersect, false);
    if (backgrounds.lines != nullptr) paintBackgrounds(backgrounds, &canvas);

    // The colours of the backgrounds are in by now, so both pictures change their channel order alike.
    QxBlender::convertBGRAToARGB(output);
    QxBlender::convertBGRAToARGB(effects);
    canvas.drawBitmap(effectBitmap, 0, 0);
}

}  // namespace QxFontEffect
