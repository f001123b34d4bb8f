#include "effect/QxInnerShadowProperty.h"

#include "effect/setting_rules.h"

namespace QxFontEffect {

QxInnerShadowProperty::QxInnerShadowProperty(float angle_, float distance_, float size_, unsigned int color_,
                                             float opacity_)
    : QxShadowProperty(static_cast<float>(wholeRemainder(angle_, 360)), distance_, size_, color_, opacity_) {}

}  // namespace QxFontEffect
