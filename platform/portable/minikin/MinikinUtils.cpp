#include <hwui/MinikinUtils.h>

#include <algorithm>
#include <cmath>

#include "CheckedNumber.h"
#include "LineBuilder.h"
#include "TextSettings.h"

namespace android {

namespace {

// HarfBuzz and ICU count units in ints.
constexpr size_t kMaxUnits = 1 << 30;

float finiteOr(float value, float otherwise) {
    return std::isfinite(value) ? value : otherwise;
}

minikin::TextSettings settingsOf(const Paint& paint, const Typeface& typeface) {
    const SkFont& font = paint.getSkFont();
    minikin::TextSettings settings;
    settings.wish.style = typeface.fStyle;
    settings.wish.localeListId = paint.getMinikinLocaleListId();
    settings.wish.variant = paint.getFamilyVariant();

    // Hinted text is set at whole sizes but drawn at the exact one, so 48.9 px stands on 48 px advances.
    const float size = finiteOr(font.getSize(), 0.0f);
    settings.raster.size = font.isLinearMetrics() ? size : static_cast<float>(minikin::truncatedToInt(size));
    settings.raster.scaleX = finiteOr(font.getScaleX(), 1.0f);
    settings.raster.skewX = finiteOr(font.getSkewX(), 0.0f);
    settings.raster.fontFlags = MinikinFontSkia::packFontFlags(font);

    settings.letterSpacing = finiteOr(paint.getLetterSpacing(), 0.0f);
    settings.wordSpacing = finiteOr(paint.getWordSpacing(), 0.0f);
    settings.features = paint.getFontFeatureSettings();
    return settings;
}

size_t endOf(size_t start, size_t count, size_t limit) {
    return start + std::min(count, limit - start);
}

}  // namespace

minikin::Layout MinikinUtils::doLayout(const Paint* paint, minikin::Bidi bidiFlags, const Typeface* typeface,
                                       const uint16_t* buf, size_t bufSize, size_t start, size_t count,
                                       size_t contextStart, size_t contextCount, minikin::MeasuredText*) {
    if (paint == nullptr || typeface == nullptr || typeface->fFontCollection == nullptr || buf == nullptr) return {};

    const size_t size = std::min(bufSize, kMaxUnits);
    const minikin::UnitRange line = {std::min(start, size), endOf(std::min(start, size), count, size)};
    const size_t first = std::min(contextStart, line.start);
    const size_t end = std::max(line.end, endOf(first, contextCount, size));

    const minikin::TextSettings settings = settingsOf(*paint, *typeface);
    minikin::LineBuilder builder(*typeface->fFontCollection, settings);
    return builder.build(buf + first, end - first, {line.start - first, line.end - first}, bidiFlags);
}

}  // namespace android
