#include "effect/QxEmboss.h"

#include <algorithm>
#include <cmath>

#include "base/Scratch.h"
#include "effect/core_inputs.h"
#include "effect/core_record.h"
#include "effect/kernel/distance.h"
#include "effect/relief_passes.h"
#include "effect/safe_convert.h"
#include "pixel/QxBlender.h"

namespace QxFontEffect {
namespace {

constexpr int kSmooth = 0;

/// How a record's size divides, in pixels.
struct EmbossBand {
    float half;        // of the lit band
    int32_t reach;     // pixels outside the text rectangle that the band can light
    int32_t blur;      // of the smooth technique
    int32_t distance;  // to which distances must be known
};

EmbossBand embossBand(const QxEmbossProperty& property) {
    const float half = std::max(property.size, 0.0f) * 0.5f;
    EmbossBand band{half, 0, 0, 0};
    if (property.technique == kSmooth) {
        band.blur = truncToInt(std::ceil(half / 3.0f));
        band.half = half / 3.0f * 2.0f;
    }
    // The outline can lie as far out as the rectangle's edge, from where the next centre is half a pixel away.
    band.distance = truncToInt(std::ceil(band.half + 0.5f));
    band.reach = band.distance - 1;
    return band;
}

/// Turns distances from the outline's two sides into heights above the band's inner end.
void joinSides(const PlacedInk& ink, float half, ConstPlaneF fromInside, PlaneF heights) {
    for (int y = 0; y < heights.height; ++y) {
        const float* inner = fromInside.row(y);
        float* outer = heights.row(y);
        const bool inkRow = y >= ink.y && y < ink.y + ink.coverage.height;
        for (int x = 0; x < heights.width; ++x) {
            const bool full =
                inkRow && x >= ink.x && x < ink.x + ink.coverage.width && ink.coverage.row(y - ink.y)[x - ink.x] == 255;
            const float distance = full ? 0.5f - inner[x] : outer[x] - 0.5f;
            outer[x] = std::clamp(distance + half, 0.0f, 2.0f * half);
        }
    }
}

/// Empties the pixels of a row that the other bitmap shows.
void keepHalf(const uint8_t* coverage, int count, int hiddenAt, uint32_t* pixels) {
    for (int x = 0; x < count; ++x)
        if (coverage[x] == hiddenAt) pixels[x] = 0;
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
    if (!drawable(p, property) || !hasFiniteSettings(*property)) return;
    const EmbossBand band = embossBand(*property);
    const int32_t soften = std::max(property->soften, 0);
    // At least one pixel beyond the band, since the area's outermost pixels are not lit.
    const int64_t margin = int64_t{band.reach} + std::max(int64_t{band.blur} + soften, int64_t{1});
    ReliefArea area;
    if (!(property->size > 0.0f) || !reliefArea(*p->textRect, margin, area)) return;

    Scratch<float> outer(area.width, area.height), inner(area.width, area.height);
    ReliefMaps maps(area.width, area.height);
    Scratch<uint32_t> pixels(area.width), half(area.width);
    Scratch<uint8_t> coverage(area.width);
    if (!outer || !inner || !maps || !pixels || !half || !coverage) return;

    const PlaneF heights{outer.data(), area.width, area.height, area.width};
    const PlaneF fromInside{inner.data(), area.width, area.height, area.width};
    const PlacedInk ink = inkOn(area, coverageOf(*p->srcBitmap), *p->textRect);
    outlineDistances(ink, false, band.distance, heights);
    outlineDistances(ink, true, band.distance, fromInside);
    joinSides(ink, band.half, {inner.data(), area.width, area.height, area.width}, heights);

    maps.light({outer.data(), area.width, area.height, area.width}, reliefLight(*property),
               {2.0f * band.half, 255.0f, true, false});
    if (band.blur >= 1 && !maps.blur(band.blur, 0)) return;
    if (soften >= 1 && !maps.blur(soften, 0)) return;

    ReliefColors colors;
    makeReliefColors(property->technique == kSmooth ? kSmoothGain : 1.0f, property->highlightColor,
                     property->shadowColor, colors);
    const int mode = p->layerMode == 1 ? QXE_BLEND_SRC_OVER : QXE_BLEND_DST_OVER;
    const bool split = p->baseBitmap != nullptr && p->baseBitmap != p->dstBitmap;
    for (int y = 0; y < area.height; ++y) {
        colorReliefRow(maps.shadowRow(y), maps.highlightRow(y), area.width, colors, pixels.data());
        if (split) {
            std::fill_n(coverage.data(), area.width, uint8_t{0});
            if (y >= ink.y && y < ink.y + ink.coverage.height)
                std::copy_n(ink.coverage.row(y - ink.y), ink.coverage.width, coverage.data() + ink.x);
            std::copy_n(pixels.data(), area.width, half.data());
            keepHalf(coverage.data(), area.width, 0, half.data());
            keepHalf(coverage.data(), area.width, 255, pixels.data());
            QxBlender::drawBitmapBlend32(area.x, area.y + y, p->baseBitmap, half.data(), area.width, 1, area.width,
                                         mode);
        }
        QxBlender::drawBitmapBlend32(area.x, area.y + y, p->dstBitmap, pixels.data(), area.width, 1, area.width, mode);
    }
}

int QxEmboss::getOffset() {
    if (property == nullptr || !(property->size > 0.0f)) return 0;
    const EmbossBand band = embossBand(*property);
    return saturateToInt(int64_t{band.reach} + band.blur + std::max(property->soften, 0));
}

}  // namespace QxFontEffect
