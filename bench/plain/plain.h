#pragma once

#include <cstdint>

#include "effect/ParamPostProcessing.h"
#include "effect/QxBevelProperty.h"
#include "effect/QxInnerGlowProperty.h"
#include "effect/QxInnerShadowProperty.h"
#include "effect/QxLinearGradientProperty.h"
#include "effect/QxOuterGlowProperty.h"
#include "effect/QxOuterShadowProperty.h"
#include "effect/QxPatternProperty.h"
#include "effect/QxRadialGradientProperty.h"
#include "effect/QxStrokeProperty.h"
#include "pixel/plane.h"

/// The plain loops that the tests compare with, compiled with -O2. Effects blend through the library, so their figures
/// flatter the plain loops a little.
namespace qxbench::plain {

void blur(QxFontEffect::ConstPlane8 src, int radius, int peak, QxFontEffect::Plane8 dst);
/// Exact distances up to `radius` from pixels with coverage.
void distances(QxFontEffect::ConstPlane8 ink, int radius, QxFontEffect::PlaneF map);
void outerShadow(const QxFontEffect::QxOuterShadowProperty& property, const QxFontEffect::ParamPostProcessing& p);
void innerShadow(const QxFontEffect::QxInnerShadowProperty& property, const QxFontEffect::ParamPostProcessing& p);
void outerGlow(const QxFontEffect::QxOuterGlowProperty& property, const QxFontEffect::ParamPostProcessing& p);
void innerGlow(const QxFontEffect::QxInnerGlowProperty& property, const QxFontEffect::ParamPostProcessing& p);
void stroke(const QxFontEffect::QxStrokeProperty& property, const QxFontEffect::ParamPostProcessing& p);
void bevel(const QxFontEffect::QxBevelProperty& property, const QxFontEffect::ParamPostProcessing& p);
void linearGradient(const QxFontEffect::QxLinearGradientProperty& property, const QxFontEffect::ParamPostProcessing& p);
void radialGradient(const QxFontEffect::QxRadialGradientProperty& property, const QxFontEffect::ParamPostProcessing& p);
void pattern(const QxFontEffect::QxPatternProperty& property, const QxFontEffect::ParamPostProcessing& p);

using MaskBlend = void (*)(const uint8_t* mask, uint32_t color, uint8_t* dst, int64_t count);
using PixelBlend = void (*)(const uint8_t* src, uint8_t* dst, int64_t count);

void srcOver8(const uint8_t* mask, uint32_t color, uint8_t* dst, int64_t count);
void dstOver8(const uint8_t* mask, uint32_t color, uint8_t* dst, int64_t count);
void dstOverNsa8(const uint8_t* mask, uint32_t color, uint8_t* dst, int64_t count);
void dstOverSa8(const uint8_t* mask, uint32_t color, uint8_t* dst, int64_t count);
void draw8(const uint8_t* mask, uint32_t color, uint8_t* dst, int64_t count);
void maximum(const uint8_t* src, uint8_t* dst, int64_t count);
void dstOver32(const uint8_t* src, uint8_t* dst, int64_t count);
void dstOver32Rgba(const uint8_t* src, uint8_t* dst, int64_t count);
void srcOver32(const uint8_t* src, uint8_t* dst, int64_t count);
void swapRedBlue(uint8_t* pixels, int64_t count);

/// The layer composition without the un-premultiply.
void compose(const uint8_t* layer, const uint8_t* coverage, uint8_t* picture, int64_t count);
void unpremultiply(int textAlpha, uint8_t* picture, int64_t count);

}  // namespace qxbench::plain
