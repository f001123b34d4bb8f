#pragma once

#include <jni.h>

#include <optional>

namespace QxFontEffect {

class QxTextObject;

/// Log tag of the text natives.
constexpr char kTextTag[] = "QxText_JNI";

/// The handle that a QxText instance keeps in its field `mHandle`: negative before the first native call. Nothing when
/// the class has no such field; no exception is left pending.
std::optional<jint> readHandle(JNIEnv* env, jobject instance);

/// The text object of a QxText instance. An instance without a handle gets an object, which is bound once and whose
/// handle is written back. Null when the handle is not known (any more), and when no object can be made.
QxTextObject* GetBoundTextObject(JNIEnv* env, jobject instance);

/// The same; null is reported as error 19.
/// @param line  line number of the report, part of the message.
QxTextObject* boundObjectOrError(JNIEnv* env, jobject instance, int line);

/// Reports error 19: no text object is bound to the instance.
void reportUnbound(int line);

}  // namespace QxFontEffect
