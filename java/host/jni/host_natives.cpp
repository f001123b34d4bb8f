#include <hwui/Paint.h>
#include <hwui/Typeface.h>
#include <jni.h>
#include <minikin/LocaleList.h>

#include <cstring>
#include <exception>

#include "fonts.h"
#include "paragraph/paragraph.h"
#include "portable/assets.h"

// The natives of qx.host.HostLibrary. They serve the desktop's android classes alone; the library under them is used
// through its own natives.

namespace {

using qxhost::Alignment;

std::string stringOf(JNIEnv* env, jbyteArray bytes) {
    std::string text(static_cast<size_t>(env->GetArrayLength(bytes)), '\0');
    env->GetByteArrayRegion(bytes, 0, static_cast<jsize>(text.size()), reinterpret_cast<jbyte*>(text.data()));
    return text;
}

std::vector<std::string> stringsOf(JNIEnv* env, jobjectArray array) {
    std::vector<std::string> strings;
    for (jsize i = 0; i < env->GetArrayLength(array); ++i) {
        auto bytes = static_cast<jbyteArray>(env->GetObjectArrayElement(array, i));
        strings.push_back(stringOf(env, bytes));
        env->DeleteLocalRef(bytes);
    }
    return strings;
}

std::vector<jint> intsOf(JNIEnv* env, jintArray array) {
    std::vector<jint> ints(static_cast<size_t>(env->GetArrayLength(array)));
    env->GetIntArrayRegion(array, 0, static_cast<jsize>(ints.size()), ints.data());
    return ints;
}

std::vector<jfloat> floatsOf(JNIEnv* env, jfloatArray array) {
    std::vector<jfloat> floats(static_cast<size_t>(env->GetArrayLength(array)));
    env->GetFloatArrayRegion(array, 0, static_cast<jsize>(floats.size()), floats.data());
    return floats;
}

std::vector<uint16_t> unitsOf(JNIEnv* env, jcharArray array) {
    std::vector<uint16_t> units(static_cast<size_t>(env->GetArrayLength(array)));
    env->GetCharArrayRegion(array, 0, static_cast<jsize>(units.size()), units.data());
    return units;
}

std::vector<qxhost::Face> facesOf(const std::vector<std::string>& files, const std::vector<jint>& numbers) {
    std::vector<qxhost::Face> faces;
    for (size_t i = 0; i < files.size(); ++i)
        faces.push_back({files[i], numbers[4 * i], numbers[4 * i + 1], numbers[4 * i + 2], numbers[4 * i + 3]});
    return faces;
}

// Order of the numbers and settings in HostLibrary.layOut.
enum Number { kSize, kScaleX, kSkewX, kLetterSpacing, kWidth, kSpacing };
enum Setting { kFlags, kElegant, kWeight, kItalic, kAlignment };

android::Paint paintOf(const std::vector<jfloat>& numbers, const std::vector<jint>& settings,
                       const std::string& features, const std::string& locales) {
    android::Paint paint;
    SkFont& font = paint.getSkFont();
    font.setSize(numbers[kSize]);
    font.setScaleX(numbers[kScaleX]);
    font.setSkewX(numbers[kSkewX]);
    paint.setLetterSpacing(numbers[kLetterSpacing]);
    if (settings[kElegant] != 0) paint.setFamilyVariant(minikin::FamilyVariant::ELEGANT);
    paint.setJavaFlags(static_cast<uint32_t>(settings[kFlags]));
    paint.setFontFeatureSettings(features);
    paint.setMinikinLocaleListId(minikin::registerLocaleList(locales));
    return paint;
}

qxhost::ParagraphStyle styleOf(const std::vector<jfloat>& numbers, const std::vector<jint>& settings) {
    constexpr Alignment kAlignments[] = {Alignment::Start, Alignment::End, Alignment::Center, Alignment::Left,
                                         Alignment::Right};
    return {numbers[kWidth], kAlignments[settings[kAlignment]], numbers[kSpacing]};
}

jint bitsOf(float value) {
    jint bits;
    std::memcpy(&bits, &value, sizeof(bits));
    return bits;
}

jintArray linesToJava(JNIEnv* env, const qxhost::Paragraph& paragraph) {
    std::vector<jint> numbers;
    for (const qxhost::ParagraphLine& line : paragraph.lines) {
        for (const jint number : {line.start, line.end, line.visibleEnd, bitsOf(line.left), bitsOf(line.width),
                                  line.top, line.baseline, line.bottom, line.rightToLeft ? 1 : 0}) {
            numbers.push_back(number);
        }
    }
    jintArray array = env->NewIntArray(static_cast<jsize>(numbers.size()));
    if (array != nullptr) env->SetIntArrayRegion(array, 0, static_cast<jsize>(numbers.size()), numbers.data());
    return array;
}

}  // namespace

extern "C" {

JNIEXPORT jlong JNICALL Java_qx_host_HostLibrary_makeAssetManager(JNIEnv* env, jclass, jbyteArray directory) {
    return reinterpret_cast<jlong>(portable::newAssetManager(stringOf(env, directory)));
}

JNIEXPORT void JNICALL Java_qx_host_HostLibrary_freeAssetManager(JNIEnv*, jclass, jlong manager) {
    portable::deleteAssetManager(reinterpret_cast<AAssetManager*>(manager));
}

JNIEXPORT jintArray JNICALL Java_qx_host_HostLibrary_layOut(JNIEnv* env, jclass, jcharArray text, jfloatArray numbers,
                                                            jintArray settings, jbyteArray features, jbyteArray locales,
                                                            jobjectArray files, jintArray faces,
                                                            jobjectArray languages) try {
    const std::vector<uint16_t> units = unitsOf(env, text);
    const std::vector<jfloat> values = floatsOf(env, numbers);
    const std::vector<jint> choices = intsOf(env, settings);
    const android::Paint paint = paintOf(values, choices, stringOf(env, features), stringOf(env, locales));
    auto families = qxhost::makeFamilies(facesOf(stringsOf(env, files), intsOf(env, faces)), stringsOf(env, languages));
    std::unique_ptr<android::Typeface> typeface;
    if (!families.empty()) {
        typeface.reset(android::Typeface::createFromFamilies(std::move(families), choices[kWeight],
                                                             choices[kItalic] != 0 ? 1 : -1));
    }
    return linesToJava(
        env, qxhost::layoutParagraphs(units.data(), units.size(), paint, typeface.get(), styleOf(values, choices)));
} catch (const std::exception& error) {
    env->ThrowNew(env->FindClass("java/lang/RuntimeException"), error.what());
    return nullptr;
}

}  // extern "C"
