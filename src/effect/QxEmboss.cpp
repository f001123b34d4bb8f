#include "effect/QxEmboss.h"

#include <algorithm>
#include <cmath>

#include "base/Scratch.h"
#include "effect/band_heights.h"
#include "effect/core_inputs.h"
#include "effect/core_record.h"
#include "effect/relief_passes.h"
#include "effect/safe_convert.h"
#include "pixel/QxBlender.h"

namespace QxFontEffect {
namespace {

constexpr int kSmooth = 0;

/// How a record's size divides, in pixels.
struct EmbossBand {
    float half;     // of the lit band
    int32_t reach;  // pixels outside the text rectangle that the band can light
    int32_t blur;   // of the smooth technique
};

EmbossBand embossBand(const QxEmbossProperty& property) {
    const float half = std::max(property.size, 0.0f) * 0.5f;
    EmbossBand band{half, 0, 0};
    if (property.technique == kSmooth) {
        band.blur = truncToInt(std::ceil(half / 3.0f));
        band.half = half / 3.0f * 2.0f;
    }
    // The outline can lie as far out as the rectangle's edge, from where the next centre is half a pixel away.
    band.reach = saturateToInt(int64_t{truncToInt(std::ceil(band.half + 0.5f))} - 1);
    return band;
}

/// Copies the pixels of a row but for those of one value of coverage, which become 0.
///
/// @param x, y  of the row's first pixel, in pixels of the ink's plane.
void copyBut(uint8_t hidden, const PlacedInk& ink, int x, int y, int count, const uint32_t* from, uint32_t* to) {
    const int row = y - ink.y;
    const bool inked = row >= 0 && row < ink.coverage.height;
    const int begin = inked ? std::clamp(ink.x - x, 0, count) : count;
    const int end = inked ? std::clamp(ink.x + ink.coverage.width - x, begin, count) : count;
    std::copy_n(from, count, to);
    if (hidden == 0) std::fill(to, to + begin, 0u);
    if (hidden == 0) std::fill(to + end, to + count, 0u);
    for (int i = begin; i < end; ++i)
        if (ink.coverage.row(row)[x + i - ink.x] == hidden) to[i] = 0;
}

}  // namespace

QxEmboss::QxEmboss() : property(nullptr) {
    style = QXE_EMBOSS;
}

QxEmboss::~QxEmboss() {
    delete property;
}

void QxEmboss::setProperty(QxProperty* p) {
    if (p == nullptr) return;
    const QxEmbossProperty& given = *static_cast<QxEmbossProperty*>(p);
    replaceRecord(property, given.style, given.size, given.depth, given.direction, given.technique, given.soften,
                  given.opacity, given.angle, given.altitude, given.highlightColor, given.highlightOpacity,
                  given.shadowColor, given.shadowOpacity);
}

void QxEmboss::doPostProcessing(ParamPostProcessing* p) {
    if (!drawable(p, property) || !hasFiniteSettings(*property) || !(property->size > 0.0f)) return;
    const bool smooth = property->technique == kSmooth;
    const QxBitmap& base = hasPixels(p->baseBitmap, 4) ? *p->baseBitmap : *p->dstBitmap;

    const EmbossBand band = embossBand(*property);
    const int32_t soften = std::max(property->soften, 0);
    const ReliefBlur blurs[] = {{band.blur, 0}, {soften, 0}};
    // At least one pixel beyond the band, since the area's outermost pixels are not lit.
    const int64_t margin = int64_t{band.reach} + std::max(int64_t{band.blur} + soften, int64_t{1});
    ReliefArea area = {};
    if (!reliefArea(*p->textRect, margin, blurs, 2, std::max(base.width, p->dstBitmap->width),
                    std::max(base.height, p->dstBitmap->height), area))
        return;

    const PlacedInk ink = inkOn(area, coverageOf(*p->srcBitmap), *p->textRect);
    BandHeights heights(ink, band.half, area.worked.width(), area.worked.height());
    ReliefPainter painter(area, reliefLight(*property), {2.0f * band.half, 255.0f, true, false},
                          {smooth ? kSmoothGain : 1.0f, property->highlightColor, property->shadowColor});
    Scratch<uint32_t> half(area.shown.width());
    if (!heights.ready() || !painter || !half) return;

    const int mode = p->layerMode == 1 ? QXE_BLEND_SRC_OVER : QXE_BLEND_DST_OVER;
    const auto blend = [&](const QxBitmap& dst, int x, int y, int count, uint32_t* pixels) {
        QxBlender::drawBitmapBlend32(area.x + x, area.y + y, &dst, pixels, count, 1, count, mode);
    };
    painter.paint(heights, [&](int x, int y, int count, uint32_t* pixels) {
        if (&base == p->dstBitmap) return blend(base, x, y, count, pixels);
        const int inkX = x - area.worked.left, inkY = y - area.worked.top;
        copyBut(0, ink, inkX, inkY, count, pixels, half.data());
        blend(base, x, y, count, half.data());
        copyBut(255, ink, inkX, inkY, count, pixels, half.data());
        blend(*p->dstBitmap, x, y, count, half.data());
    });
}

int QxEmboss::getOffset() {
    if (property == nullptr || !(property->size > 0.0f)) return 0;
    const EmbossBand band = embossBand(*property);
    return saturateToInt(int64_t{band.reach} + band.blur + std::max(property->soften, 0));
}

}  // namespace QxFontEffect
