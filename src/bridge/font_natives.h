#pragma once

#include <jni.h>

namespace QxFontEffect {

/// Registers the natives of com.zorvane.android.sdk.qxe.font.FontManager. False when the class or one of the methods
/// is missing.
bool QxFontManager_OnLoad(JavaVM* vm, JNIEnv* env);

/// Registers the bytes of a font, which texts may then use by its name as if that were its path.
jboolean QxFontManager_InsertFontData(JNIEnv* env, jclass managerClass, jstring fontName, jbyteArray buffer);

/// Takes over the platform's font configuration, an android.text.FontConfig, once per process; later ones are a
/// success that does nothing. A configuration that cannot be read leaves the process without one.
jboolean QxFontManager_SetFontConfig(JNIEnv* env, jclass managerClass, jobject fontConfig);

}  // namespace QxFontEffect
