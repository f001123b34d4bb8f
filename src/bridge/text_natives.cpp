#include "bridge/text_natives.h"

#include "base/platform_log.h"
#include "bridge/java_vm.h"
#include "bridge/native_entry.h"
#include "bridge/text_binding.h"

namespace QxFontEffect {

namespace {

const NativeMethod kNatives[] = {
    {"QxText_finalize", "()V", nativeFunction(QxText_finalize)},
    {"QxText_AddInnerShadowTextEffect", "(FFFIF)I", nativeFunction(QxText_AddInnerShadowTextEffect)},
    {"QxText_AddLinearGradientTextEffect", "(FF[I[F[FF)I", nativeFunction(QxText_AddLinearGradientTextEffect)},
    {"QxText_AddOuterGlowTextEffect", "(FIF)I", nativeFunction(QxText_AddOuterGlowTextEffect)},
    {"QxText_AddOuterShadowTextEffect", "(FFFIF)I", nativeFunction(QxText_AddOuterShadowTextEffect)},
    {"QxText_AddStrokeTextEffect", "(FIFII)I", nativeFunction(QxText_AddStrokeTextEffect)},
    {"QxText_ClearAllTextEffect", "()V", nativeFunction(QxText_ClearAllTextEffect)},
    {"QxText_RenderTextEffect", "()[I", nativeFunction(QxText_RenderTextEffect)},
    {"QxText_SetFont", "(Ljava/lang/String;)Z", nativeFunction(QxText_SetFont)},
    {"QxText_SetFont2", "(Ljava/lang/String;[B)Z", nativeFunction(QxText_SetFont2)},
    {"QxText_SetFont3", "(Landroid/content/res/AssetManager;Ljava/lang/String;)Z", nativeFunction(QxText_SetFont3)},
    {"QxText_SetPaint", "(Landroid/graphics/Paint;)Z", nativeFunction(QxText_SetPaint)},
    {"QxText_SetLayout", "(Landroid/text/Layout;)Z", nativeFunction(QxText_SetLayout)},
    {"QxText_SetLine", "(I)Z", nativeFunction(QxText_SetLine)},
    {"QxText_SetView", "(Landroid/widget/TextView;)Z", nativeFunction(QxText_SetView)},
    {"QxText_GetDrawingBitmapSize", "()[I", nativeFunction(QxText_GetDrawingBitmapSize)},
    {"QxText_GetEffectLeftOffset", "()I", nativeFunction(QxText_GetEffectLeftOffset)},
    {"QxText_GetEffectTopOffset", "()I", nativeFunction(QxText_GetEffectTopOffset)},
    {"QxText_GetEffectRightOffset", "()I", nativeFunction(QxText_GetEffectRightOffset)},
    {"QxText_GetEffectBottomOffset", "()I", nativeFunction(QxText_GetEffectBottomOffset)},
    {"QxText_SetFontFamilyName", "(Ljava/lang/String;)Z", nativeFunction(QxText_SetFontFamilyName)},
};

}  // namespace

bool QxText_OnLoad(JavaVM* vm, JNIEnv* env) {
    const LocalRef<jclass> textClass = findClass(env, "com/zorvane/android/sdk/qxe/QxText");
    if (!textClass) return false;
    rememberJavaVm(vm);
    if (!registerNatives(env, textClass.get(), kNatives)) return false;
    logDebug(kTextTag, "JNI_OnLoad .. Done");
    return true;
}

}  // namespace QxFontEffect
