#include <algorithm>
#include <vector>

#include "effect/kernel/sqrt_table.h"
#include "plain/plain.h"
// The tests' loops call the library for every root, which takes nearly half of their time. Plain loops that anybody
// would write look it up; the table holds the roots of all radii measured here.
#define roundedIntSqrt(squared) QX_INT_SQRT_TABLE[squared]
#include "support/reference/bevel_reference.h"
#undef roundedIntSqrt
#include "support/reference/gauss_reference.h"
#include "support/reference/glow_reference.h"
#include "support/reference/gradient_reference.h"
#include "support/reference/pattern_reference.h"
#include "support/reference/shadow_reference.h"
#include "support/reference/stroke_reference.h"

namespace qxbench::plain {

using namespace QxFontEffect;
namespace reference = QxFontEffect::test::reference;

namespace {

std::vector<float> squaredDistanceMap(ConstPlane8 ink) {
    const size_t width = static_cast<size_t>(ink.width), height = static_cast<size_t>(ink.height);
    std::vector<float> map(width * height);
    std::vector<float> f(height), d(height);
    for (size_t x = 0; x < width; ++x) {
        for (size_t y = 0; y < height; ++y) f[y] = ink.row(static_cast<int>(y))[x] != 0 ? 0.0f : 1e20f;
        reference::squaredDistances(d.data(), f.data(), ink.height);
        for (size_t y = 0; y < height; ++y) map[y * width + x] = d[y];
    }
    d.resize(width);
    for (size_t y = 0; y < height; ++y) {
        reference::squaredDistances(d.data(), &map[y * width], ink.width);
        std::copy(d.begin(), d.end(), map.begin() + static_cast<ptrdiff_t>(y * width));
    }
    return map;
}

}  // namespace

void blur(ConstPlane8 src, int radius, int peak, Plane8 dst) {
    reference::Grey padded(int64_t{src.width} + 2 * radius, int64_t{src.height} + 2 * radius);
    for (int y = 0; y < src.height; ++y) std::copy_n(src.row(y), src.width, &padded.at(radius, y + radius));
    const reference::Bell bell = reference::bell(radius, static_cast<float>(peak));
    for (int y = 0; y < src.height; ++y) {
        const std::vector<int64_t> sums = reference::blurredRowSums(padded, bell, y + radius, 0);
        for (int x = 0; x < src.width; ++x)
            dst.row(y)[x] = static_cast<uint8_t>(sums[static_cast<size_t>(x + radius)] / bell.sum);
    }
}

void distances(ConstPlane8 ink, int radius, PlaneF map) {
    const std::vector<float> squares = squaredDistanceMap(ink);
    const float limit = static_cast<float>(radius);
    for (int y = 0; y < map.height; ++y)
        for (int x = 0; x < map.width; ++x) {
            const float square =
                squares[static_cast<size_t>(y) * static_cast<size_t>(map.width) + static_cast<size_t>(x)];
            map.row(y)[x] = square <= 0.0f ? 0.0f : square > limit * limit ? limit : fsqrt(square);
        }
}

void outerShadow(const QxOuterShadowProperty& property, const ParamPostProcessing& p) {
    reference::outerShadow(property, p);
}

void innerShadow(const QxInnerShadowProperty& property, const ParamPostProcessing& p) {
    reference::innerShadow(property, p);
}

void outerGlow(const QxOuterGlowProperty& property, const ParamPostProcessing& p) {
    reference::glow(property, p, false);
}

void innerGlow(const QxInnerGlowProperty& property, const ParamPostProcessing& p) {
    reference::glow(property, p, true);
}

void stroke(const QxStrokeProperty& property, const ParamPostProcessing& p) {
    reference::stroke(property, p);
}

void bevel(const QxBevelProperty& property, const ParamPostProcessing& p) {
    reference::bevel(property, p);
}

void linearGradient(const QxLinearGradientProperty& property, const ParamPostProcessing& p) {
    reference::linearGradient(property, p);
}

void radialGradient(const QxRadialGradientProperty& property, const ParamPostProcessing& p) {
    reference::radialGradient(property, p);
}

void pattern(const QxPatternProperty& property, const ParamPostProcessing& p) {
    const QxRect& rect = *p.textRect;
    std::vector<uint32_t> pixels =
        test::patternPixelsRef(*p.srcBitmap, rect, *property.pattern, property.scale, property.opacity);
    const int width = rect.right - rect.left;
    QxBlender::drawBitmapBlend32(rect.left, rect.top, p.dstBitmap, pixels.data(), width, rect.bottom - rect.top, width,
                                 QXE_BLEND_DST_OVER);
}

}  // namespace qxbench::plain
