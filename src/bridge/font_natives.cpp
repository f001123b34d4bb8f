#include "bridge/font_natives.h"

#include <memory>
#include <new>
#include <string>

#include "base/List.h"
#include "base/QxLog.h"
#include "base/list_walk.h"
#include "base/platform_log.h"
#include "base/process_lock.h"
#include "bridge/font_bytes_copy.h"
#include "bridge/font_config.h"
#include "bridge/java_text.h"
#include "bridge/java_vm.h"
#include "bridge/native_entry.h"
#include "font/FontManager.h"
#include "font/QxFontFamily.h"

namespace QxFontEffect {

namespace {

const NativeMethod kNatives[] = {
    {"QxFontManager_InsertFontData", "(Ljava/lang/String;[B)Z", nativeFunction(QxFontManager_InsertFontData)},
    {"QxFontManager_SetFontConfig", "(Landroid/text/FontConfig;)Z", nativeFunction(QxFontManager_SetFontConfig)},
};

bool logFailure(const char* message) {
    logError(kFontTag, "%s", message);
    return false;
}

struct ReleaseFamilies {
    void operator()(List* families) const {
        walkList(*families, false, [](void* family) {
            releaseFontFamily(static_cast<QxFontFamily*>(family));
            return true;
        });
        delete families;
    }
};
/// A list of QxFontFamily records, with the records.
using OwnedFamilies = std::unique_ptr<List, ReleaseFamilies>;

/// Only the first list is adopted: another thread, or a getter called on the way, may have been faster.
bool adoptFamilies(OwnedFamilies families) {
    const ProcessLock<QxFontFamily> adoption;
    FontManager* const manager = FontManager::GetInstance();
    return manager->IsSystemFontFamiliesAlreadySet() || manager->SetSystemFontFamilies(families.release());
}

bool adoptConfig(JNIEnv* env, jobject fontConfig) {
    OwnedFamilies families(new (std::nothrow) List);
    if (families == nullptr || !families->Construct()) return false;
    logDebug(kFontTag, "QxFontManager_SetFontConfig >>> ConvertToFontFamilies");
    if (!ConvertToFontFamilies(env, fontConfig, families.get()))
        return logFailure("QxFontManager_SetFontConfig - cannot convert to native families");
    logDebug(kFontTag, "QxFontManager_SetFontConfig <<<< ConvertToFontFamilies");
    return adoptFamilies(std::move(families));
}

}  // namespace

bool QxFontManager_OnLoad(JavaVM* vm, JNIEnv* env) {
    const LocalRef<jclass> managerClass = findClass(env, "com/zorvane/android/sdk/qxe/font/FontManager");
    if (!managerClass) return false;
    rememberJavaVm(vm);
    if (!registerNatives(env, managerClass.get(), kNatives)) return false;
    logDebug(kFontTag, "%s", kFontTag);
    return true;
}

jboolean QxFontManager_InsertFontData(JNIEnv* env, jclass, jstring fontName, jbyteArray buffer) {
    return guarded(jboolean{JNI_FALSE}, [&]() -> jboolean {
        logDebug(kFontTag, "QxFontManager_InsertFontData");
        if (fontName == nullptr) return logFailure("QxFontManager_InsertFontData() - fontName is NULL");
        if (buffer == nullptr) return logFailure("QxFontManager_InsertFontData() - buffer is NULL");
        std::string name;
        if (!readUtf8(env, fontName, &name))
            return logFailure("QxFontManager_InsertFontData() - Fail to get fontFile string");
        FontBytesCopy font = copyFontBytes(env, buffer);
        return font.bytes != nullptr &&
               FontManager::GetInstance()->AddMinikinFont(name.c_str(), font.bytes.release(), font.size, 0, true);
    });
}

jboolean QxFontManager_SetFontConfig(JNIEnv* env, jclass, jobject fontConfig) {
    return guarded(jboolean{JNI_FALSE}, [&]() -> jboolean {
        const bool verbose = QxLog::IsAllLogEnable();
        if (verbose) logDebug(kFontTag, "QxFontManager_SetFontConfig()");
        if (FontManager::GetInstance()->IsSystemFontFamiliesAlreadySet()) {
            if (verbose) logDebug(kFontTag, "QxFontManager_SetFontConfig - already set");
            return JNI_TRUE;
        }
        if (fontConfig == nullptr) return logFailure("QxFontManager_SetFontConfig - jFontConfig is NULL");
        return adoptConfig(env, fontConfig);
    });
}

}  // namespace QxFontEffect
