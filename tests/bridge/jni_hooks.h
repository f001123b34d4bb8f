#pragma once

#include <jni.h>

#include <string>

namespace QxFontEffect::test {

/// Stands between a native and the VM while it lives: counts what is lent and given back, and makes chosen calls fail.
/// One at a time, for the thread of the environment.
class JniHooks {
public:
    explicit JniHooks(JNIEnv* env);
    ~JniHooks();
    JniHooks(const JniHooks&) = delete;
    JniHooks& operator=(const JniHooks&) = delete;

    /// What is lent and not given back: local references, characters of strings, elements of arrays.
    int lent() const { return localRefs + characters + elements; }

    int localRefs = 0;
    int characters = 0;
    int elements = 0;
    int otherReleaseModes = 0;  ///< elements that were given back with another mode than 0

    int refuseAt = 0;  ///< number of the request for memory that the VM refuses with an OutOfMemoryError, from 1
    int requests = 0;
    int throwAt = 0;  ///< number of the Java method that throws, from 1
    int calls = 0;
    jthrowable thrown = nullptr;  ///< what it throws
    std::string missing;          ///< name of a method that no class has

    /// The VM's own functions.
    const JNINativeInterface_* real;

private:
    JNIEnv* mEnv;
    JNINativeInterface_ mTable;
};

}  // namespace QxFontEffect::test
