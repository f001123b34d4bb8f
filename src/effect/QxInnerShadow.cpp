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

/// Whether the shifted ink, widened by the radius, misses the ink, so that every glyph lies wholly in shadow. The
/// far edges count as touching on the right and at the bottom only.
bool missesItself(const QxRect& rect, int64_t radius, ShadowShift shift) {
    const bool overlaps = rect.right + radius + shift.dx >= rect.left && rect.left - radius + shift.dx < rect.right &&
                          int64_t{rect.top} + shift.dy < rect.bottom + radius &&
                          int64_t{rect.bottom} + shift.dy >= rect.top - radius;
    return !overlaps;
}

/// Makes the next rows of the shadow.
/// @param ink    the coverage there.
/// @param strip  ink.height rows, wide enough for whole blocks.
void shadeRows(GaussColumns& columns, ConstPlane8 ink, uint8_t* strip, ptrdiff_t stride) {
    columns.beginStrip(ink.height);
    for (int block = 0; block < columns.blockCount(); ++block) {
        uint8_t* part = strip + ptrdiff_t{block} * kGaussBlock;
        if (columns.makeBlock(block, part, stride)) continue;
        for (int y = 0; y < ink.height; ++y) std::fill_n(part + y * stride, kGaussBlock, uint8_t{0});
    }
    for (int y = 0; y < ink.height; ++y) complementWhereInked(ink.row(y), ink.width, strip + y * stride);
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
    const GaussPlan plan = makeGaussPlan(makeGaussBell(radius, kSoftPeak));
    const int width = seen.xEnd - seen.xStart;
    const int softTop = std::clamp(seen.yStart - shift.dy - radius - 3, 0, ink.height);
    const int softBottom = std::clamp(seen.yEnd - shift.dy + radius, softTop, ink.height);
    const int softRows = softBottom - softTop;
    const int xStart = seen.xStart - shift.dx;
    Scratch<uint8_t> soft(width, softRows);
    Scratch<uint8_t> work(std::max(gaussLinesScratchBytes(plan.bell, ink.width, xStart, width),
                                   GaussColumns::scratchBytes(plan.bell, width, softRows)));
    const int stripWidth = (width + kGaussBlock - 1) / kGaussBlock * kGaussBlock;
    Scratch<uint8_t> strip(stripWidth, GaussColumns::kStripRows);
    if (!soft || !work || !strip) return;

    gaussLinesPlane8({ink.row(softTop), ink.width, softRows, ink.stride}, plan, GaussRounding::Up, xStart, work.data(),
                     {soft.data(), width, softRows, width});
    GaussColumns columns({soft.data(), width, softRows, width}, plan, GaussRounding::Up,
                         seen.yStart - shift.dy - softTop, work.data());
    for (int y = seen.yStart; y < seen.yEnd; y += GaussColumns::kStripRows) {
        const int rows = std::min(GaussColumns::kStripRows, seen.yEnd - y);
        shadeRows(columns, {ink.row(y) + seen.xStart, width, rows, ink.stride}, strip.data(), stripWidth);
        QxBlender::drawBitmapBlend8(rect.left + seen.xStart, rect.top + y, p->dstBitmap, strip.data(), width, rows,
                                    stripWidth, property->color, QXE_BLEND_DST_OVER);
    }
}

}  // namespace QxFontEffect
