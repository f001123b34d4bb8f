#include <optional>
#include <vector>

#include "base/platform_log.h"
#include "bridge/native_entry.h"
#include "bridge/text_binding.h"
#include "bridge/text_natives.h"
#include "effect/QxEffect.h"
#include "text/QxTextObject.h"

// The natives that change the effect stack.

namespace QxFontEffect {

namespace {

constexpr jint kNoEffect = -1;

/// Runs one adder on the instance's effect stack.
template <typename Add>
jint addTo(JNIEnv* env, jobject self, int line, const char* noStackMessage, Add&& add) {
    return guarded(kNoEffect, [&]() -> jint {
        QxTextObject* const text = boundObjectOrError(env, self, line);
        if (text == nullptr) return kNoEffect;
        QxEffect* const effect = text->GetEffect();
        if (effect == nullptr) {
            logError(kTextTag, "%s", noStackMessage);
            return kNoEffect;
        }
        return add(*effect);
    });
}

/// Stops out of three arrays of one length.
bool readStops(JNIEnv* env, jintArray colors, jfloatArray alphas, jfloatArray positions,
               std::vector<QxGradient>* stops) {
    if (colors == nullptr || alphas == nullptr || positions == nullptr) return false;
    const jsize count = env->GetArrayLength(colors);
    if (env->GetArrayLength(alphas) != count || env->GetArrayLength(positions) != count) return false;

    stops->resize(static_cast<size_t>(count));
    const Elements<jintArray> color(env, colors);
    if (color.data() == nullptr) return false;
    const Elements<jfloatArray> alpha(env, alphas);
    if (alpha.data() == nullptr) return false;
    const Elements<jfloatArray> position(env, positions);
    if (position.data() == nullptr) return false;
    for (size_t i = 0; i < stops->size(); ++i)
        (*stops)[i] = {static_cast<uint32_t>(color.data()[i]), alpha.data()[i], position.data()[i]};
    return true;
}

}  // namespace

jint QxText_AddInnerShadowTextEffect(JNIEnv* env, jobject self, jfloat angle, jfloat distance, jfloat size, jint color,
                                     jfloat opacity) {
    return addTo(env, self, 179, "QxText_AddInnerShadowTextEffect() effect is NULL", [&](QxEffect& effect) {
        return effect.addInnerShadowText(angle, distance, size, static_cast<unsigned int>(color), opacity);
    });
}

jint QxText_AddLinearGradientTextEffect(JNIEnv* env, jobject self, jfloat angle, jfloat scale, jintArray colors,
                                        jfloatArray alphas, jfloatArray positions, jfloat opacity) {
    return addTo(env, self, 196, "QxText_AddLinearGradientTextEffect() effect is NULL", [&](QxEffect& effect) -> jint {
        std::vector<QxGradient> stops;
        if (!readStops(env, colors, alphas, positions, &stops)) return kNoEffect;
        return effect.addLinearGradientText(angle, scale, opacity, static_cast<int>(stops.size()), stops.data());
    });
}

jint QxText_AddOuterGlowTextEffect(JNIEnv* env, jobject self, jfloat size, jint color, jfloat opacity) {
    // The dash and the capital are this message's alone; whoever searches logs for it must keep finding it.
    return addTo(env, self, 257, "QxText_AddOuterGlowTextEffect() - Effect is NULL", [&](QxEffect& effect) {
        return effect.addOuterGlowText(size, static_cast<unsigned int>(color), opacity, 0, nullptr);
    });
}

jint QxText_AddOuterShadowTextEffect(JNIEnv* env, jobject self, jfloat angle, jfloat distance, jfloat size, jint color,
                                     jfloat opacity) {
    return addTo(env, self, 274, "QxText_AddOuterShadowTextEffect() effect is NULL", [&](QxEffect& effect) {
        return effect.addOuterShadowText(angle, distance, size, static_cast<unsigned int>(color), opacity);
    });
}

jint QxText_AddStrokeTextEffect(JNIEnv* env, jobject self, jfloat size, jint color, jfloat opacity, jint mode,
                                jint position) {
    return addTo(env, self, 291, "QxText_AddStrokeTextEffect() effect is NULL", [&](QxEffect& effect) {
        return effect.addStrokeText(size, static_cast<unsigned int>(color), opacity, mode, position);
    });
}

void QxText_ClearAllTextEffect(JNIEnv* env, jobject self) {
    guarded(false, [&] {
        const std::optional<jint> handle = readHandle(env, self);
        if (handle && *handle < 0) return false;
        QxTextObject* const text = handle ? QxTextObject::FindQxTextObject(*handle) : nullptr;
        if (text == nullptr) {
            reportUnbound(317);
            return false;
        }
        if (QxEffect* const effect = text->GetEffect()) effect->cleanAllEffect();
        return true;
    });
}

}  // namespace QxFontEffect
