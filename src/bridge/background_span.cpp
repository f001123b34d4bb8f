#include "bridge/background_span.h"

#include "bridge/native_entry.h"

namespace QxFontEffect {

namespace {

/// The sequence as an object that can be asked for its spans.
LocalRef<jobject> makeSpannable(JavaCalls& java, jclass spannable, jobject characters) {
    jmethodID constructor = java.optionalMethod(spannable, {"<init>", "(Ljava/lang/CharSequence;)V"});
    if (constructor == nullptr) return LocalRef<jobject>(java.env(), nullptr);
    return java.checked(java.env()->NewObject(spannable, constructor, characters));
}

LocalRef<jobjectArray> findSpans(JavaCalls& java, jobject spannable, jint length, jclass kind) {
    jmethodID getSpans = java.optionalMethod(spannable, {"getSpans", "(IILjava/lang/Class;)[Ljava/lang/Object;"});
    if (getSpans == nullptr) return LocalRef<jobjectArray>(java.env(), nullptr);
    jobject spans = java.env()->CallObjectMethod(spannable, getSpans, jint{0}, length, kind);
    return java.checked(static_cast<jobjectArray>(spans));
}

LocalRef<jobject> lastOf(JNIEnv* env, jobjectArray spans) {
    for (jsize i = env->GetArrayLength(spans) - 1; i >= 0; --i) {
        LocalRef<jobject> span(env, env->GetObjectArrayElement(spans, i));
        if (span) return span;
    }
    return LocalRef<jobject>(env, nullptr);
}

}  // namespace

BackgroundColor readBackgroundColor(JavaCalls& java, jobject characters, jint length) {
    JNIEnv* const env = java.env();
    if (java.failed()) return {};
    const LocalRef<jclass> spannableClass = findClass(env, "android/text/SpannableString");
    const LocalRef<jclass> spanClass = findClass(env, "android/text/style/BackgroundColorSpan");
    if (!spannableClass || !spanClass) return {};

    const LocalRef<jobject> spannable = makeSpannable(java, spannableClass.get(), characters);
    if (!spannable) return {};
    const LocalRef<jobjectArray> spans = findSpans(java, spannable.get(), length, spanClass.get());
    if (!spans) return {};
    const LocalRef<jobject> last = lastOf(env, spans.get());
    if (!last) return {};
    jmethodID getBackgroundColor = java.optionalMethod(spanClass.get(), {"getBackgroundColor", "()I"});
    if (getBackgroundColor == nullptr) return {};
    const jint color = java.intOf(last.get(), getBackgroundColor);
    return {color, !java.failed()};
}

}  // namespace QxFontEffect
