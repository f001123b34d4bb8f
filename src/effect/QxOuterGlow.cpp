#include "effect/QxOuterGlow.h"

#include "effect/core_inputs.h"
#include "effect/glow.h"

namespace QxFontEffect {

QxOuterGlow::QxOuterGlow() : property(nullptr) {
    style = QXE_OUTER_GLOW;
}

QxOuterGlow::~QxOuterGlow() {
    deleteGradientRecord(property);
}

void QxOuterGlow::setProperty(QxProperty* p) {
    if (p != nullptr) replaceGlowRecord(property, *static_cast<QxOuterGlowProperty*>(p));
}

int QxOuterGlow::getOffset() {
    return glowMargin(property);
}

void QxOuterGlow::makeColorLUT(unsigned int* lut, float range, int mode) {
    makeGlowRamp(property, lut, range, mode);
}

void QxOuterGlow::increaseByBoxFilter(unsigned char* buffer, int passes, int width, int height) {
    growGlow(buffer, passes, width, height);
}

void QxOuterGlow::doPostProcessing(ParamPostProcessing* p) {
    if (drawable(p, property)) drawGlow(*p, *property, GlowSide::Outer);
}

}  // namespace QxFontEffect
