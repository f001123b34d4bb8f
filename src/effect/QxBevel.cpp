#include "effect/QxBevel.h"

#include <algorithm>
#include <cmath>

#include "base/Scratch.h"
#include "effect/core_inputs.h"
#include "effect/core_record.h"
#include "effect/kernel/distance.h"
#include "effect/kernel/gauss.h"
#include "effect/relief_passes.h"
#include "effect/safe_convert.h"
#include "pixel/QxBlender.h"

namespace QxFontEffect {
namespace {

constexpr int kInnerStyle = 1;
constexpr int kSmooth = 0;

// From this radius on the smooth band takes the exact transform; below, sub-pixel coverage is worth more.
constexpr int kExactRadius = 11;

int32_t bandRadius(const QxBevelProperty& property) {
    const int32_t size = truncToInt(property.size);
    if (property.technique != kSmooth) return saturateToInt(int64_t{size} + 2);
    return truncToInt(std::ceil(2.0f * static_cast<float>(size) / 3.0f + 1.0f));
}

/// The exact transform looks at one row and one column beyond the text rectangle.
QxRect withFarEdges(const QxRect& rect) {
    return {rect.left, rect.top, saturateToInt(int64_t{rect.right} + 1), saturateToInt(int64_t{rect.bottom} + 1)};
}

}  // namespace

void QxBevel::dt1D(float* d, float* f, int n) {
    Scratch<float> boundaries(int64_t{n} + 1);
    Scratch<int> vertices(n);
    if (boundaries && vertices) squaredDistanceLine(f, n, vertices.data(), boundaries.data(), d);
}

int QxBevel::partialDT(void* work) {
    const BevelDistanceWork& w = *static_cast<const BevelDistanceWork*>(work);
    refineDistances({w.map, w.width, w.height, w.width}, w.radius, w.rowStart, w.rowEnd);
    return 0;
}

int QxBevel::partialLightProcess(void* work) {
    const BevelLightWork& w = *static_cast<const BevelLightWork*>(work);
    const ReliefLight light{
        w.h, w.lx, w.ly, w.lz, std::clamp(w.shadowAlpha, 0, 255), std::clamp(w.highlightAlpha, 0, 255)};
    const ReliefBand band{static_cast<float>(w.radius), 1.0f, false, w.inside != 0};
    for (int y = w.yStart; y < w.yEnd; ++y)
        for (int x = w.xStart; x < w.xEnd; ++x) {
            const ptrdiff_t at = ptrdiff_t{y} * w.width + x;
            const float* here = w.distance + at;
            if (*here == band.top) continue;
            lightReliefRow(here - w.width, here, here + w.width, 1, light, band, w.shadow + at, w.highlight + at);
        }
    return 0;
}

int QxBevel::partialBlur(void* work) {
    const BevelBlurWork& w = *static_cast<const BevelBlurWork*>(work);
    const GaussBell bell = makeGaussBell(std::clamp(w.radius, 0, kMaxGaussRadius), kSoftPeak);
    const int height = saturateToInt(int64_t{w.yEnd} + bell.radius);
    Scratch<uint8_t> scratch(gaussScratchBytes(bell, w.width, height));
    if (!scratch) return 0;
    gaussBlurPlane8({w.src, w.width, height, w.width}, bell,
                    {std::max(w.xStart, 0), std::min(w.xEnd, w.width), std::max(w.yStart, 0), w.yEnd}, scratch.data(),
                    {w.dst, w.width, height, w.width});
    return 0;
}

void QxBevel::blur(unsigned char* src, unsigned char* dst, int width, int height, int radius) {
    const int frame = std::max(radius, 0);  // below 0 is a copy like 0, not a range beyond the map
    BevelBlurWork work{src, dst, width, frame, frame, width - frame, frame, height - frame};
    partialBlur(&work);
}

QxBevel::QxBevel() : property(nullptr) {
    style = QXE_BEVEL;
}

QxBevel::~QxBevel() {
    delete property;
}

void QxBevel::setProperty(QxProperty* p) {
    if (p == nullptr) return;
    const QxBevelProperty& given = *static_cast<QxBevelProperty*>(p);
    replaceRecord(property, given.style, given.size, given.depth, given.direction, given.technique, given.soften,
                  given.opacity, given.angle, given.altitude, given.highlightColor, given.highlightOpacity,
                  given.shadowColor, given.shadowOpacity);
}

void QxBevel::doPostProcessing(ParamPostProcessing* p) {
    if (!drawable(p, property) || !hasFiniteSettings(*property)) return;
    const bool inside = property->style == kInnerStyle;
    const bool smooth = property->technique == kSmooth;

    const int32_t radius = bandRadius(*property);
    const int32_t bandBlur = smooth ? radius : 0;
    const int64_t margin = std::max(2 * int64_t{property->soften}, 2 * int64_t{bandBlur}) + radius;
    ReliefArea area;
    if (radius < 1 || !reliefArea(*p->textRect, margin, area)) return;

    Scratch<float> distances(area.width, area.height);
    ReliefMaps maps(area.width, area.height);
    Scratch<uint32_t> pixels(area.width);
    Scratch<uint8_t> scratch(exactDistanceScratchBytes(area.width, area.height));
    if (!distances || !maps || !pixels || !scratch) return;

    const PlaneF map{distances.data(), area.width, area.height, area.width};
    const ConstPlane8 coverage = coverageOf(*p->srcBitmap);
    if (smooth && radius >= kExactRadius) {
        exactDistances(inkOn(area, coverage, withFarEdges(*p->textRect)), inside, radius, scratch.data(), map);
    } else {
        outlineDistances(inkOn(area, coverage, *p->textRect), inside, radius, map);
    }
    maps.light({map.data, map.width, map.height, map.stride}, reliefLight(*property),
               {static_cast<float>(radius), 1.0f, false, inside});
    if (smooth && !maps.blur(bandBlur, bandBlur)) return;
    if (property->soften >= 1 && !maps.blur(property->soften, property->soften)) return;

    ReliefColors colors;
    makeReliefColors(smooth ? kSmoothGain : 1.0f, property->highlightColor, property->shadowColor, colors);
    const int mode = p->layerMode == 1 ? QXE_BLEND_SRC_OVER : QXE_BLEND_DST_OVER;
    for (int y = 0; y < area.height; ++y) {
        colorReliefRow(maps.shadowRow(y), maps.highlightRow(y), area.width, colors, pixels.data());
        QxBlender::drawBitmapBlend32(area.x, area.y + y, p->dstBitmap, pixels.data(), area.width, 1, area.width, mode);
    }
}

int QxBevel::getOffset() {
    return property == nullptr ? 0 : saturateToInt(int64_t{property->soften} + truncToInt(property->size + 0.5f));
}

}  // namespace QxFontEffect
