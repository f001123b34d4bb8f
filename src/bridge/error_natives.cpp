#include "bridge/error_natives.h"

#include "base/Error.h"
#include "base/QxLog.h"
#include "base/platform_log.h"
#include "bridge/java_vm.h"
#include "bridge/native_entry.h"

namespace QxFontEffect {

namespace {

constexpr char kTag[] = "QxError_JNI";

const NativeMethod kNatives[] = {
    {"Error_GetError", "()I", nativeFunction(Error_GetError)},
};

bool fixBuildType(JNIEnv* env, jclass errorClass) {
    if (QxLog::IsCheckedBuildType()) return true;
    jmethodID isEngMode = env->GetStaticMethodID(errorClass, "isBuildTypeEngMode", "()Z");
    if (isEngMode == nullptr) return false;
    const jboolean engMode = env->CallStaticBooleanMethod(errorClass, isEngMode);
    if (env->ExceptionCheck()) return false;
    QxLog::SetBuildType(engMode != JNI_FALSE);
    return true;
}

}  // namespace

bool Error_OnLoad(JavaVM* vm) {
    if (vm == nullptr) return false;
    rememberJavaVm(vm);
    JNIEnv* const env = environmentOf(vm);
    if (env == nullptr) return false;
    const LocalRef<jclass> errorClass = findClass(env, "com/zorvane/android/sdk/qxe/util/QxError");
    if (!errorClass || !fixBuildType(env, errorClass.get())) return false;
    if (!registerNatives(env, errorClass.get(), kNatives)) return false;
    logDebug(kTag, "Init .. Done");
    return true;
}

jint Error_GetError(JNIEnv*, jclass) {
    logDebug(kTag, "Error_GetError");
    return Error::GetError();
}

}  // namespace QxFontEffect
