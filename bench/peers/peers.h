#pragma once

#include <string>

#include "effect/QxBevelProperty.h"
#include "effect/QxGlowProperty.h"
#include "effect/QxGradientFillProperty.h"
#include "effect/QxPatternProperty.h"
#include "effect/QxShadowProperty.h"
#include "effect/QxStrokeProperty.h"
#include "harness/row.h"
#include "pixel/plane.h"
#include "scene/core_scene.h"

/// The same work done with OpenCV and pixman, one thread.
///
/// Every function gives a step that writes where the library's own step writes, nearly the same pixels; none where
/// the program was built without these libraries. Pixman is given its native pixel order, which has red and blue
/// the other way round: colours are exchanged, so that the bytes in memory are those of the library. Scratch memory is
/// taken and given back in every execution, as the library does. What a step refers to must outlive it.
namespace qxbench::peers {

/// Names and versions, "" where there are none.
std::string description();

Step blur(QxFontEffect::ConstPlane8 src, int radius, int peak, QxFontEffect::Plane8 dst);
Step distances(QxFontEffect::ConstPlane8 ink, int radius, QxFontEffect::PlaneF map);

Step outerShadow(CoreScene& scene, const QxFontEffect::QxShadowProperty& property);
Step innerShadow(CoreScene& scene, const QxFontEffect::QxShadowProperty& property);
/// What looks the colours of a glow up: cv::LUT, or pixman by the palette of an indexed picture, which is faster.
enum class GlowColors { Table, Palette };

Step outerGlow(CoreScene& scene, const QxFontEffect::QxGlowProperty& property, GlowColors by);
Step innerGlow(CoreScene& scene, const QxFontEffect::QxGlowProperty& property, GlowColors by);
Step stroke(CoreScene& scene, const QxFontEffect::QxStrokeProperty& property);
/// The smooth technique.
Step bevel(CoreScene& scene, const QxFontEffect::QxBevelProperty& property);
Step linearGradient(CoreScene& scene, const QxFontEffect::QxGradientFillProperty& property);
Step radialGradient(CoreScene& scene, const QxFontEffect::QxGradientFillProperty& property);
Step pattern(CoreScene& scene, const QxFontEffect::QxPatternProperty& property);

enum class Operator { SrcOver, DstOver };

/// A colour through a mask onto a picture of the same size. `color` is premultiplied.
Step blendMask(Operator op, QxFontEffect::ConstPlane8 mask, uint32_t color, uint8_t* picture);
/// A picture of colour values onto one of the same size.
Step blendPicture(Operator op, QxFontEffect::ConstPlane32 src, uint8_t* picture);
Step maximum(QxFontEffect::ConstPlane8 mask, QxFontEffect::Plane8 dst);
Step unpremultiply(QxFontEffect::Plane32 picture);
Step swapRedBlue(QxFontEffect::Plane32 picture);

}  // namespace qxbench::peers
