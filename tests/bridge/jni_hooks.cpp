#include "bridge/jni_hooks.h"

namespace QxFontEffect::test {

namespace {

JniHooks* hooks = nullptr;

void throwNew(JNIEnv* env, const char* className) {
    jclass thrown = hooks->real->FindClass(env, className);
    hooks->real->ThrowNew(env, thrown, "by a test");
    hooks->real->DeleteLocalRef(env, thrown);
}

/// Whether the VM refuses this request for memory.
bool refused(JNIEnv* env) {
    if (++hooks->requests != hooks->refuseAt) return false;
    throwNew(env, "java/lang/OutOfMemoryError");
    return true;
}

bool throwsNow(JNIEnv* env) {
    if (++hooks->calls != hooks->throwAt) return false;
    hooks->real->Throw(env, hooks->thrown);
    return true;
}

template <typename T>
T lend(T object) {
    if (object != nullptr) ++hooks->localRefs;
    return object;
}

jclass JNICALL getObjectClass(JNIEnv* env, jobject object) {
    return lend(hooks->real->GetObjectClass(env, object));
}
jclass JNICALL findClass(JNIEnv* env, const char* name) {
    return refused(env) ? nullptr : lend(hooks->real->FindClass(env, name));
}
jthrowable JNICALL exceptionOccurred(JNIEnv* env) {
    return lend(hooks->real->ExceptionOccurred(env));
}
jobject JNICALL getObjectArrayElement(JNIEnv* env, jobjectArray array, jsize index) {
    return lend(hooks->real->GetObjectArrayElement(env, array, index));
}
jintArray JNICALL newIntArray(JNIEnv* env, jsize length) {
    return refused(env) ? nullptr : lend(hooks->real->NewIntArray(env, length));
}
jobject JNICALL newObject(JNIEnv* env, jclass objectClass, jmethodID method, va_list arguments) {
    return throwsNow(env) ? nullptr : lend(hooks->real->NewObjectV(env, objectClass, method, arguments));
}
void JNICALL deleteLocalRef(JNIEnv* env, jobject object) {
    if (object != nullptr) --hooks->localRefs;
    hooks->real->DeleteLocalRef(env, object);
}

jobject JNICALL callObject(JNIEnv* env, jobject object, jmethodID method, va_list arguments) {
    return throwsNow(env) ? nullptr : lend(hooks->real->CallObjectMethodV(env, object, method, arguments));
}
// What a call that throws answers is not to be read; a number that shows is answered here.
jint JNICALL callInt(JNIEnv* env, jobject object, jmethodID method, va_list arguments) {
    return throwsNow(env) ? 77777 : hooks->real->CallIntMethodV(env, object, method, arguments);
}
jfloat JNICALL callFloat(JNIEnv* env, jobject object, jmethodID method, va_list arguments) {
    return throwsNow(env) ? 77777.0f : hooks->real->CallFloatMethodV(env, object, method, arguments);
}
jboolean JNICALL callBoolean(JNIEnv* env, jobject object, jmethodID method, va_list arguments) {
    return throwsNow(env) ? JNI_TRUE : hooks->real->CallBooleanMethodV(env, object, method, arguments);
}

jmethodID JNICALL getMethodId(JNIEnv* env, jclass objectClass, const char* name, const char* signature) {
    if (hooks->missing != name) return hooks->real->GetMethodID(env, objectClass, name, signature);
    throwNew(env, "java/lang/NoSuchMethodError");
    return nullptr;
}
jfieldID JNICALL getFieldId(JNIEnv* env, jclass objectClass, const char* name, const char* signature) {
    return refused(env) ? nullptr : hooks->real->GetFieldID(env, objectClass, name, signature);
}

const char* JNICALL getStringChars(JNIEnv* env, jstring string, jboolean* isCopy) {
    if (refused(env)) return nullptr;
    ++hooks->characters;
    return hooks->real->GetStringUTFChars(env, string, isCopy);
}
void JNICALL releaseStringChars(JNIEnv* env, jstring string, const char* characters) {
    --hooks->characters;
    hooks->real->ReleaseStringUTFChars(env, string, characters);
}

/// The pair of functions that lend and take back the elements of one kind of array.
template <typename Array, typename Element, Element* (JNICALL* JNINativeInterface_::*Get)(JNIEnv*, Array, jboolean*),
          void (JNICALL* JNINativeInterface_::*Release)(JNIEnv*, Array, Element*, jint)>
struct ArrayHooks {
    static Element* JNICALL get(JNIEnv* env, Array array, jboolean* isCopy) {
        if (refused(env)) return nullptr;
        ++hooks->elements;
        return (hooks->real->*Get)(env, array, isCopy);
    }
    static void JNICALL release(JNIEnv* env, Array array, Element* elements, jint mode) {
        --hooks->elements;
        if (mode != 0) ++hooks->otherReleaseModes;
        (hooks->real->*Release)(env, array, elements, mode);
    }
    static void install(JNINativeInterface_& table) {
        table.*Get = get;
        table.*Release = release;
    }
};

}  // namespace

JniHooks::JniHooks(JNIEnv* env) : real(env->functions), mEnv(env), mTable(*env->functions) {
    mTable.GetObjectClass = getObjectClass;
    mTable.FindClass = findClass;
    mTable.ExceptionOccurred = exceptionOccurred;
    mTable.GetObjectArrayElement = getObjectArrayElement;
    mTable.NewIntArray = newIntArray;
    mTable.NewObjectV = newObject;
    mTable.DeleteLocalRef = deleteLocalRef;
    mTable.CallObjectMethodV = callObject;
    mTable.CallIntMethodV = callInt;
    mTable.CallFloatMethodV = callFloat;
    mTable.CallBooleanMethodV = callBoolean;
    mTable.GetMethodID = getMethodId;
    mTable.GetFieldID = getFieldId;
    mTable.GetStringUTFChars = getStringChars;
    mTable.ReleaseStringUTFChars = releaseStringChars;
    ArrayHooks<jintArray, jint, &JNINativeInterface_::GetIntArrayElements,
               &JNINativeInterface_::ReleaseIntArrayElements>::install(mTable);
    ArrayHooks<jfloatArray, jfloat, &JNINativeInterface_::GetFloatArrayElements,
               &JNINativeInterface_::ReleaseFloatArrayElements>::install(mTable);
    ArrayHooks<jbyteArray, jbyte, &JNINativeInterface_::GetByteArrayElements,
               &JNINativeInterface_::ReleaseByteArrayElements>::install(mTable);
    hooks = this;
    env->functions = &mTable;
}

JniHooks::~JniHooks() {
    mEnv->functions = real;
    hooks = nullptr;
}

}  // namespace QxFontEffect::test
