#include "effect/QxInnerShadow.h"

#include <algorithm>

#include "base/Scratch.h"
#include "effect/core_inputs.h"
#include "effect/core_record.h"
#include "effect/kernel/gauss_rows.h"
#include "effect/kernel/shade.h"
#include "effect/shadow_geometry.h"
#include "effect/visible_part.h"
#include "pixel/QxBlender.h"

namespace QxFontEffect {
namespace {

// As many rows as a blur gives at most.
constexpr int kShadeRows = GaussColumns::kStripRows;

/// Whether the shifted ink, widened by the radius, misses the ink, so that every glyph lies wholly in shadow. The
/// far edges count as touching on the right and at the bottom only.
bool missesItself(const QxRect& rect, int64_t radius, ShadowShift shift) {
    const bool overlaps = rect.right + radius + shift.dx >= rect.left && rect.left - radius + shift.dx < rect.right &&
                          int64_t{rect.top} + shift.dy < rect.bottom + radius &&
                          int64_t{rect.bottom} + shift.dy >= rect.top - radius;
    return !overlaps;
}

}  // namespace

QxInnerShadow::QxInnerShadow() : property(nullptr) {
    style = QXE_INNER_SHADOW;
}

QxInnerShadow::~QxInnerShadow() {
    delete property;
}

void QxInnerShadow::setProperty(QxProperty* p) {
    if (p == nullptr) return;
    const QxInnerShadowProperty* given = static_cast<QxInnerShadowProperty*>(p);
    replaceRecord(property, given->angle, given->distance, given->size, given->color, given->opacity);
}

void QxInnerShadow::doPostProcessing(ParamPostProcessing* p) {
    if (!drawable(p, property)) return;

    const QxRect rect = inkRect(*p);
    const ShadowShift shift = shadowShift(property->angle, property->distance);
    const int32_t radius = shadowRadius(property->size);
    const ConstPlane8 ink = inkOf(*p->srcBitmap, rect);
    if (radius < 0 || std::max(ink.width, ink.height) > kMaxPictureSide) return;
    if (missesItself(rect, radius, shift)) {
        unsigned char* mask = p->srcBitmap->pixels + rect.top * ink.stride + rect.left;
        QxBlender::drawBitmapBlend8(rect.left, rect.top, p->dstBitmap, mask, ink.width, ink.height,
                                    static_cast<int>(ink.stride), property->color, QXE_BLEND_DST_OVER);
        return;
    }
    const GaussRange seen = visiblePart(rect.left, rect.top, ink.width, ink.height, *p->dstBitmap);
    if (isEmpty(seen)) return;

    // Rows first and then columns, both rounded up: this is what the complement's blur, rounded down, leaves of 255.
    // Only what the shift brings under the ink is blurred.
    const GaussBell bell = makeGaussBell(radius, kSoftPeak);
    const GaussJob job = {
        ink, &bell, moved(seen, -shift.dx, -shift.dy), GaussRounding::Up, GaussRounding::Up, GaussOrder::RowsFirst};
    const int width = seen.xEnd - seen.xStart;
    Scratch<uint8_t> work(GaussRows::scratchBytes(job));
    Scratch<uint8_t> shadow(width, kShadeRows);
    if (!work || !shadow) return;

    GaussRows rows(job, work.data());
    int y = seen.yStart;
    for (ConstPlane8 blurred = rows.next(); blurred.height > 0; blurred = rows.next()) {
        for (int row = 0; row < blurred.height; ++row)
            complementWhereInked(ink.row(y + row) + seen.xStart, blurred.row(row), width,
                                 shadow.data() + ptrdiff_t{row} * width);
        QxBlender::drawBitmapBlend8(rect.left + seen.xStart, rect.top + y, p->dstBitmap, shadow.data(), width,
                                    blurred.height, width, property->color, QXE_BLEND_DST_OVER);
        y += blurred.height;
    }
}

}  // namespace QxFontEffect
