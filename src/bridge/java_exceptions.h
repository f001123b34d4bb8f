#pragma once

#include <jni.h>

namespace QxFontEffect {

/// Swallows a pending NoSuchMethodError: a missing method is the result of a look-up and is answered with a failure
/// value. Any other exception stays pending, for the Java caller.
void HandleException(JNIEnv* env);

}  // namespace QxFontEffect
