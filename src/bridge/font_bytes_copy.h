#pragma once

#include <jni.h>

#include <memory>

namespace QxFontEffect {

/// Bytes of a font on their way to the font manager, which takes them over with `release()`.
struct FontBytesCopy {
    std::unique_ptr<char[]> bytes;  ///< null when there is no memory
    unsigned int size = 0;
};

/// Copies a Java array, which must not be null.
FontBytesCopy copyFontBytes(JNIEnv* env, jbyteArray data);

}  // namespace QxFontEffect
