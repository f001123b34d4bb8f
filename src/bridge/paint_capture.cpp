#include <hwui/Paint.h>
#include <minikin/LocaleList.h>

#include <cstdint>
#include <string>

#include "base/platform_log.h"
#include "bridge/java_calls.h"
#include "bridge/java_text.h"
#include "bridge/native_entry.h"
#include "bridge/text_binding.h"
#include "bridge/text_natives.h"
#include "text/QxTextObject.h"

// Copies an android.graphics.Paint. Its colour stays behind: coverage is drawn opaque, and the colour of the text comes
// from the view.

namespace QxFontEffect {

namespace {

enum PaintMethod {
    kTextScaleX,
    kTextSkewX,
    kLetterSpacing,
    kElegantTextHeight,
    kFlags,
    kFontFeatureSettings,
    kTextLocales,
    kTextAlign,
    kColor,
    kTextSize,
    kFakeBoldText,
    kPaintMethods
};

// All must exist, the one that is never called included: a class that lacks any is not the platform's.
constexpr JavaMethod kMethods[kPaintMethods] = {
    {"getTextScaleX", "()F"},
    {"getTextSkewX", "()F"},
    {"getLetterSpacing", "()F"},
    {"isElegantTextHeight", "()Z"},
    {"getFlags", "()I"},
    {"getFontFeatureSettings", "()Ljava/lang/String;"},
    {"getTextLocales", "()Landroid/os/LocaleList;"},
    {"getTextAlign", "()Landroid/graphics/Paint$Align;"},
    {"getColor", "()I"},
    {"getTextSize", "()F"},
    {"isFakeBoldText", "()Z"},
};

/// A string that another object of the paint gives of itself; false when there is none.
bool readNamed(JavaCalls& java, jobject object, const JavaMethod& method, const char* missing, std::string* out) {
    jmethodID id = java.optionalMethod(object, method);
    if (id == nullptr) {
        if (!java.failed()) logDebug(kTextTag, "%s", missing);
        return false;
    }
    return readUtf8(java.env(), java.objectOf<jstring>(object, id).get(), out);
}

void readLocales(JavaCalls& java, jobject locales, android::Paint* paint) {
    std::string tags;
    if (readNamed(java, locales, {"toLanguageTags", "()Ljava/lang/String;"},
                  "LocaleList cannot find 'toLanguageTags' method id", &tags)) {
        paint->setMinikinLocaleListId(minikin::registerLocaleList(tags));
    }
}

void readAlignment(JavaCalls& java, jobject alignment, android::Paint* paint) {
    std::string name;
    if (!readNamed(java, alignment, {"name", "()Ljava/lang/String;"}, "Paint.Align cannot find 'name' method id",
                   &name)) {
        return;
    }
    paint->setTextAlign(name == "LEFT"    ? android::Paint::kLeft_Align
                        : name == "RIGHT" ? android::Paint::kRight_Align
                                          : android::Paint::kCenter_Align);
}

void readPaint(JavaCalls& java, jobject source, const jmethodID (&methods)[kPaintMethods], android::Paint* paint) {
    SkFont& font = paint->getSkFont();
    font.setScaleX(java.floatOf(source, methods[kTextScaleX]));
    font.setSkewX(java.floatOf(source, methods[kTextSkewX]));
    font.setSize(java.floatOf(source, methods[kTextSize]));
    font.setEmbolden(java.booleanOf(source, methods[kFakeBoldText]));
    paint->setLetterSpacing(java.floatOf(source, methods[kLetterSpacing]));
    const bool elegant = java.booleanOf(source, methods[kElegantTextHeight]);
    paint->setFamilyVariant(elegant ? minikin::FamilyVariant::ELEGANT : minikin::FamilyVariant::DEFAULT);
    // Behind the fake bold: the flags carry that bit too, and have the last word.
    paint->setJavaFlags(static_cast<uint32_t>(java.intOf(source, methods[kFlags])));

    std::string features;
    if (readUtf8(java.env(), java.objectOf<jstring>(source, methods[kFontFeatureSettings]).get(), &features))
        paint->setFontFeatureSettings(features);
    if (const auto locales = java.objectOf(source, methods[kTextLocales])) readLocales(java, locales.get(), paint);
    if (const auto align = java.objectOf(source, methods[kTextAlign])) readAlignment(java, align.get(), paint);
}

}  // namespace

jboolean QxText_SetPaint(JNIEnv* env, jobject self, jobject source) {
    return guarded(jboolean{JNI_FALSE}, [&]() -> jboolean {
        QxTextObject* const text = boundObjectOrError(env, self, 484);
        if (text == nullptr || source == nullptr) return JNI_FALSE;
        JavaCalls java(env);
        jmethodID methods[kPaintMethods];
        if (const char* const missing = java.resolve(source, kMethods, methods)) {
            logError(kTextTag, "Java function %s not found", missing);
            return JNI_FALSE;
        }
        android::Paint paint;
        readPaint(java, source, methods, &paint);
        if (java.failed()) return JNI_FALSE;
        text->SetPaint(paint);
        return JNI_TRUE;
    });
}

}  // namespace QxFontEffect
