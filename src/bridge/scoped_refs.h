#pragma once

#include <jni.h>

#include <utility>

namespace QxFontEffect {

// What the VM lends is given back on every path. All of it may be given back while a Java exception is pending.

/// Owns a local reference, which may be null.
template <typename T>
class LocalRef {
public:
    LocalRef(JNIEnv* env, T object) : mEnv(env), mObject(object) {}
    LocalRef(LocalRef&& other) noexcept : mEnv(other.mEnv), mObject(std::exchange(other.mObject, nullptr)) {}
    LocalRef(const LocalRef&) = delete;
    LocalRef& operator=(const LocalRef&) = delete;
    LocalRef& operator=(LocalRef&& other) noexcept {
        std::swap(mEnv, other.mEnv);
        std::swap(mObject, other.mObject);
        return *this;
    }
    ~LocalRef() {
        if (mObject != nullptr) mEnv->DeleteLocalRef(mObject);
    }

    T get() const { return mObject; }
    explicit operator bool() const { return mObject != nullptr; }
    /// Hands the reference over, to be returned to Java.
    T release() { return std::exchange(mObject, nullptr); }

private:
    JNIEnv* mEnv;
    T mObject;
};

/// Owns the characters of a Java string in the VM's modified UTF-8. Null for a null string and when the VM has no
/// memory, which is not left pending as an exception.
class UtfChars {
public:
    UtfChars(JNIEnv* env, jstring string)
        : mEnv(env), mString(string), mChars(string == nullptr ? nullptr : env->GetStringUTFChars(string, nullptr)) {
        if (string != nullptr && mChars == nullptr) env->ExceptionClear();
    }
    UtfChars(const UtfChars&) = delete;
    UtfChars& operator=(const UtfChars&) = delete;
    ~UtfChars() {
        if (mChars != nullptr) mEnv->ReleaseStringUTFChars(mString, mChars);
    }

    const char* get() const { return mChars; }

private:
    JNIEnv* mEnv;
    jstring mString;
    const char* mChars;
};

/// Which VM calls lend and take back the elements of an array type.
template <typename Array>
struct ArrayAccess;

template <>
struct ArrayAccess<jbyteArray> {
    static constexpr auto kGet = &JNIEnv::GetByteArrayElements;
    static constexpr auto kRelease = &JNIEnv::ReleaseByteArrayElements;
};
template <>
struct ArrayAccess<jintArray> {
    static constexpr auto kGet = &JNIEnv::GetIntArrayElements;
    static constexpr auto kRelease = &JNIEnv::ReleaseIntArrayElements;
};
template <>
struct ArrayAccess<jfloatArray> {
    static constexpr auto kGet = &JNIEnv::GetFloatArrayElements;
    static constexpr auto kRelease = &JNIEnv::ReleaseFloatArrayElements;
};

/// Owns the elements of a Java array that is not null; `data()` is null when the VM has no memory, which is not left
/// pending as an exception.
template <typename Array>
class Elements {
    using Access = ArrayAccess<Array>;

public:
    Elements(JNIEnv* env, Array array) : mEnv(env), mArray(array), mData((env->*Access::kGet)(array, nullptr)) {
        if (mData == nullptr) env->ExceptionClear();
    }
    Elements(const Elements&) = delete;
    Elements& operator=(const Elements&) = delete;
    ~Elements() {
        if (mData != nullptr) (mEnv->*Access::kRelease)(mArray, mData, 0);
    }

    auto data() const { return mData; }

private:
    JNIEnv* mEnv;
    Array mArray;
    decltype((std::declval<JNIEnv*>()->*Access::kGet)(nullptr, nullptr)) mData;
};

}  // namespace QxFontEffect
