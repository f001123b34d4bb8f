#include "effect/glow.h"

#include <algorithm>

#include "base/Scratch.h"
#include "effect/core_inputs.h"
#include "effect/kernel/box_grow.h"
#include "effect/kernel/color_ramp.h"
#include "effect/kernel/gauss_rows.h"
#include "effect/kernel/pad.h"
#include "effect/kernel/ramp_blend.h"
#include "effect/safe_convert.h"
#include "effect/visible_part.h"
#include "pixel/QxBlender.h"

namespace QxFontEffect {
namespace {

constexpr uint32_t kOpaqueWhite = 0xFFFFFFFFu;

// The growth takes about half a pass per pixel of size, so larger glows would not be drawn within a minute, and
// their area would not fit the memory.
constexpr int32_t kMaxGlowStep = 4097;

/// All lengths of a glow follow from its size. `step` is the whole size plus 1, 0 for nothing to draw.
struct GlowLengths {
    int32_t step;
    int32_t pad;     ///< from the ink to the edge of the area on every side
    int32_t passes;  ///< of growth
    int32_t radius;  ///< of the blur
    int32_t margin;  ///< around the ink that the growth needs: it reaches one pixel a pass
};

GlowLengths glowLengths(float size) {
    const int32_t step = size == size ? saturateToInt(int64_t{truncToInt(size)} + 1) : 0;
    if (step < 1 || step > kMaxGlowStep) return {};
    GlowLengths lengths{};
    lengths.step = step;
    lengths.pad = 2 * step;
    // The product is double, the factor single: 0.475f lies below 0.475, so 40 gives 18 passes and not 19.
    lengths.passes = static_cast<int32_t>(static_cast<double>(step) * static_cast<double>(0.475f));
    if (lengths.passes < 2) lengths.passes = 1;
    lengths.radius = static_cast<int32_t>(static_cast<float>(step) * 0.9f);
    lengths.margin = std::min(lengths.passes + 2, lengths.pad);
    return lengths;
}

/// Grey values of a glow before the blur: what there is of the ink, or what is missing of it, grown and then measured
/// from 0 either way, so that they are 0 all around.
///
/// @param growth  of the ink widened by `lengths.margin` on every side.
ConstPlane8 grownPlane(ConstPlane8 ink, const GlowLengths& lengths, GlowSide side, BoxGrowth& growth) {
    padPlane8(ink, lengths.margin, 0, growth.start());
    if (side == GlowSide::Inner) complementPlane8(growth.start());
    const Plane8 plane = growth.grown();
    const ConstPlane8 grown = {plane.data, plane.width, plane.height, plane.stride};
    if (side == GlowSide::Outer) return grown;
    complementPlane8(plane);
    // The growth leaves the edge columns dark. Where they are not those of the whole area, they are free of ink.
    if (lengths.margin == lengths.pad) return grown;
    for (int y = 0; y < plane.height; ++y) plane.row(y)[0] = plane.row(y)[plane.width - 1] = 0;
    return grown;
}

/// The 256 colours of a glow by grey value, as pixels.
void makeColors(const QxGlowProperty& property, uint32_t* colors) {
    uint32_t lut[kRampEntries];
    makeGlowRamp(&property, lut, 0.3f, 0);
    for (int grey = 0; grey < 256; ++grey) {
        const uint32_t color = premultiplyColor(lut[256 - grey]);
        colors[grey] = (color & 0xFF00FF00u) | (color >> 16 & 0xFFu) | (color & 0xFFu) << 16;
    }
}

/// Draws opaque white beneath the part of a picture that lies in `area` but not in `hole`.
/// @return false without memory.
bool drawWhiteAround(const GaussRange& hole, const GaussRange& area, const QxBitmap& picture) {
    const int width = area.xEnd - area.xStart;
    Scratch<uint8_t> full(width, kGaussRows);
    if (!full) return false;
    std::fill_n(full.data(), full.count(), uint8_t{255});
    const auto draw = [&](int left, int right, int top, int bottom) {
        for (int y = top; y < bottom; y += kGaussRows)
            QxBlender::drawBitmapBlend8(left, y, &picture, full.data(), right - left, std::min(kGaussRows, bottom - y),
                                        width, kOpaqueWhite, QXE_BLEND_DST_OVER);
    };
    draw(area.xStart, area.xEnd, area.yStart, hole.yStart);
    draw(area.xStart, hole.xStart, hole.yStart, hole.yEnd);
    draw(hole.xEnd, area.xEnd, hole.yStart, hole.yEnd);
    draw(area.xStart, area.xEnd, hole.yEnd, area.yEnd);
    return true;
}

}  // namespace

void drawGlow(const ParamPostProcessing& p, const QxGlowProperty& property, GlowSide side) {
    const QxRect rect = inkRect(p);
    const ConstPlane8 ink = inkOf(*p.srcBitmap, rect);
    const GlowLengths lengths = glowLengths(property.size);
    if (lengths.step == 0 || std::max(ink.width, ink.height) > kMaxPictureSide) return;

    // The area is the ink widened by the pad; the blur computes all of it but a frame as wide as its radius.
    const int radius = lengths.radius;
    const int64_t x = int64_t{rect.left} - lengths.pad;
    const int64_t y = int64_t{rect.top} - lengths.pad;
    const int areaWidth = ink.width + 2 * lengths.pad;
    const int areaHeight = ink.height + 2 * lengths.pad;
    const GaussRange inner = {radius, areaWidth - radius, radius, areaHeight - radius};
    GaussRange seen = visiblePart(x, y, areaWidth, areaHeight, *p.dstBitmap);
    if (side == GlowSide::Outer) seen = common(seen, inner);
    if (isEmpty(seen)) return;
    GaussRange blurred = common(seen, inner);
    if (isEmpty(blurred)) blurred = {seen.xStart, seen.xStart, seen.yStart, seen.yStart};

    const int planeWidth = ink.width + 2 * lengths.margin;
    const int planeHeight = ink.height + 2 * lengths.margin;
    const GaussBell bell = makeGaussBell(radius, kGlowPeak);
    Scratch<uint8_t> planes(BoxGrowth::scratchBytes(planeWidth, planeHeight, lengths.passes));
    if (!planes) return;
    BoxGrowth growth(planeWidth, planeHeight, lengths.passes, planes.data());
    const int toPlane = lengths.margin - lengths.pad;
    // The inner glow is the complement of a blurred complement: the first pass rounds up to make up for it.
    const GaussRounding columns = side == GlowSide::Inner ? GaussRounding::Up : GaussRounding::Down;
    const GaussJob job = {grownPlane(ink, lengths, side, growth), &bell, moved(blurred, toPlane, toPlane), columns,
                          GaussRounding::Down};
    Scratch<uint8_t> work(GaussRows::scratchBytes(job));
    if (!work) return;
    const auto inPicture = [&](const GaussRange& part) {
        return moved(part, static_cast<int>(x), static_cast<int>(y));
    };
    if (side == GlowSide::Inner && !drawWhiteAround(inPicture(blurred), inPicture(seen), *p.dstBitmap)) return;

    uint32_t colors[256];
    makeColors(property, colors);
    GaussRows rows(job, work.data());
    const int64_t stride = 4 * int64_t{p.dstBitmap->width};
    uint8_t* dst = p.dstBitmap->pixels + (y + blurred.yStart) * stride + 4 * (x + blurred.xStart);
    for (ConstPlane8 grey = rows.next(); grey.height > 0; grey = rows.next())
        for (int row = 0; row < grey.height; ++row, dst += stride)
            rampBlendKernels().row(grey.row(row), colors, dst, grey.width);
}

void makeGlowRamp(const QxGlowProperty* property, uint32_t* lut, float range, int mode) {
    if (lut == nullptr) return;
    fillRamp(0, lut);
    if (property == nullptr || property->size == 0.0f) return;
    const RampCurve curve = mode == 1 ? RampCurve::SquareRoot : mode == 2 ? RampCurve::Square : RampCurve::Linear;
    if (property->count < 1 || property->gradient == nullptr)
        fillRamp(property->color, lut);
    else
        makeColorRamp(property->gradient, property->count, RampStart::AtZero, curve, lut);
    fadeRampAlpha(lut, range);
}

void growGlow(uint8_t* buffer, int passes, int width, int height) {
    if (buffer == nullptr || width < 1 || height < 1) return;
    Scratch<uint8_t> planes(BoxGrowth::scratchBytes(width, height, passes));
    if (planes) growByBoxPlane8({buffer, width, height, width}, passes, planes.data());
}

int32_t glowMargin(const QxGlowProperty* property) {
    return property == nullptr ? 0 : truncToInt(property->size + 0.5f);
}

}  // namespace QxFontEffect
