#include "android/asset_manager_jni.h"

AAssetManager* AAssetManager_fromJava(JNIEnv* env, jobject assetManager) {
    if (env == nullptr || assetManager == nullptr) return nullptr;
    jclass managerClass = env->GetObjectClass(assetManager);
    jfieldID pointer = env->GetFieldID(managerClass, "mObject", "J");
    env->DeleteLocalRef(managerClass);
    if (pointer == nullptr) {
        env->ExceptionClear();
        return nullptr;
    }
    return reinterpret_cast<AAssetManager*>(env->GetLongField(assetManager, pointer));
}
