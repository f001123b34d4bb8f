#include "effect/QxLinearGradient.h"

#include <cmath>

#include "effect/gradient_fill.h"
#include "effect/kernel/pinned_math.h"

namespace QxFontEffect {
namespace {

// Degrees to radians in seven digits. The sign turns the direction: angles count against the clock.
constexpr float kRadiansPerDegree = -0.01745328f;

/// Table entries that a step of one pixel along the rows and along the columns is worth.
struct Slope {
    float alongRows;
    float alongColumns;
};

Slope slopeOf(const QxLinearGradientProperty& property, float width, float height) {
    const float x = property.angle * kRadiansPerDegree;
    const float aspect = height / width;
    const float sine = pinnedSin(x), cosine = pinnedCos(x);
    const bool leavesAtSides = std::fabs(pinnedTan(x)) < aspect;
    const float length = (leavesAtSides ? width : height) / std::fabs(leavesAtSides ? cosine : sine);
    const float step = 256.0f / property.scale / length;
    return {sine * step, cosine * step};
}

}  // namespace

QxLinearGradient::QxLinearGradient() : property(nullptr) {
    style = QXE_LINEAR_GRADIENT;
}

QxLinearGradient::~QxLinearGradient() {
    deleteGradientRecord(property);
}

void QxLinearGradient::setProperty(QxProperty* p) {
    if (p != nullptr) replaceGradientRecord(property, *static_cast<QxLinearGradientProperty*>(p));
}

void QxLinearGradient::doPostProcessing(ParamPostProcessing* p) {
    GradientFill fill{};
    if (!prepareGradient(p, property, fill)) return;

    const Slope slope = slopeOf(*property, fill.width, fill.height);
    paintGradient(
        *p, fill.box,
        [&](int64_t column) { return slope.alongColumns * (static_cast<float>(column) - fill.width * 0.5f); },
        [&](int64_t row, GradientRow& gradient, uint32_t* dst) {
            gradient.rowTerm = slope.alongRows * (static_cast<float>(row) - fill.height * 0.5f);
            linearGradientRow(gradient, fill.table, dst);
        });
}

}  // namespace QxFontEffect
