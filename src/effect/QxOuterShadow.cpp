#include "effect/QxOuterShadow.h"

#include <algorithm>

#include "base/Scratch.h"
#include "effect/core_inputs.h"
#include "effect/core_record.h"
#include "effect/kernel/gauss_rows.h"
#include "effect/safe_convert.h"
#include "effect/shadow_geometry.h"
#include "effect/visible_part.h"
#include "pixel/QxBlender.h"

namespace QxFontEffect {
namespace {

/// The margin that a shadow with radius `radius` needs on the side that lies `shift` pixels in the shadow's
/// direction: narrower than the area it may touch, because a shadow moved away from a side leaves room there.
int32_t marginToward(int64_t radius, int64_t shift) {
    return saturateToInt(shift < 0 ? std::max<int64_t>(radius + shift, 0) : radius + shift);
}

int32_t marginAway(int64_t radius, int64_t shift) {
    return saturateToInt(shift < 0 ? radius - shift : std::max<int64_t>(radius - shift, 0));
}

int32_t marginRadius(const QxOuterShadowProperty* property) {
    return property == nullptr ? 0 : truncToInt(property->size + 0.5f);
}

}  // namespace

QxOuterShadow::QxOuterShadow() : property(nullptr), dx(0), dy(0) {
    style = QXE_OUTER_SHADOW;
}

QxOuterShadow::~QxOuterShadow() {
    delete property;
}

void QxOuterShadow::setProperty(QxProperty* p) {
    if (p == nullptr) return;
    const QxOuterShadowProperty* given = static_cast<QxOuterShadowProperty*>(p);
    const ShadowShift shift = shadowShift(given->angle, given->distance);
    replaceRecord(property, given->angle, given->distance, given->size, given->color, given->opacity);
    dx = shift.dx;
    dy = shift.dy;
}

int QxOuterShadow::getLeftOffset() {
    return marginAway(marginRadius(property), dx);
}

int QxOuterShadow::getRightOffset() {
    return marginToward(marginRadius(property), dx);
}

int QxOuterShadow::getTopOffset() {
    return marginAway(marginRadius(property), dy);
}

int QxOuterShadow::getBottomOffset() {
    return marginToward(marginRadius(property), dy);
}

void QxOuterShadow::doPostProcessing(ParamPostProcessing* p) {
    if (!drawable(p, property)) return;

    // The box is the ink widened by the radius: beyond it the blur is 0.
    const QxRect rect = inkRect(*p);
    const int32_t radius = shadowRadius(property->size);
    const ConstPlane8 ink = inkOf(*p->srcBitmap, rect);
    if (radius < 0 || std::max(ink.width, ink.height) > kMaxPictureSide) return;
    const int64_t x = int64_t{rect.left} + dx - radius;
    const int64_t y = int64_t{rect.top} + dy - radius;
    const int64_t frame = 2 * int64_t{radius};
    const GaussRange seen = visiblePart(x, y, ink.width + frame, ink.height + frame, *p->dstBitmap);
    if (isEmpty(seen)) return;

    const GaussBell bell = makeGaussBell(radius, kSoftPeak);
    const GaussJob job = {ink, &bell, moved(seen, -radius, -radius), GaussRounding::Down, GaussRounding::Down};
    Scratch<uint8_t> work(GaussRows::scratchBytes(job));
    if (!work) return;

    GaussRows rows(job, work.data());
    int dstY = static_cast<int>(y + seen.yStart);
    for (ConstPlane8 blurred = rows.next(); blurred.height > 0; blurred = rows.next()) {
        // The blender reads masks only.
        QxBlender::drawBitmapBlend8(static_cast<int>(x + seen.xStart), dstY, p->dstBitmap,
                                    const_cast<uint8_t*>(blurred.data), blurred.width, blurred.height,
                                    static_cast<int>(blurred.stride), property->color, QXE_BLEND_DST_OVER);
        dstY += blurred.height;
    }
}

}  // namespace QxFontEffect
