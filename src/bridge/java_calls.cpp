#include "bridge/java_calls.h"

#include "bridge/java_exceptions.h"

namespace QxFontEffect {

bool JavaCalls::noticeException() {
    if (!mEnv->ExceptionCheck()) return false;
    HandleException(mEnv);
    mFailed = true;
    return true;
}

const char* JavaCalls::resolve(jobject object, const JavaMethod* methods, jmethodID* ids, size_t count) {
    if (mFailed) return methods[0].name;
    const LocalRef<jclass> objectClass(mEnv, mEnv->GetObjectClass(object));
    for (size_t i = 0; i < count; ++i) {
        ids[i] = mEnv->GetMethodID(objectClass.get(), methods[i].name, methods[i].signature);
        if (ids[i] != nullptr) continue;
        noticeException();
        return methods[i].name;
    }
    return nullptr;
}

jmethodID JavaCalls::optionalMethod(jclass objectClass, const JavaMethod& method) {
    if (mFailed) return nullptr;
    jmethodID id = mEnv->GetMethodID(objectClass, method.name, method.signature);
    if (id != nullptr) return id;
    HandleException(mEnv);
    mFailed = mEnv->ExceptionCheck();
    return nullptr;
}

jmethodID JavaCalls::optionalMethod(jobject object, const JavaMethod& method) {
    if (mFailed) return nullptr;
    const LocalRef<jclass> objectClass(mEnv, mEnv->GetObjectClass(object));
    return optionalMethod(objectClass.get(), method);
}

jint JavaCalls::intOf(jobject object, jmethodID method) {
    if (mFailed) return 0;
    const jint value = mEnv->CallIntMethod(object, method);
    return noticeException() ? 0 : value;
}

jint JavaCalls::intOf(jobject object, jmethodID method, jint argument) {
    if (mFailed) return 0;
    const jint value = mEnv->CallIntMethod(object, method, argument);
    return noticeException() ? 0 : value;
}

jfloat JavaCalls::floatOf(jobject object, jmethodID method) {
    if (mFailed) return 0.0f;
    const jfloat value = mEnv->CallFloatMethod(object, method);
    return noticeException() ? 0.0f : value;
}

jfloat JavaCalls::floatOf(jobject object, jmethodID method, jint argument) {
    if (mFailed) return 0.0f;
    const jfloat value = mEnv->CallFloatMethod(object, method, argument);
    return noticeException() ? 0.0f : value;
}

bool JavaCalls::booleanOf(jobject object, jmethodID method) {
    if (mFailed) return false;
    const jboolean value = mEnv->CallBooleanMethod(object, method);
    return !noticeException() && value != JNI_FALSE;
}

jobject JavaCalls::callObject(jobject object, jmethodID method) {
    if (mFailed) return nullptr;
    jobject value = mEnv->CallObjectMethod(object, method);
    return noticeException() ? nullptr : value;
}

}  // namespace QxFontEffect
