#pragma once

#include <jni.h>

#include <cstddef>

#include "bridge/scoped_refs.h"

namespace QxFontEffect {

/// Name and signature of a Java method.
struct JavaMethod {
    const char* name;
    const char* signature;
};

/// The Java calls of one native that may throw.
///
/// After the first exception every further call does nothing and answers 0, false or null, so that a native reads all
/// it needs in a straight line and asks `failed()` once. The exception stays pending for the Java caller, unless it is
/// a NoSuchMethodError.
class JavaCalls {
public:
    explicit JavaCalls(JNIEnv* env) : mEnv(env) {}
    JavaCalls(const JavaCalls&) = delete;
    JavaCalls& operator=(const JavaCalls&) = delete;

    JNIEnv* env() const { return mEnv; }
    bool failed() const { return mFailed; }

    /// Looks up the methods of a table on the object's class, in order, and stops at the first that is missing.
    /// @return the name of the missing method; null when all are there.
    template <size_t N>
    const char* resolve(jobject object, const JavaMethod (&methods)[N], jmethodID (&ids)[N]) {
        return resolve(object, methods, ids, N);
    }

    /// Null when the object's class has no such method, which is no failure.
    jmethodID optionalMethod(jobject object, const JavaMethod& method);
    jmethodID optionalMethod(jclass objectClass, const JavaMethod& method);

    jint intOf(jobject object, jmethodID method);
    jint intOf(jobject object, jmethodID method, jint argument);
    jfloat floatOf(jobject object, jmethodID method);
    jfloat floatOf(jobject object, jmethodID method, jint argument);
    bool booleanOf(jobject object, jmethodID method);

    /// @tparam T  the reference type that the method's signature promises.
    template <typename T = jobject>
    LocalRef<T> objectOf(jobject object, jmethodID method) {
        return LocalRef<T>(mEnv, static_cast<T>(callObject(object, method)));
    }

    /// Passes the result of another call on, and notices an exception that it threw.
    template <typename T>
    LocalRef<T> checked(T result) {
        LocalRef<T> owned(mEnv, result);
        noticeException();
        return owned;
    }

private:
    const char* resolve(jobject object, const JavaMethod* methods, jmethodID* ids, size_t count);
    jobject callObject(jobject object, jmethodID method);
    bool noticeException();

    JNIEnv* mEnv;
    bool mFailed = false;
};

}  // namespace QxFontEffect
