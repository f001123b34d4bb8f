#include "bridge/font_config.h"

#include <minikin/LocaleList.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <memory>
#include <new>
#include <string>

#include "base/File.h"
#include "base/List.h"
#include "base/QxLog.h"
#include "base/QxString.h"
#include "base/platform_log.h"
#include "bridge/java_calls.h"
#include "bridge/java_text.h"
#include "font/FontManager.h"
#include "font/QxFontData.h"
#include "font/QxFontFamily.h"

namespace QxFontEffect {

namespace {

enum FamilyMethod { kName, kFonts, kLanguages, kVariant, kFamilyMethods };

constexpr JavaMethod kFamilyTable[kFamilyMethods] = {
    {"getName", "()Ljava/lang/String;"},
    {"getFonts", "()[Landroid/text/FontConfig$Font;"},
    {"getLanguages", "()Ljava/lang/String;"},
    {"getVariant", "()I"},
};

enum FontMethod { kFontName, kTtcIndex, kWeight, kIsItalic, kFallbackFor, kFontMethods };

constexpr JavaMethod kFontTable[kFontMethods] = {
    {"getFontName", "()Ljava/lang/String;"},    {"getTtcIndex", "()I"}, {"getWeight", "()I"}, {"isItalic", "()Z"},
    {"getFallbackFor", "()Ljava/lang/String;"},
};

// Room for a path; what is longer is cut.
constexpr size_t kPathBytes = 1024;

struct ReleaseFamily {
    void operator()(QxFontFamily* family) const { releaseFontFamily(family); }
};
using OwnedFamily = std::unique_ptr<QxFontFamily, ReleaseFamily>;

OwnedFamily newFamily() {
    OwnedFamily family(new (std::nothrow) QxFontFamily);
    if (family == nullptr) return nullptr;
    family->fonts = new (std::nothrow) List;
    return family->fonts != nullptr && family->fonts->Construct() ? std::move(family) : nullptr;
}

bool appendFont(List* fonts, const char* path, int ttcIndex, int weight) {
    std::unique_ptr<QxString> name(new (std::nothrow) QxString);
    std::unique_ptr<QxFontData> font(new (std::nothrow) QxFontData);
    if (name == nullptr || font == nullptr || !name->Construct(path)) return false;
    font->ttcIndex = ttcIndex;
    font->weight = weight;
    if (!fonts->Add(static_cast<void*>(font.get()))) return false;
    font.release()->path = name.release();
    return true;
}

/// Walks a font configuration. Every step answers false when the conversion cannot go on.
class FontConfigReader {
public:
    FontConfigReader(JNIEnv* env, List* out) : mJava(env), mOut(out) {}

    bool read(jobject config) {
        constexpr JavaMethod kGetFamilies[] = {{"getFamilies", "()[Landroid/text/FontConfig$Family;"}};
        jmethodID getFamilies[1];
        if (const char* const missing = mJava.resolve(config, kGetFamilies, getFamilies)) {
            logError(kFontTag, "Java Function %s not found", missing);
            return false;
        }
        const auto families = mJava.objectOf<jobjectArray>(config, getFamilies[0]);
        return families && forEach(families.get(), [this](jobject family) { return readFamily(family); });
    }

private:
    /// Visits the elements that are not null until one fails.
    template <typename Visit>
    bool forEach(jobjectArray array, Visit&& visit) {
        JNIEnv* const env = mJava.env();
        const jsize count = env->GetArrayLength(array);
        for (jsize i = 0; i < count; ++i) {
            const LocalRef<jobject> element(env, env->GetObjectArrayElement(array, i));
            if (element && !visit(element.get())) return false;
        }
        return true;
    }

