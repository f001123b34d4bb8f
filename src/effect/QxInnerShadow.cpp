#include "effect/QxInnerShadow.h"

#include <algorithm>

#include "base/Scratch.h"
#include "effect/core_inputs.h"
#include "effect/core_record.h"
#include "effect/kernel/gauss_rows.h"
#include "effect/shadow_geometry.h"
#include "effect/visible_part.h"
#include "pixel/QxBlender.h"

namespace QxFontEffect {
namespace {

constexpr int kStripRows = 16;

/// Whether the shifted ink, widened by the radius, misses the ink, so that every glyph lies wholly in shadow. The
/// far edges count as touching on the right and at the bottom only.
bool missesItself(const QxRect& rect, int64_t radius, ShadowShift shift) {
    const bool overlaps = rect.right + radius + shift.dx >= rect.left && rect.left - radius + shift.dx < rect.right &&
                          int64_t{rect.top} + shift.dy < rect.bottom + radius &&
                          int64_t{rect.bottom} + shift.dy >= rect.top - radius;
    return !overlaps;
}

/// Turns blurred coverage into the shadow inside the glyphs. Coverage only opens or shuts a pixel: a faint edge pixel
/// receives the full shadow, which keeps the dark rim unbroken along anti-aliased edges.
void shadeInside(ConstPlane8 coverage, Plane8 strip) {
    for (int y = 0; y < strip.height; ++y) {
        const uint8_t* open = coverage.row(y);
        uint8_t* row = strip.row(y);
        for (int x = 0; x < strip.width; ++x) row[x] = open[x] == 0 ? 0 : static_cast<uint8_t>(255 - row[x]);
    }
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
    // Only the columns that the shift brings under the ink are blurred.
    const GaussBell bell = makeGaussBell(radius, kSoftPeak);
    const int width = seen.xEnd - seen.xStart;
    Scratch<uint8_t> soft(width, ink.height);
    Scratch<uint8_t> rowWork(gaussRowScratchBytes(bell, ink.width, width));
    Scratch<uint8_t> columnWork(GaussColumns::scratchBytes(width));
    Scratch<uint8_t> strip(width, kStripRows);
    if (!soft || !rowWork || !columnWork || !strip) return;

    for (int y = 0; y < ink.height; ++y)
        gaussRow8(ink.row(y), ink.width, bell, GaussRounding::Up, seen.xStart - shift.dx, width, rowWork.data(),
                  soft.data() + int64_t{y} * width);
    GaussColumns columns({soft.data(), width, ink.height, width}, bell, GaussRounding::Up, seen.yStart - shift.dy,
                         columnWork.data());
    for (int y = seen.yStart; y < seen.yEnd; y += kStripRows) {
        const int taken = std::min(kStripRows, seen.yEnd - y);
        const Plane8 rows = {strip.data(), width, taken, width};
        columns.next(rows);
        shadeInside({ink.row(y) + seen.xStart, width, taken, ink.stride}, rows);
        QxBlender::drawBitmapBlend8(rect.left + seen.xStart, rect.top + y, p->dstBitmap, rows.data, width, taken, width,
                                    property->color, QXE_BLEND_DST_OVER);
    }
}

}  // namespace QxFontEffect
