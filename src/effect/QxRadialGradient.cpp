#include "effect/QxRadialGradient.h"

#include "effect/gradient_fill.h"

namespace QxFontEffect {
namespace {

float squareFromMiddle(int64_t place, float side) {
    const float distance = static_cast<float>(place) - side * 0.5f;
    return distance * distance;
}

}  // namespace

QxRadialGradient::QxRadialGradient() : property(nullptr) {
    style = QXE_RADIAL_GRADIENT;
}

QxRadialGradient::~QxRadialGradient() {
    deleteGradientRecord(property);
}

void QxRadialGradient::setProperty(QxProperty* p) {
    if (p != nullptr) replaceGradientRecord(property, *static_cast<QxRadialGradientProperty*>(p));
}

void QxRadialGradient::doPostProcessing(ParamPostProcessing* p) {
    GradientFill fill{};
    if (!prepareGradient(p, property, fill)) return;

    const float step = 512.0f / fill.width / property->scale;
    paintGradient(
        *p, fill.box, [&](int64_t column) { return squareFromMiddle(column, fill.width); },
        [&](int64_t row, GradientRow& gradient, uint32_t* dst) {
            gradient.rowTerm = squareFromMiddle(row, fill.height);
            radialGradientRow(gradient, step, fill.table, dst);
        });
}

}  // namespace QxFontEffect
