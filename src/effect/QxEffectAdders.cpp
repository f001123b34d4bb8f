#include <algorithm>

#include "base/Scratch.h"
#include "base/platform_log.h"
#include "effect/QxBevelProperty.h"
#include "effect/QxEffect.h"
#include "effect/QxEmbossProperty.h"
#include "effect/QxInnerGlowProperty.h"
#include "effect/QxInnerShadowProperty.h"
#include "effect/QxLinearGradientProperty.h"
#include "effect/QxOuterGlowProperty.h"
#include "effect/QxOuterShadowProperty.h"
#include "effect/QxPatternProperty.h"
#include "effect/QxRadialGradientProperty.h"
#include "effect/QxStrokeProperty.h"
#include "effect/QxTextProperty.h"
#include "effect/setting_rules.h"

// The adders turn a user's settings into records: opacity goes into the colours, angles into 0..359, lengths into
// whole pixels. Limits that the record's own constructor sets (depth, soften, scale) are left to it.
namespace QxFontEffect {
namespace {

constexpr char kTag[] = "QxEffect";
constexpr int kMaxStops = 256;

float azimuth(float degrees) {
    return static_cast<float>(wholeRemainderFromZero(degrees, 360));
}
float elevation(float degrees) {
    return static_cast<float>(wholeRemainderFromZero(degrees, 90));
}
float wholePixels(float length) {
    return static_cast<float>(std::clamp(truncToInt(length), 0, 100));
}

uint32_t premultipliedBy(float opacity, uint32_t color) {
    return premultiplied(color, alphaOf(clamp01(opacity)));
}
uint32_t withOpacity(float opacity, uint32_t color) {
    return withAlpha(color, alphaOf(clamp01(opacity)));
}

/// A user's stops with the effect's opacity folded in; at most 256.
class RebuiltStops {
public:
    RebuiltStops(float opacity, int count, const QxGradient* stops)
        : mCount(stops == nullptr ? 0 : std::clamp(count, 0, kMaxStops)), mStops(mCount) {
        for (int i = 0; mStops && i < mCount; ++i) mStops[static_cast<size_t>(i)] = rebuilt(opacity, stops[i]);
    }

    explicit operator bool() const { return static_cast<bool>(mStops); }
    int count() const { return mCount; }
    QxGradient* data() { return mStops.data(); }

private:
    static QxGradient rebuilt(float opacity, const QxGradient& stop) {
        const float alpha = clamp01(stop.alpha);
        // Hundredths, because the cache key tells no smaller steps apart.
        const float position = static_cast<float>(truncToInt(stop.position * 100.0f)) / 100.0f;
        return {withOpacity(opacity * alpha, stop.color), alpha, clamp01(position)};
    }

