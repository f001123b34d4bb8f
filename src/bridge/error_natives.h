#pragma once

#include <jni.h>

namespace QxFontEffect {

/// Prepares com.zorvane.android.sdk.qxe.util.QxError: asks it once for the build type, which decides about verbose
/// logging for the life of the process, and registers its native. False when the class or a method is missing and when
/// the question throws; that exception stays pending.
bool Error_OnLoad(JavaVM* vm);

/// The calling thread's last error code.
jint Error_GetError(JNIEnv* env, jclass errorClass);

}  // namespace QxFontEffect
