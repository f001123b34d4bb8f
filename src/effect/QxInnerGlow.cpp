#include "effect/QxInnerGlow.h"

#include "effect/core_inputs.h"
#include "effect/glow.h"

namespace QxFontEffect {

QxInnerGlow::QxInnerGlow() : property(nullptr) {
    style = QXE_INNER_GLOW;
}

QxInnerGlow::~QxInnerGlow() {
    deleteGradientRecord(property);
}

void QxInnerGlow::setProperty(QxProperty* p) {
    if (p != nullptr) replaceGlowRecord(property, *static_cast<QxInnerGlowProperty*>(p));
}

int QxInnerGlow::getOffset() {
    return glowMargin(property);
}

void QxInnerGlow::makeColorLUT(unsigned int* lut, float range, int mode) {
    makeGlowRamp(property, lut, range, mode);
}

void QxInnerGlow::increaseByBoxFilter(unsigned char* buffer, int passes, int width, int height) {
    growGlow(buffer, passes, width, height);
}

void QxInnerGlow::doPostProcessing(ParamPostProcessing* p) {
    if (drawable(p, property)) drawGlow(*p, *property, GlowSide::Inner);
}

}  // namespace QxFontEffect
