#include <vector>

#include "base/QxString.h"
#include "base/platform_log.h"
#include "bridge/background_span.h"
#include "bridge/java_calls.h"
#include "bridge/java_text.h"
#include "bridge/line_records.h"
#include "bridge/native_entry.h"
#include "bridge/text_binding.h"
#include "bridge/text_natives.h"
#include "text/QxTextObject.h"
#include "text/QxView.h"
#include "text/line_capture.h"

// Copies the text of an android.text.Layout and the lines that the view shows of it.

namespace QxFontEffect {

namespace {

enum LayoutMethod {
    kWidth,
    kHeight,
    kTopPadding,
    kBottomPadding,
    kLineCount,
    kParagraphDirection,
    kParagraphLeft,
    kParagraphRight,
    kLineBaseline,
    kLineTop,
    kLineBottom,
    kLineAscent,
    kLineDescent,
    kLineStart,
    kLineEnd,
    kLineVisibleEnd,
    kLineLeft,
    kLineRight,
    kLineMax,
    kLineWidth,
    kText,
    kLayoutMethods
};

// All must exist, those that are never called included: a class that lacks any is not the platform's.
constexpr JavaMethod kMethods[kLayoutMethods] = {
    {"getWidth", "()I"},           {"getHeight", "()I"},          {"getTopPadding", "()I"},
    {"getBottomPadding", "()I"},   {"getLineCount", "()I"},       {"getParagraphDirection", "(I)I"},
    {"getParagraphLeft", "(I)I"},  {"getParagraphRight", "(I)I"}, {"getLineBaseline", "(I)I"},
    {"getLineTop", "(I)I"},        {"getLineBottom", "(I)I"},     {"getLineAscent", "(I)I"},
    {"getLineDescent", "(I)I"},    {"getLineStart", "(I)I"},      {"getLineEnd", "(I)I"},
    {"getLineVisibleEnd", "(I)I"}, {"getLineLeft", "(I)F"},       {"getLineRight", "(I)F"},
    {"getLineMax", "(I)F"},        {"getLineWidth", "(I)F"},      {"getText", "()Ljava/lang/CharSequence;"},
};

/// A layout's text with what belongs to all of it.
struct CapturedText {
    bool known = false;  ///< a layout without text leaves the object's as it is
    QxString text;
    BackgroundColor background;
};

/// Reads one layout object.
class LayoutReader {
public:
    LayoutReader(JavaCalls& java, jobject layout) : mJava(java), mLayout(layout) {}

    /// @return the name of a method that the layout does not have; null when it has them all.
    const char* resolve() { return mJava.resolve(mLayout, kMethods, mMethods); }

    /// False when memory has run out.
    bool readText(CapturedText* captured) {
        const auto characters = mJava.objectOf(mLayout, mMethods[kText]);
        if (!characters) return true;
        const auto string = toString(characters.get());
        std::vector<wchar_t> wide;
        if (!readWideText(mJava.env(), string.get(), &wide)) return true;
        if (!captured->text.Construct(wide.data())) return false;
        captured->known = true;
        captured->background = readBackgroundColor(mJava, characters.get(), mJava.env()->GetStringLength(string.get()));
        return true;
    }

    /// Reads the lines that the view shows. Stops at the first getter that throws; false when memory has run out.
    bool readLines(const QxView& view, LineRecords* records) {
        const int count = numberOf(kLineCount);
        const int shown = shownLineCount(view, count);
        // Without lines there is none to ask about; a layout need not have an answer for line -1.
        if (shown < 1) return true;
        const bool fromBottom = isBottomAligned(view);
        const int baseline0 = numberOf(kLineBaseline, 0);
        int bottom = 0;
        if (fromBottom) bottom = numberOf(kLineBottom, count - 1);
        if (isVerticallyCentered(view)) bottom = numberOf(kLineBottom, shown - 1);
        const int origin = baselineOrigin(view, baseline0, bottom);
        const int first = fromBottom ? count - shown : 0;
        for (int i = 0; i < shown && !mJava.failed(); ++i)
            if (!records->add(captureLine(view, readLine(first + i), origin, baseline0))) return false;
        return true;
    }

private:
    LocalRef<jstring> toString(jobject characters) {
        jmethodID id = mJava.optionalMethod(characters, {"toString", "()Ljava/lang/String;"});
        if (id == nullptr && !mJava.failed()) logDebug(kTextTag, "getText cannot find 'toString' method id");
        if (id == nullptr) return LocalRef<jstring>(mJava.env(), nullptr);
        return mJava.objectOf<jstring>(characters, id);
    }

    int numberOf(LayoutMethod method) { return mJava.intOf(mLayout, mMethods[method]); }
    int numberOf(LayoutMethod method, int line) { return mJava.intOf(mLayout, mMethods[method], line); }

    LayoutLine readLine(int i) {
        LayoutLine line = {};
        line.baseline = numberOf(kLineBaseline, i);
        line.left = mJava.floatOf(mLayout, mMethods[kLineLeft], i);
        line.start = numberOf(kLineStart, i);
        line.visibleEnd = numberOf(kLineVisibleEnd, i);
        line.ascent = numberOf(kLineAscent, i);
        line.width = mJava.floatOf(mLayout, mMethods[kLineWidth], i);
        line.descent = numberOf(kLineDescent, i);
        return line;
    }

    JavaCalls& mJava;
    jobject mLayout;
    jmethodID mMethods[kLayoutMethods] = {};
};

bool capture(JavaCalls& java, jobject layout, QxTextObject* text) {
    const QxView* const view = text->GetView();
    LayoutReader reader(java, layout);
    if (const char* const missing = reader.resolve()) {
        logError(kTextTag, "QxText_SetLayout - Function %s not found", missing);
        return false;
    }
    CapturedText captured;
    LineRecords records;
    if (view == nullptr || !records.construct() || !reader.readText(&captured) || !reader.readLines(*view, &records))
        return false;
    if (java.failed()) return false;

    if (captured.known && !text->SetText(&captured.text)) return false;
    text->SetBackgroundColor(static_cast<unsigned int>(captured.background.color), captured.background.enabled);
    return records.handOver(text);
}

}  // namespace

jboolean QxText_SetLayout(JNIEnv* env, jobject self, jobject layout) {
    return guarded(jboolean{JNI_FALSE}, [&]() -> jboolean {
        QxTextObject* const text = boundObjectOrError(env, self, 724);
        if (text == nullptr) return JNI_FALSE;
        if (layout == nullptr) {
            logDebug(kTextTag, "QxText_SetLayout - RH(%d) null", text->GetRuntimeHandle());
            return JNI_FALSE;
        }
        logDebug(kTextTag, "QxText_SetLayout - RH(%d) (%p)", text->GetRuntimeHandle(), static_cast<void*>(layout));
        JavaCalls java(env);
        return capture(java, layout, text) ? JNI_TRUE : JNI_FALSE;
    });
}

}  // namespace QxFontEffect
