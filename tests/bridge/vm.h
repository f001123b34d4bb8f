#pragma once

#include <jni.h>

#include <string>

namespace QxFontEffect::test {

/// The environment of the one Java VM that this program makes, for the thread that asks first. The natives are
/// registered by JNI_OnLoad, as they are when a VM loads the library.
JNIEnv* env();
JavaVM* vm();

/// A new com.zorvane.android.sdk.qxe.QxText.
jobject newText();

/// Calls a static method of qx.test.Samples that gives an object; with a path where one is given.
jobject sample(const char* method, const std::string& path = "");

}  // namespace QxFontEffect::test
