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
    if (!drawable(p, property) || !paintsGradient(*property)) return;
    const GradientBox box = gradientBox(*p);
    if (box.right <= box.left || box.bottom <= box.top) return;

    uint32_t table[kGradientColors];
    makeGradientTable(*property, table);

    const float width = static_cast<float>(box.width), height = static_cast<float>(box.height);
    const float step = 512.0f / width / property->scale;
    paintGradient(
        *p, box, [&](int64_t column) { return squareFromMiddle(column, width); },
        [&](int64_t row, GradientRow& gradient, uint32_t* dst) {
            gradient.rowTerm = squareFromMiddle(row, height);
            radialGradientRow(gradient, step, table, dst);
        });
}

}  // namespace QxFontEffect