    /// Looks the methods up on the first object of its kind; the others are of the same class.
    template <size_t N>
    bool resolveOnce(jobject object, const JavaMethod (&methods)[N], jmethodID (&ids)[N]) {
        if (ids[0] != nullptr) return true;
        jmethodID found[N];
        if (const char* const missing = mJava.resolve(object, methods, found)) {
            logError(kFontTag, "Java function %s not found", missing);
            return false;
        }
        for (size_t i = 0; i < N; ++i) ids[i] = found[i];
        return true;
    }

    bool readFamily(jobject source) {
        if (!resolveOnce(source, kFamilyTable, mFamilyMethods)) return false;
        const bool named = static_cast<bool>(mJava.objectOf(source, mFamilyMethods[kName]));
        if (mJava.failed()) return false;
        if (named && mNamedFamilySeen) return true;
        // Also when it turns out to have no fonts: no other family takes the place of the default one.
        mNamedFamilySeen = mNamedFamilySeen || named;

        OwnedFamily family = newFamily();
        if (family == nullptr || !readFonts(source, family->fonts)) return false;
        if (family->fonts->GetCount() == 0) return true;
        std::string languages;
        readUtf8(mJava.env(), mJava.objectOf<jstring>(source, mFamilyMethods[kLanguages]).get(), &languages);
        family->variant = mJava.intOf(source, mFamilyMethods[kVariant]) & 0xFF;
        if (mJava.failed()) return false;

        if (!languages.empty()) family->localeListId = minikin::registerLocaleList(languages);
        const bool atOnce = named || languages.empty() || languages == "und-Zsye" || languages == "und-Zsym";
        if (atOnce) family->loaded = FontManager::GetInstance()->BuildMinikinFamily(family.get()) ? 1 : 0;
        if (!mOut->Add(static_cast<void*>(family.get()))) return false;
        logFamily(*family.release(), languages);
        return true;
    }

    bool readFonts(jobject family, List* fonts) {
        const auto sources = mJava.objectOf<jobjectArray>(family, mFamilyMethods[kFonts]);
        if (!sources) return !mJava.failed();
        return forEach(sources.get(), [&](jobject source) { return readFont(source, fonts); });
    }

    bool readFont(jobject source, List* fonts) {
        if (!resolveOnce(source, kFontTable, mFontMethods)) return false;
        std::string name;
        if (!readUtf8(mJava.env(), mJava.objectOf<jstring>(source, mFontMethods[kFontName]).get(), &name))
            return !mJava.failed();
        char path[kPathBytes] = {};
        std::snprintf(path, sizeof(path), "%s", name.c_str());
        if (File::IsAccessible(path, R_OK) != 0) return true;
        if (mJava.booleanOf(source, mFontMethods[kIsItalic]) || mJava.failed()) return !mJava.failed();
        const bool fallback = servesOneFamily(source);
        const int ttcIndex = mJava.intOf(source, mFontMethods[kTtcIndex]);
        const int weight = mJava.intOf(source, mFontMethods[kWeight]);
        if (mJava.failed()) return false;
        return fallback || appendFont(fonts, path, ttcIndex, weight);
    }

    bool servesOneFamily(jobject font) {
        const auto name = mJava.objectOf<jstring>(font, mFontMethods[kFallbackFor]);
        return name && mJava.env()->GetStringLength(name.get()) > 0;
    }

    static void logFamily(const QxFontFamily& family, const std::string& languages) {
        if (!QxLog::IsAllLogEnable()) return;
        logDebug(kFontTag, "Family lang(%s) localeListId(%d) loaded(%s)", languages.c_str(),
                 static_cast<int>(family.localeListId), family.loaded != 0 ? "TRUE" : "FALSE");
    }

    JavaCalls mJava;
    List* mOut;
    jmethodID mFamilyMethods[kFamilyMethods] = {};
    jmethodID mFontMethods[kFontMethods] = {};
    bool mNamedFamilySeen = false;
};

}  // namespace

bool ConvertToFontFamilies(JNIEnv* env, jobject fontConfig, List* out) {
    return fontConfig != nullptr && FontConfigReader(env, out).read(fontConfig);
}

}  // namespace QxFontEffect
