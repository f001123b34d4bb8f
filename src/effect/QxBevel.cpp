#include "effect/QxBevel.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "base/Scratch.h"
#include "effect/core_inputs.h"
#include "effect/core_record.h"
#include "effect/exact_distances.h"
#include "effect/kernel/distance.h"
#include "effect/kernel/gauss.h"
#include "effect/outline_distances.h"
#include "effect/relief_passes.h"
#include "effect/safe_convert.h"
#include "pixel/QxBlender.h"

namespace QxFontEffect {
namespace {

constexpr int kInnerStyle = 1;
constexpr int kSmooth = 0;

// From this radius on the smooth band takes the exact transform; below, sub-pixel coverage is worth more.
constexpr int kExactRadius = 11;

// On sides up to this the plain transform is exact: squares add up below 2^24, and no two crossings of parabolas come
// so close to each other or to a whole number that a float could not tell them apart. Beyond, its rounding shows.
constexpr int kMaxExactSide = 2896;

int32_t bandRadius(const QxBevelProperty& property) {
    const int32_t size = truncToInt(property.size);
    if (property.technique != kSmooth) return saturateToInt(int64_t{size} + 2);
    return truncToInt(std::ceil(2.0f * static_cast<float>(size) / 3.0f + 1.0f));
}

/// The exact transform looks at one row and one column beyond the text rectangle.
QxRect withFarEdges(const QxRect& rect) {
    return {rect.left, rect.top, saturateToInt(int64_t{rect.right} + 1), saturateToInt(int64_t{rect.bottom} + 1)};
}

/// The height field of a bevel, in one of four ways. Those that cannot be cut make the whole area be worked out.
class BevelHeights {
public:
    BevelHeights(ReliefArea& area, const ParamPostProcessing& p, int radius, bool inside, bool exact) {
        const ConstPlane8 coverage = coverageOf(*p.srcBitmap);
        const bool large = radius > kMaxSearchRadius || std::max(area.width, area.height) > kMaxExactSide;
        if (exact && large) area.workAll();
        const int width = area.worked.width(), height = area.worked.height();
        if (!exact && radius <= NearOutlineDistances::kMaxRadius)
            mNear.emplace(inkOn(area, coverage, *p.textRect), inside, radius, width, height);
        else if (!exact)
            mFar.emplace(inkOn(area, coverage, *p.textRect), inside, radius, width, height);
        else if (!large)
            mExact.emplace(inkOn(area, coverage, withFarEdges(*p.textRect)), inside, radius, width, height);
        else if (fitsMemory(area.worked))
            mPlain.emplace(inkOn(area, coverage, withFarEdges(*p.textRect)), inside, radius, width, height);
    }

    /// Null without memory.
    HeightRows* rows() {
        HeightRows* made = nullptr;
        if (mNear) made = &*mNear;
        if (mFar) made = &*mFar;
        if (mExact) made = &*mExact;
        if (mPlain) made = &*mPlain;
        return made != nullptr && made->ready() ? made : nullptr;
    }

private:
    std::optional<NearOutlineDistances> mNear;
    std::optional<FarOutlineDistances> mFar;
    std::optional<ExactDistances> mExact;
    std::optional<PlainDistances> mPlain;
};

}  // namespace

void QxBevel::dt1D(float* d, float* f, int n) {
    if (d == nullptr || f == nullptr || n < 1) return;
    Scratch<float> boundaries(int64_t{n} + 1);
    Scratch<int> vertices(n);
    if (boundaries && vertices) squaredDistanceLine(f, n, vertices.data(), boundaries.data(), d);
}

int QxBevel::partialDT(void* work) {
    if (work == nullptr) return 0;
    const BevelDistanceWork& w = *static_cast<const BevelDistanceWork*>(work);
    refineDistances({w.map, w.width, w.height, w.width}, w.radius, w.rowStart, w.rowEnd);
    return 0;
}

int QxBevel::partialLightProcess(void* work) {
    if (work == nullptr) return 0;
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
    if (work == nullptr) return 0;
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
    if (src == nullptr || dst == nullptr || width < 1 || height < 1) return;
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
    const int32_t soften = property->soften;
    const ReliefBlur blurs[] = {{smooth ? radius : 0, radius}, {soften, soften}};
    const int64_t margin = std::max(2 * int64_t{soften}, 2 * int64_t{blurs[0].radius}) + radius;
    ReliefArea area = {};
    if (radius < 1 || !reliefArea(*p->textRect, margin, blurs, 2, p->dstBitmap->width, p->dstBitmap->height, area))
        return;

    BevelHeights heights(area, *p, radius, inside, smooth && radius >= kExactRadius);
    ReliefPainter painter(area, reliefLight(*property), {static_cast<float>(radius), 1.0f, false, inside},
                          {smooth ? kSmoothGain : 1.0f, property->highlightColor, property->shadowColor});
    if (heights.rows() == nullptr || !painter) return;

    const int mode = p->layerMode == 1 ? QXE_BLEND_SRC_OVER : QXE_BLEND_DST_OVER;
    painter.paint(*heights.rows(), [&](int x, int y, int count, uint32_t* pixels) {
        QxBlender::drawBitmapBlend32(area.x + x, area.y + y, p->dstBitmap, pixels, count, 1, count, mode);
    });
}

int QxBevel::getOffset() {
    return property == nullptr ? 0 : saturateToInt(int64_t{property->soften} + truncToInt(property->size + 0.5f));
}

}  // namespace QxFontEffect
