#pragma once

#include <jni.h>

#include <cstddef>

#include "bridge/scoped_refs.h"

namespace QxFontEffect {

/// Runs the body of a native. A C++ exception ends here, in the failure value: the VM does not survive one.
template <typename Result, typename Body>
Result guarded(Result failure, Body&& body) {
#if defined(__cpp_exceptions)
    try {
        return body();
    } catch (...) {
        return failure;
    }
#else
    static_cast<void>(failure);
    return body();
#endif
}

/// A native method: its Java name, its signature, and the function that does it.
struct NativeMethod {
    const char* name;
    const char* signature;
    void* function;
};

template <typename Function>
void* nativeFunction(Function* function) noexcept {
    return reinterpret_cast<void*>(function);
}

/// Finds a class and registers its natives, in order; the VM stops at the first that the class does not declare, and
/// those before it stay registered. A missing class leaves no exception pending, a missing method its
/// NoSuchMethodError.
template <size_t N>
bool registerNatives(JNIEnv* env, jclass owner, const NativeMethod (&methods)[N]) {
    JNINativeMethod table[N];
    for (size_t i = 0; i < N; ++i) {
        // The desktop's header has the strings writable; no VM writes to them.
        table[i].name = const_cast<char*>(methods[i].name);
        table[i].signature = const_cast<char*>(methods[i].signature);
        table[i].fnPtr = methods[i].function;
    }
    return env->RegisterNatives(owner, table, static_cast<jint>(N)) >= 0;
}

/// A class of the application by its path; null, without an exception, when it is missing or cannot be initialised.
inline LocalRef<jclass> findClass(JNIEnv* env, const char* path) {
    jclass found = env->FindClass(path);
    if (found == nullptr) env->ExceptionClear();
    return LocalRef<jclass>(env, found);
}

}  // namespace QxFontEffect
