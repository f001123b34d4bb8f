#pragma once

#include <jni.h>

#include "android/asset_manager.h"

extern "C" {

/// The native manager behind an android.content.res.AssetManager, read from its long field `mObject`. Valid while
/// the Java object lives. Null for null and for an object without that field; no exception stays pending.
AAssetManager* AAssetManager_fromJava(JNIEnv* env, jobject assetManager);

}  // extern "C"