    int mCount;
    Scratch<QxGradient> mStops;
};

template <typename Record>
int addShadow(QxEffect& stack, int type, float angle, float distance, float size, uint32_t color, float opacity) {
    Record record(azimuth(angle), wholePixels(distance), wholePixels(size), premultipliedBy(opacity, color),
                  clamp01(opacity));
    return stack.addEffect(-1, type, &record);
}

template <typename Record>
int addGlow(QxEffect& stack, int type, float size, uint32_t color, float opacity, int count, const QxGradient* stops) {
    RebuiltStops own(opacity, count, stops);
    if (!own) return -1;
    Record record(wholePixels(size), withOpacity(opacity, color), clamp01(opacity), own.count(), own.data());
    return stack.addEffect(-1, type, &record);
}

template <typename Record>
int addGradient(QxEffect& stack, int type, float angle, float scale, float opacity, int count,
                const QxGradient* stops) {
    RebuiltStops own(opacity, count, stops);
    if (!own) return -1;
    Record record(azimuth(angle), scale, clamp01(opacity), own.count(), own.data());
    return stack.addEffect(-1, type, &record);
}

template <typename Record>
int addRelief(QxEffect& stack, int type, int style, float size, float depth, int direction, int technique, int soften,
              float opacity, float angle, float altitude, uint32_t highlightColor, float highlightOpacity,
              uint32_t shadowColor, float shadowOpacity) {
    Record record(style, size, depth, direction, technique, soften, clamp01(opacity), azimuth(angle),
                  elevation(altitude), withOpacity(highlightOpacity, highlightColor), clamp01(highlightOpacity),
                  withOpacity(shadowOpacity, shadowColor), clamp01(shadowOpacity));
    return stack.addEffect(-1, type, &record);
}

}  // namespace

int QxEffect::addOuterShadowText(float angle, float distance, float size, unsigned int color, float opacity) {
    return addShadow<QxOuterShadowProperty>(*this, QXE_OUTER_SHADOW, angle, distance, size, color, opacity);
}

int QxEffect::addInnerShadowText(float angle, float distance, float size, unsigned int color, float opacity) {
    return addShadow<QxInnerShadowProperty>(*this, QXE_INNER_SHADOW, angle, distance, size, color, opacity);
}

int QxEffect::addOuterGlowText(float size, unsigned int color, float opacity, int count, QxGradient* stops) {
    return addGlow<QxOuterGlowProperty>(*this, QXE_OUTER_GLOW, size, color, opacity, count, stops);
}

int QxEffect::addInnerGlowText(float size, unsigned int color, float opacity, int count, QxGradient* stops) {
    return addGlow<QxInnerGlowProperty>(*this, QXE_INNER_GLOW, size, color, opacity, count, stops);
}

int QxEffect::addBevelText(int style, float size, float depth, int direction, int technique, int soften, float opacity,
                           float angle, float altitude, unsigned int highlightColor, float highlightOpacity,
                           unsigned int shadowColor, float shadowOpacity) {
    return addRelief<QxBevelProperty>(*this, QXE_BEVEL, style, size, depth, direction, technique, soften, opacity,
                                      angle, altitude, highlightColor, highlightOpacity, shadowColor, shadowOpacity);
}

int QxEffect::addEmbossText(int style, float size, float depth, int direction, int technique, int soften, float opacity,
                            float angle, float altitude, unsigned int highlightColor, float highlightOpacity,
                            unsigned int shadowColor, float shadowOpacity) {
    return addRelief<QxEmbossProperty>(*this, QXE_EMBOSS, style, size, depth, direction, technique, soften, opacity,
                                       angle, altitude, highlightColor, highlightOpacity, shadowColor, shadowOpacity);
}

int QxEffect::addLinearGradientText(float angle, float scale, float opacity, int count, QxGradient* stops) {
    return addGradient<QxLinearGradientProperty>(*this, QXE_LINEAR_GRADIENT, angle, scale, opacity, count, stops);
}

int QxEffect::addRadialGradientText(float scale, float opacity, int count, QxGradient* stops) {
    return addGradient<QxRadialGradientProperty>(*this, QXE_RADIAL_GRADIENT, 0.0f, scale, opacity, count, stops);
}

int QxEffect::addStrokeText(float size, unsigned int color, float opacity, int mode, int position) {
    QxStrokeProperty record(wholePixels(size), premultipliedBy(opacity, color), clamp01(opacity), mode, position);
    return addEffect(-1, QXE_STROKE, &record);
}

int QxEffect::addPatternText(QxBitmap* pattern, float scale, float opacity) {
    QxPatternProperty record(pattern, scale, clamp01(opacity));
    return addEffect(-1, QXE_PATTERN, &record);
}

int QxEffect::addText(unsigned int color, float opacity) {
    logDebug(kTag, "AddText(%p) - (color:%d/opacity:%f)", static_cast<void*>(this), static_cast<int>(color),
             static_cast<double>(opacity));
    textAlpha = static_cast<int32_t>(color >> 24);
    QxTextProperty record(premultipliedBy(opacity, color), clamp01(opacity));
    return addEffect(-1, QXE_TEXT, &record);
}

int QxEffect::addText(unsigned int color) {
    logDebug(kTag, "AddText(%p) - (color:%x)", static_cast<void*>(this), color);
    textAlpha = static_cast<int32_t>(color >> 24);
    QxTextProperty record(withAlpha(color, 255), 1.0f);
    return addEffect(-1, QXE_TEXT, &record);
}

}  // namespace QxFontEffect
