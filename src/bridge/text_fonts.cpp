#include <android/asset_manager.h>
#include <android/asset_manager_jni.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <new>
#include <string>

#include "base/platform_log.h"
#include "bridge/font_bytes_copy.h"
#include "bridge/java_text.h"
#include "bridge/native_entry.h"
#include "bridge/text_binding.h"
#include "bridge/text_natives.h"
#include "font/FontManager.h"
#include "text/QxTextObject.h"

// The natives that choose a font: by family, by file, by bytes, by asset.

namespace QxFontEffect {

namespace {

bool logFailure(const char* message) {
    logError(kTextTag, "%s", message);
    return false;
}

/// Runs a setter that takes one name.
template <typename Set>
jboolean setByName(JNIEnv* env, jobject self, int line, jstring name, const char* noCharacters, Set&& set) {
    return guarded(jboolean{JNI_FALSE}, [&]() -> jboolean {
        QxTextObject* const text = boundObjectOrError(env, self, line);
        if (text == nullptr) return JNI_FALSE;
        std::string utf8;
        if (!readUtf8(env, name, &utf8)) return logFailure(noCharacters);
        return set(*text, utf8.c_str());
    });
}

struct CloseAsset {
    void operator()(AAsset* asset) const { AAsset_close(asset); }
};
using OwnedAsset = std::unique_ptr<AAsset, CloseAsset>;

OwnedAsset openAsset(JNIEnv* env, jobject assetManager, const char* name) {
    AAssetManager* const manager = AAssetManager_fromJava(env, assetManager);
    return OwnedAsset(manager == nullptr ? nullptr : AAssetManager_open(manager, name, AASSET_MODE_BUFFER));
}

/// The whole asset; no bytes when it cannot be read to its end. A read may stop short.
FontBytesCopy readAsset(AAsset* asset) {
    FontBytesCopy copy;
    const int64_t length = AAsset_getLength(asset);
    if (length < 0 || length >= std::numeric_limits<int32_t>::max()) return copy;
    const size_t size = static_cast<size_t>(length);
    std::unique_ptr<char[]> bytes(new (std::nothrow) char[size + 1]);
    if (bytes == nullptr) return copy;
    for (size_t done = 0; done < size;) {
        const int got = AAsset_read(asset, bytes.get() + done, size - done);
        if (got <= 0) return copy;
        done += static_cast<size_t>(got);
    }
    copy.bytes = std::move(bytes);
    copy.size = static_cast<unsigned int>(size);
    return copy;
}

bool setFontBytes(QxTextObject& text, const std::string& name, FontBytesCopy font) {
    return font.bytes != nullptr && text.SetFont(name.c_str(), font.bytes.release(), font.size);
}

}  // namespace

jboolean QxText_SetFontFamilyName(JNIEnv* env, jobject self, jstring name) {
    return setByName(env, self, 356, name, "QxText_SetFontFamilyName() - Fail to get familyName string",
                     [](QxTextObject& text, const char* family) { return text.SetFontFamilyName(family); });
}

jboolean QxText_SetFont(JNIEnv* env, jobject self, jstring path) {
    return setByName(env, self, 375, path, "QxText_SetFont() - Fail to get fontFile string",
                     [](QxTextObject& text, const char* file) { return text.SetFont(file); });
}

jboolean QxText_SetFont2(JNIEnv* env, jobject self, jstring name, jbyteArray data) {
    return guarded(jboolean{JNI_FALSE}, [&]() -> jboolean {
        QxTextObject* const text = boundObjectOrError(env, self, 394);
        if (text == nullptr) return JNI_FALSE;
        if (name == nullptr) return logFailure("QxText_SetFont2() - fontName is NULL");
        if (data == nullptr) return logFailure("QxText_SetFont2() - buffer is NULL");
        std::string utf8;
        if (!readUtf8(env, name, &utf8)) return logFailure("QxText_SetFont2() - Fail to get fontFile string");
        return setFontBytes(*text, utf8, copyFontBytes(env, data));
    });
}

jboolean QxText_SetFont3(JNIEnv* env, jobject self, jobject assetManager, jstring name) {
    return guarded(jboolean{JNI_FALSE}, [&]() -> jboolean {
        QxTextObject* const text = boundObjectOrError(env, self, 432);
        if (text == nullptr) return JNI_FALSE;
        if (assetManager == nullptr) return logFailure("QxText_SetFont3() - assetManager is NULL");
        if (name == nullptr) return logFailure("QxText_SetFont3() - fontName is NULL");
        std::string utf8;
        if (!readUtf8(env, name, &utf8)) return logFailure("QxText_SetFont3() - Fail to get fontFile string");
        if (FontManager::GetInstance()->IsExisting(utf8.c_str(), 0)) return text->SetFont(utf8.c_str());

        const OwnedAsset asset = openAsset(env, assetManager, utf8.c_str());
        if (asset == nullptr) return logFailure("QxText_SetFont3() - _ASSET_NOT_FOUND_");
        return setFontBytes(*text, utf8, readAsset(asset.get()));
    });
}

}  // namespace QxFontEffect
