#include <cstdint>
#include <limits>
#include <optional>

#include "base/platform_log.h"
#include "bridge/native_entry.h"
#include "bridge/text_binding.h"
#include "bridge/text_natives.h"
#include "effect/QxEffect.h"
#include "effect/safe_convert.h"
#include "text/QxTextInstanceManager.h"
#include "text/QxTextObject.h"
#include "text/QxView.h"

// Drawing, the sizes around it, and the end of an instance.

namespace QxFontEffect {

namespace {

constexpr long kErrorSystem = 1;
constexpr long kErrorArgument = 7;

using Offset = int (QxEffect::*)();

jint effectOffset(JNIEnv* env, jobject self, int line, Offset offset) {
    return guarded(jint{0}, [&]() -> jint {
        QxTextObject* const text = boundObjectOrError(env, self, line);
        QxEffect* const effect = text == nullptr ? nullptr : text->GetEffect();
        return effect == nullptr ? 0 : (effect->*offset)();
    });
}

/// Null, and no exception, when the VM has no memory for it.
jintArray newIntArray(JNIEnv* env, int64_t count) {
    jintArray array = env->NewIntArray(static_cast<jsize>(count));
    if (array == nullptr) env->ExceptionClear();
    return array;
}

void fitBitmapToMargins(QxView* view, QxEffect* effect) {
    view->SetBitmapWidth(saturateToInt(int64_t{view->GetWidth()} + effect->getLeftOffset() + effect->getRightOffset()));
    view->SetBitmapHeight(
        saturateToInt(int64_t{view->GetHeight()} + effect->getTopOffset() + effect->getBottomOffset()));
}

jintArray drawnPixels(JNIEnv* env, QxTextObject* text) {
    QxEffect* const effect = text->GetEffect();
    QxView* const view = text->GetView();
    if (effect == nullptr || view == nullptr) return nullptr;
    fitBitmapToMargins(view, effect);

    const int width = view->GetBitmapWidth();
    const int height = view->GetBitmapHeight();
    const int64_t count = int64_t{width} * height;
    if (count > std::numeric_limits<jsize>::max()) {
        failWith(kTextTag, kErrorArgument, __LINE__);
        return nullptr;
    }
    // Taken before the drawing: where the VM has no room for the pixels, nothing of their size is tried here either.
    LocalRef<jintArray> pixels(env, newIntArray(env, count));
    if (!pixels) {
        failWith(kTextTag, kErrorSystem, __LINE__);
        return nullptr;
    }
    // Without a drawing driver the picture before is answered, which may be smaller.
    const bool drawable = text->GetFont() != nullptr;
    const unsigned char* const drawn = text->RenderTextEffect(width, height);
    if (count > 0 && (drawn == nullptr || !drawable)) {
        failWith(kTextTag, kErrorSystem, __LINE__);
        return nullptr;
    }
    if (count > 0) {
        env->SetIntArrayRegion(pixels.get(), 0, static_cast<jsize>(count), reinterpret_cast<const jint*>(drawn));
    }
    return pixels.release();
}

}  // namespace

jintArray QxText_RenderTextEffect(JNIEnv* env, jobject self) {
    return guarded(jintArray{nullptr}, [&]() -> jintArray {
        QxTextObject* const text = boundObjectOrError(env, self, 332);
        return text == nullptr ? nullptr : drawnPixels(env, text);
    });
}

jintArray QxText_GetDrawingBitmapSize(JNIEnv* env, jobject self) {
    return guarded(jintArray{nullptr}, [&]() -> jintArray {
        QxTextObject* const text = boundObjectOrError(env, self, 964);
        QxView* const view = text == nullptr ? nullptr : text->GetView();
        if (view == nullptr || view->GetDrawingBitmapSize() == nullptr) return nullptr;
        jintArray size = newIntArray(env, 2);
        if (size != nullptr) env->SetIntArrayRegion(size, 0, 2, view->GetDrawingBitmapSize());
        return size;
    });
}

jint QxText_GetEffectLeftOffset(JNIEnv* env, jobject self) {
    return effectOffset(env, self, 976, &QxEffect::getLeftOffset);
}

jint QxText_GetEffectTopOffset(JNIEnv* env, jobject self) {
    return effectOffset(env, self, 984, &QxEffect::getTopOffset);
}

jint QxText_GetEffectRightOffset(JNIEnv* env, jobject self) {
    return effectOffset(env, self, 992, &QxEffect::getRightOffset);
}

jint QxText_GetEffectBottomOffset(JNIEnv* env, jobject self) {
    return effectOffset(env, self, 1000, &QxEffect::getBottomOffset);
}

void QxText_finalize(JNIEnv* env, jobject self) {
    guarded(false, [&] {
        const std::optional<jint> handle = readHandle(env, self);
        if (!handle || *handle < 0) return false;
        QxTextObject* const text = QxTextObject::FindQxTextObject(*handle);
        if (text == nullptr) return false;
        logDebug(kTextTag, "finalize : RH %d", text->GetRuntimeHandle());
        return QxTextInstanceManager::Release(text, true);
    });
}

}  // namespace QxFontEffect
