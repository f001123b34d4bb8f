#include "base/platform_log.h"
#include "bridge/java_calls.h"
#include "bridge/native_entry.h"
#include "bridge/text_binding.h"
#include "bridge/text_natives.h"
#include "text/QxTextObject.h"
#include "text/QxView.h"

// Copies the geometry, colour and style of an android.widget.TextView, and the limit of lines.

namespace QxFontEffect {

namespace {

enum ViewMethod {
    kTextSize,
    kCurrentTextColor,
    kTypeface,
    kTextDirection,
    kLayoutDirection,
    kWidth,
    kHeight,
    kPaddingLeft,
    kPaddingRight,
    kPaddingTop,
    kPaddingBottom,
    kGravity,
    kMaxLines,
    kViewMethods
};

// All must exist, those that are never called included: a class that lacks any is not the platform's.
constexpr JavaMethod kMethods[kViewMethods] = {
    {"getTextSize", "()F"},      {"getCurrentTextColor", "()I"}, {"getTypeface", "()Landroid/graphics/Typeface;"},
    {"getTextDirection", "()I"}, {"getLayoutDirection", "()I"},  {"getWidth", "()I"},
    {"getHeight", "()I"},        {"getPaddingLeft", "()I"},      {"getPaddingRight", "()I"},
    {"getPaddingTop", "()I"},    {"getPaddingBottom", "()I"},    {"getGravity", "()I"},
    {"getMaxLines", "()I"},
};

struct Style {
    bool known = false;  ///< a view without typeface leaves the text's style as it is
    bool bold = false;
    bool italic = false;
};

bool readStyleBit(JavaCalls& java, jobject typeface, const JavaMethod& method) {
    if (jmethodID id = java.optionalMethod(typeface, method)) return java.booleanOf(typeface, id);
    if (!java.failed()) logDebug(kTextTag, "getTypeFace cannot find '%s' method id", method.name);
    return false;
}

Style readStyle(JavaCalls& java, jobject typeface) {
    Style style;
    if (typeface == nullptr) return style;
    style.known = true;
    style.bold = readStyleBit(java, typeface, {"isBold", "()Z"});
    style.italic = readStyleBit(java, typeface, {"isItalic", "()Z"});
    return style;
}

}  // namespace

jboolean QxText_SetView(JNIEnv* env, jobject self, jobject source) {
    return guarded(jboolean{JNI_FALSE}, [&]() -> jboolean {
        QxTextObject* const text = boundObjectOrError(env, self, 616);
        QxView* const view = text == nullptr ? nullptr : text->GetView();
        if (view == nullptr || source == nullptr) return JNI_FALSE;
        JavaCalls java(env);
        jmethodID methods[kViewMethods];
        if (const char* const missing = java.resolve(source, kMethods, methods)) {
            logError(kTextTag, "QxText_SetView - Function %s not found", missing);
            return JNI_FALSE;
        }
        const int gravity = java.intOf(source, methods[kGravity]);
        const int maxLines = java.intOf(source, methods[kMaxLines]);
        const int color = java.intOf(source, methods[kCurrentTextColor]);
        const int left = java.intOf(source, methods[kPaddingLeft]);
        const int top = java.intOf(source, methods[kPaddingTop]);
        const int right = java.intOf(source, methods[kPaddingRight]);
        const int bottom = java.intOf(source, methods[kPaddingBottom]);
        const int width = java.intOf(source, methods[kWidth]);
        const int height = java.intOf(source, methods[kHeight]);
        const Style style = readStyle(java, java.objectOf(source, methods[kTypeface]).get());
        if (java.failed()) return JNI_FALSE;

        view->gravity = gravity;
        view->maxLines = maxLines;
        text->SetTextColor(static_cast<unsigned int>(color));
        view->SetPadding(left, top, right, bottom);
        view->SetSize(width, height);  // a negative size is refused and leaves the old one, which is no failure here
        if (style.known) text->SetTextStyle(style.bold, style.italic);
        return JNI_TRUE;
    });
}

jboolean QxText_SetLine(JNIEnv* env, jobject self, jint count) {
    return guarded(jboolean{JNI_FALSE}, [&]() -> jboolean {
        QxTextObject* const text = boundObjectOrError(env, self, 709);
        QxView* const view = text == nullptr ? nullptr : text->GetView();
        if (view == nullptr) return JNI_FALSE;
        view->lineLimit = count;
        return JNI_TRUE;
    });
}

}  // namespace QxFontEffect
