#include <jni.h>

#include <cstring>
#include <memory>
#include <vector>

#include "base/List.h"
#include "base/QxLog.h"
#include "base/QxString.h"
#include "effect/QxEffect.h"
#include "text/QxLineInfo.h"
#include "text/QxTextInstanceManager.h"
#include "text/QxTextObject.h"
#include "text/QxView.h"

// The natives of qx.test.Peek. They are linked with the shared object and see what any C++ program sees of it.

namespace {

using namespace QxFontEffect;

jintArray toJava(JNIEnv* env, const std::vector<jint>& numbers) {
    jintArray array = env->NewIntArray(static_cast<jsize>(numbers.size()));
    env->SetIntArrayRegion(array, 0, static_cast<jsize>(numbers.size()), numbers.data());
    return array;
}

jbyteArray toJava(JNIEnv* env, const char* bytes) {
    const auto size = static_cast<jsize>(std::strlen(bytes));
    jbyteArray array = env->NewByteArray(size);
    env->SetByteArrayRegion(array, 0, size, reinterpret_cast<const jbyte*>(bytes));
    return array;
}

jbyteArray keyOf(JNIEnv* env, QxEffect& effects) {
    const std::unique_ptr<char[]> key(effects.getMapKey());
    return toJava(env, key.get());
}

// A second effect of each kind with its arguments swapped would have another key.
void addByName(QxEffect& effects, const char* name) {
    QxGradient stops[] = {{0xFF112233, 0.25f, 0.5f}, {0xFF445566, 0.75f, 1.0f}};
    if (std::strcmp(name, "InnerShadow") == 0) effects.addInnerShadowText(10, 20, 30, 0xFF010203, 0.5f);
    if (std::strcmp(name, "OuterShadow") == 0) effects.addOuterShadowText(10, 20, 30, 0xFF010203, 0.5f);
    if (std::strcmp(name, "OuterGlow") == 0) effects.addOuterGlowText(7, 0xFF010203, 0.5f, 0, nullptr);
    if (std::strcmp(name, "Stroke") == 0) effects.addStrokeText(7, 0xFF010203, 0.5f, 3, 2);
    if (std::strcmp(name, "LinearGradient") == 0) effects.addLinearGradientText(30, 0.5f, 0.25f, 2, stops);
}

}  // namespace

extern "C" {

JNIEXPORT jboolean JNICALL Java_qx_test_Peek_exists(JNIEnv*, jclass, jint handle) {
    return QxTextInstanceManager::FindQxTextObject(handle) != nullptr;
}

JNIEXPORT jintArray JNICALL Java_qx_test_Peek_lines(JNIEnv* env, jclass, jint handle) {
    const List* const lines = QxTextObject::FindQxTextObject(handle)->GetLineInfo();
    std::vector<jint> numbers;
    for (int i = 0; i < lines->GetCount(); ++i) {
        const auto& line = *static_cast<const QxLineInfo*>(lines->Get(i));
        const QxRect& box = line.bounds;
        numbers.insert(numbers.end(), {line.x, line.y, line.start, line.end, line.direction, box.left, box.top,
                                       box.right, box.bottom});
    }
    return toJava(env, numbers);
}

JNIEXPORT jintArray JNICALL Java_qx_test_Peek_view(JNIEnv* env, jclass, jint handle) {
    const QxView& view = *QxTextObject::FindQxTextObject(handle)->GetView();
    return toJava(env, {view.width, view.height, view.paddingLeft, view.paddingTop, view.paddingRight,
                        view.paddingBottom, view.gravity, view.lineLimit, view.maxLines});
}

JNIEXPORT jintArray JNICALL Java_qx_test_Peek_style(JNIEnv* env, jclass, jint handle) {
    QxTextObject& text = *QxTextObject::FindQxTextObject(handle);
    return toJava(env, {static_cast<jint>(text.GetTextColor()), text.isBoldTextStyle() ? 1 : 0,
                        text.isItalicTextStyle() ? 1 : 0});
}

JNIEXPORT jintArray JNICALL Java_qx_test_Peek_text(JNIEnv* env, jclass, jint handle) {
    const QxString* const text = QxTextObject::FindQxTextObject(handle)->GetText();
    if (text == nullptr) return nullptr;
    const wchar_t* const characters = text->GetPointer();
    return toJava(env, std::vector<jint>(characters, characters + text->GetLength()));
}

JNIEXPORT jfloatArray JNICALL Java_qx_test_Peek_paint(JNIEnv* env, jclass, jint handle) {
    const android::Paint paint = QxTextObject::FindQxTextObject(handle)->GetPaint();
    const SkFont& font = paint.getSkFont();
    const float numbers[] = {font.getSize(),
                             font.getScaleX(),
                             font.getSkewX(),
                             font.isEmbolden() ? 1.0f : 0.0f,
                             paint.getLetterSpacing(),
                             static_cast<float>(paint.getFamilyVariant()),
                             static_cast<float>(paint.getJavaFlags()),
                             static_cast<float>(paint.getTextAlign())};
    jfloatArray array = env->NewFloatArray(8);
    env->SetFloatArrayRegion(array, 0, 8, numbers);
    return array;
}

JNIEXPORT jint JNICALL Java_qx_test_Peek_localeList(JNIEnv*, jclass, jint handle) {
    return static_cast<jint>(QxTextObject::FindQxTextObject(handle)->GetPaint().getMinikinLocaleListId());
}

JNIEXPORT jstring JNICALL Java_qx_test_Peek_features(JNIEnv* env, jclass, jint handle) {
    return env->NewStringUTF(QxTextObject::FindQxTextObject(handle)->GetPaint().getFontFeatureSettings().c_str());
}

JNIEXPORT jbyteArray JNICALL Java_qx_test_Peek_effectKey(JNIEnv* env, jclass, jint handle) {
    return keyOf(env, *QxTextObject::FindQxTextObject(handle)->GetEffect());
}

JNIEXPORT jbyteArray JNICALL Java_qx_test_Peek_wantedKey(JNIEnv* env, jclass, jstring effect) {
    const char* const name = env->GetStringUTFChars(effect, nullptr);
    QxEffect effects;
    addByName(effects, name);
    env->ReleaseStringUTFChars(effect, name);
    return keyOf(env, effects);
}

JNIEXPORT void JNICALL Java_qx_test_Peek_setVerboseLog(JNIEnv*, jclass, jboolean on) {
    QxLog::DEBUG_ENABLE = on;
}

}  // extern "C"
