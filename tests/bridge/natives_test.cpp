#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "base/Error.h"
#include "base/List.h"
#include "base/QxLog.h"
#include "base/QxString.h"
#include "base/list_walk.h"
#include "bridge/error_natives.h"
#include "bridge/font_config.h"
#include "bridge/font_natives.h"
#include "bridge/java_vm.h"
#include "bridge/jni_hooks.h"
#include "bridge/native_entry.h"
#include "bridge/text_binding.h"
#include "bridge/text_natives.h"
#include "bridge/vm.h"
#include "font/QxFontFamily.h"
#include "support/captured_log.h"
#include "support/failing_alloc.h"
#include "support/fonts.h"
#include "text/QxTextInstanceManager.h"
#include "text/QxTextObject.h"
#include "text/QxView.h"

// The natives with a VM that refuses memory, has no such methods, or runs getters that throw. What Java programs see of
// them is tested in java/test.

extern "C" JNIEXPORT jint JNICALL JNI_OnLoad(JavaVM* vm, void*);

namespace QxFontEffect::test {

namespace {

using ::testing::Contains;

/// One call of a native, with the value that says that it failed.
struct Call {
    const char* name;
    std::function<bool(jobject text)> succeeds;
};

jarray elements(jsize count, jarray array) {
    EXPECT_EQ(count, env()->GetArrayLength(array));
    return array;
}

bool convertFonts(jobject config) {
    List families;
    families.Construct();
    const bool converted = guarded(false, [&] { return ConvertToFontFamilies(env(), config, &families); });
    walkList(families, false, [](void* family) {
        releaseFontFamily(static_cast<QxFontFamily*>(family));
        return true;
    });
    return converted;
}

bool givesArray(jintArray array) {
    if (array != nullptr) env()->DeleteLocalRef(array);
    return array != nullptr;
}

/// Every native that borrows from the VM, with arguments with which it succeeds.
std::vector<Call> allCalls() {
    static const jobject paint = sample("paint"), view = sample("view"), layout = sample("layout");
    static const jobject config = sample("fontConfig", testsupport::fontFile(testsupport::kRobotoRegular));
    static const jstring font = env()->NewStringUTF(testsupport::fontFile(testsupport::kRobotoRegular).c_str());
    static const auto ints = static_cast<jintArray>(elements(2, env()->NewIntArray(2)));
    static const auto floats = static_cast<jfloatArray>(elements(2, env()->NewFloatArray(2)));
    static const jbyteArray fontBytes = [] {
        const std::vector<char>& bytes = testsupport::fontBytes(testsupport::kRobotoRegular);
        const auto size = static_cast<jsize>(bytes.size());
        jbyteArray array = env()->NewByteArray(size);
        env()->SetByteArrayRegion(array, 0, size, reinterpret_cast<const jbyte*>(bytes.data()));
        return array;
    }();
    return {
        {"SetPaint", [](jobject text) { return QxText_SetPaint(env(), text, paint) != 0; }},
        {"SetView", [](jobject text) { return QxText_SetView(env(), text, view) != 0; }},
        {"SetLayout", [](jobject text) { return QxText_SetLayout(env(), text, layout) != 0; }},
        {"SetFontFamilyName", [](jobject text) { return QxText_SetFontFamilyName(env(), text, font) != 0; }},
        {"SetFont", [](jobject text) { return QxText_SetFont(env(), text, font) != 0; }},
        {"SetFont2", [](jobject text) { return QxText_SetFont2(env(), text, font, fontBytes) != 0; }},
        {"InsertFontData", [](jobject) { return QxFontManager_InsertFontData(env(), nullptr, font, fontBytes) != 0; }},
        {"FontConfig", [](jobject) { return convertFonts(config); }},
        {"AddLinearGradient",
         [](jobject text) {
             return QxText_AddLinearGradientTextEffect(env(), text, 0, 1, ints, floats, floats, 1) >= 0;
         }},
        {"AddStroke", [](jobject text) { return QxText_AddStrokeTextEffect(env(), text, 2, 0, 1, 0, 0) >= 0; }},
        {"Render", [](jobject text) { return givesArray(QxText_RenderTextEffect(env(), text)); }},
        {"GetDrawingBitmapSize", [](jobject text) { return givesArray(QxText_GetDrawingBitmapSize(env(), text)); }},
        {"finalize",
         [](jobject text) {
             QxText_finalize(env(), text);
             return true;
         }},
    };
}

bool succeeds(const std::string& name, jobject text) {
    for (const Call& call : allCalls())
        if (call.name == name) return call.succeeds(text);
    ADD_FAILURE() << "no call named " << name;
    return false;
}

/// A QxText whose native text exists and holds what all the sample captures give.
class BoundText {
public:
    BoundText() : object(newText()) {
        QxText_SetLine(env(), object, 2);
        for (const char* name : {"SetPaint", "SetView", "SetLayout", "SetFont"})
            EXPECT_TRUE(succeeds(name, object)) << name;
    }
    ~BoundText() {
        QxText_finalize(env(), object);
        env()->DeleteLocalRef(object);
    }
    BoundText(const BoundText&) = delete;
    BoundText& operator=(const BoundText&) = delete;

