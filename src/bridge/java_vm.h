#pragma once

#include <jni.h>

namespace QxFontEffect {

/// Keeps the VM that loaded the library. The last one counts.
void rememberJavaVm(JavaVM* vm);

/// The VM that loaded the library, for code that has to find the environment of its thread; null before the load.
JavaVM* rememberedJavaVm();

/// The environment of the calling thread for version 1.6; null when there is none.
JNIEnv* environmentOf(JavaVM* vm);

}  // namespace QxFontEffect
