#include "effect/gradient_fill.h"

#include <new>

#include "effect/kernel/color_ramp.h"

namespace QxFontEffect {

QxGradient* copyStops(const QxGradient* stops, int32_t count) {
    if (stops == nullptr || count < 1) return nullptr;
    QxGradient* copy = new (std::nothrow) QxGradient[static_cast<size_t>(count)];
    if (copy != nullptr) std::copy_n(stops, count, copy);
    return copy;
}

namespace {

constexpr float kSmallestScale = 0.1f;

void makeTable(const QxGradientFillProperty& property, uint32_t* table) {
    uint32_t ramp[kRampEntries];
    makeColorRamp(property.gradient, property.count, RampStart::AtFirstStop, RampCurve::Linear, ramp);
    for (int i = 0; i < kGradientColors; ++i) table[i] = premultiplyColor(ramp[i]);
}

GradientBox gradientBox(const ParamPostProcessing& p) {
    const QxRect& rect = *p.textRect;
    const int64_t right = std::min<int64_t>({rect.right, p.srcBitmap->width, p.dstBitmap->width});
    const int64_t bottom = std::min<int64_t>({rect.bottom, p.srcBitmap->height, p.dstBitmap->height});
    const int64_t left = std::min<int64_t>(std::max(rect.left, 0), right);
    const int64_t top = std::min<int64_t>(std::max(rect.top, 0), bottom);
    return {int64_t{rect.right} - rect.left,
            int64_t{rect.bottom} - rect.top,
            left - rect.left,
            top - rect.top,
            right - rect.left,
            bottom - rect.top};
}

}  // namespace

bool prepareGradient(const ParamPostProcessing* p, const QxGradientFillProperty* property, GradientFill& fill) {
    if (!drawable(p, property) || property->gradient == nullptr || property->count < 1) return false;
    fill.box = gradientBox(*p);
    if (!(property->scale >= kSmallestScale) || fill.box.right <= fill.box.left || fill.box.bottom <= fill.box.top)
        return false;
    fill.width = static_cast<float>(fill.box.width);
    fill.height = static_cast<float>(fill.box.height);
    makeTable(*property, fill.table);
    return true;
}

}  // namespace QxFontEffect