    QxTextObject& native() const { return *GetBoundTextObject(env(), object); }

    const jobject object;
};

TEST(Natives, HundredThousandCallsFitOneFrameOfReferences) {
    CapturedLog log;
    const BoundText text;
    std::vector<Call> calls;
    for (const Call& call : allCalls()) {
        // Not the end of the object, and not those that take long: they draw, or copy a whole font each time.
        const std::string name = call.name;
        if (name == "finalize" || name == "Render" || name == "SetFont2" || name == "InsertFontData") continue;
        calls.push_back(call);
    }
    const int errorBefore = Error::GetError();
    for (size_t i = 0; i < 100000; ++i) {
        const Call& call = calls[i % calls.size()];
        ASSERT_TRUE(call.succeeds(text.object)) << call.name;
        if (i % 1000 == 0) log.take();
    }
    EXPECT_EQ(errorBefore, Error::GetError());
}

TEST(Natives, AnswerFailureWhereTheVmRefusesMemoryAndKeepNothingOfWhatItLends) {
    const CapturedLog log;
    for (const Call& call : allCalls()) {
        for (int n = 1;; ++n) {
            const BoundText text;
            JniHooks hooks(env());
            hooks.refuseAt = n;
            const bool succeeded = call.succeeds(text.object);
            EXPECT_FALSE(env()->ExceptionCheck()) << call.name << ", request " << n;
            EXPECT_EQ(0, hooks.lent() + hooks.otherReleaseModes) << call.name << ", request " << n;
            if (hooks.requests < n) {
                EXPECT_TRUE(succeeded) << call.name;
                break;
            }
        }
    }
}

TEST(Natives, PassOnWhatAGetterThrowsAndChangeNothing) {
    const CapturedLog log;
    jclass errorClass = env()->FindClass("java/lang/IllegalStateException");
    env()->ThrowNew(errorClass, "the application's own");
    const jthrowable thrown = env()->ExceptionOccurred();
    env()->ExceptionClear();
    int positions = 0;
    for (const Call& call : allCalls()) {
        for (int n = 1;; ++n) {
            const BoundText text;
            QxTextObject& native = text.native();
            native.GetView()->maxLines = 1234;
            native.SetTextColor(0x12345678);
            native.SetText(L"before");
            android::Paint paint;
            paint.getSkFont().setSize(5);
            native.SetPaint(paint);
            const void* const line = native.GetLineInfo()->Get(0);

            JniHooks hooks(env());
            hooks.throwAt = n;
            hooks.thrown = thrown;
            const bool succeeded = call.succeeds(text.object);
            EXPECT_EQ(0, hooks.lent()) << call.name << ", call " << n;
            if (hooks.calls < n) {
                EXPECT_TRUE(succeeded) << call.name;
                break;
            }
            ++positions;
            EXPECT_FALSE(succeeded) << call.name << ", call " << n;
            EXPECT_EQ(n, hooks.calls) << call.name << " goes on after an exception";
            jthrowable pending = env()->ExceptionOccurred();
            env()->ExceptionClear();
            EXPECT_TRUE(env()->IsSameObject(thrown, pending)) << call.name << ", call " << n;
            env()->DeleteLocalRef(pending);
            EXPECT_EQ(1234, native.GetView()->maxLines) << call.name << ", call " << n;
            EXPECT_EQ(0x12345678u, native.GetTextColor()) << call.name << ", call " << n;
            EXPECT_EQ(6, native.GetText()->GetLength()) << call.name << ", call " << n;
            EXPECT_EQ(5.0f, native.GetPaint().getSkFont().getSize()) << call.name << ", call " << n;
            EXPECT_EQ(line, native.GetLineInfo()->Get(0)) << call.name << ", call " << n;
        }
    }
    EXPECT_GT(positions, 60);
    env()->DeleteLocalRef(thrown);
    env()->DeleteLocalRef(errorClass);
}

TEST(Natives, NameTheMethodThatIsMissing) {
    const struct {
        const char* call;
        const char* tag;
        const char* before;
        int calls;  ///< made before the look-up
        std::vector<std::string> methods;
    } rows[] = {
        {"SetPaint",
         "QxText_JNI",
         "Java function ",
         0,
         {"getTextScaleX", "getTextSkewX", "getLetterSpacing", "isElegantTextHeight", "getFlags",
          "getFontFeatureSettings", "getTextLocales", "getTextAlign", "getColor", "getTextSize", "isFakeBoldText"}},
        {"SetView",
         "QxText_JNI",
         "QxText_SetView - Function ",
         0,
         {"getTextSize", "getCurrentTextColor", "getTypeface", "getTextDirection", "getLayoutDirection", "getWidth",
          "getHeight", "getPaddingLeft", "getPaddingRight", "getPaddingTop", "getPaddingBottom", "getGravity",
          "getMaxLines"}},
        {"SetLayout",
         "QxText_JNI",
         "QxText_SetLayout - Function ",
         0,
         {"getWidth",          "getHeight",         "getTopPadding",
          "getBottomPadding",  "getLineCount",      "getParagraphDirection",
          "getParagraphLeft",  "getParagraphRight", "getLineBaseline",
          "getLineTop",        "getLineBottom",     "getLineAscent",
          "getLineDescent",    "getLineStart",      "getLineEnd",
          "getLineVisibleEnd", "getLineLeft",       "getLineRight",
          "getLineMax",        "getLineWidth",      "getText"}},
        {"FontConfig", "Init_QxFontManager_JNI", "Java Function ", 0, {"getFamilies"}},
        {"FontConfig",
         "Init_QxFontManager_JNI",
         "Java function ",
         1,
         {"getName", "getFonts", "getLanguages", "getVariant"}},
        {"FontConfig",
         "Init_QxFontManager_JNI",
         "Java function ",
         3,
         {"getFontName", "getTtcIndex", "getWeight", "isItalic", "getFallbackFor"}},
    };
    CapturedLog log;
    const BoundText text;
    for (const auto& row : rows) {
        for (const std::string& method : row.methods) {
            JniHooks hooks(env());
            hooks.missing = method;
            log.take();
            EXPECT_FALSE(succeeds(row.call, text.object)) << method;
            EXPECT_THAT(log.take(), Contains(isErrorLine(row.tag, row.before + method + " not found")));
            EXPECT_FALSE(env()->ExceptionCheck()) << method;
            EXPECT_EQ(row.calls, hooks.calls) << "reads although " << method << " is missing";
            EXPECT_EQ(0, hooks.lent()) << method;
        }
    }
}

TEST(Natives, DoWithoutMethodsOfOtherClasses) {
    const struct {
        const char* call;
        const char* method;
        const char* message;  // null for none
    } rows[] = {
        {"SetPaint", "toLanguageTags", "LocaleList cannot find 'toLanguageTags' method id"},
        {"SetPaint", "name", "Paint.Align cannot find 'name' method id"},
        {"SetView", "isBold", "getTypeFace cannot find 'isBold' method id"},
        {"SetView", "isItalic", "getTypeFace cannot find 'isItalic' method id"},
        {"SetLayout", "toString", "getText cannot find 'toString' method id"},
        {"SetLayout", "<init>", nullptr},
        {"SetLayout", "getSpans", nullptr},
        {"SetLayout", "getBackgroundColor", nullptr},
    };
    CapturedLog log;
    const BoundText text;
    for (const auto& row : rows) {
        JniHooks hooks(env());
        hooks.missing = row.method;
        log.take();
        EXPECT_TRUE(succeeds(row.call, text.object)) << row.method;
        EXPECT_FALSE(env()->ExceptionCheck()) << row.method;
        EXPECT_EQ(0, hooks.lent()) << row.method;
        if (row.message == nullptr) continue;
        EXPECT_THAT(log.take(), Contains(isDebugLine("QxText_JNI", row.message)));
    }
}

TEST(Natives, AnswerFailureWhereTheLibraryHasNoMemory) {
    const CapturedLog log;
    for (const Call& call : allCalls()) {
        for (int n = 0; n < 10000; ++n) {
            const jobject text = newText();
            FailingAlloc failing(n);
            call.succeeds(text);
            const bool refused = failing.refused();
            AllocationPause pause;
            EXPECT_FALSE(env()->ExceptionCheck()) << call.name << ", request " << n;
            QxText_finalize(env(), text);
            env()->DeleteLocalRef(text);
            if (!refused) break;
        }
    }
}

jint JNICALL noEnvironment(JavaVM*, void**, jint) {
    return JNI_EVERSION;
}

TEST(Load, EndsWithoutAnEnvironmentOnly) {
    CapturedLog log;
    JNIInvokeInterface_ functions = *vm()->functions;
    functions.GetEnv = noEnvironment;
    JavaVM_ stranger = {&functions};
    log.take();
    EXPECT_EQ(0, JNI_OnLoad(&stranger, nullptr));
    EXPECT_FALSE(Error_OnLoad(nullptr));
    EXPECT_FALSE(Error_OnLoad(&stranger));
    EXPECT_THAT(log.take(), ::testing::ElementsAre(isDebugLine("QxText_Common_JNI", "QxText_JNI_OnLoad")));
    EXPECT_EQ(0x10002, JNI_OnLoad(vm(), nullptr));
    EXPECT_EQ(vm(), rememberedJavaVm());
}

TEST(Load, AsksForTheBuildTypeOnce) {
    env();
    EXPECT_TRUE(QxLog::IsCheckedBuildType());
    EXPECT_FALSE(QxLog::IsBuildTypeEngMode());
    const CapturedLog log;
    EXPECT_EQ(0x10002, JNI_OnLoad(vm(), nullptr));
    EXPECT_FALSE(env()->ExceptionCheck());
    const BoundText text;  // the natives still work
}

}  // namespace

}  // namespace QxFontEffect::test
