#include "bridge/text_binding.h"

#include <memory>
#include <new>

#include "base/platform_log.h"
#include "bridge/scoped_refs.h"
#include "text/QxTextInstanceManager.h"
#include "text/QxTextObject.h"

namespace QxFontEffect {

namespace {

constexpr long kErrorUnbound = 19;

// Looked up on the instance's class each time: a remembered id would tie the library to one loader's class.
jfieldID handleField(JNIEnv* env, jobject instance) {
    const LocalRef<jclass> instanceClass(env, env->GetObjectClass(instance));
    jfieldID field = env->GetFieldID(instanceClass.get(), "mHandle", "I");
    if (field == nullptr) env->ExceptionClear();
    return field;
}

QxTextObject* bindNewObject(JNIEnv* env, jobject instance) {
    logDebug(kTextTag, "GetBoundTextObject - hande = 0");
    std::unique_ptr<QxTextObject> object(new (std::nothrow) QxTextObject);
    if (object == nullptr || !object->Construct()) return nullptr;
    QxTextInstanceManager::Bind(object.get());
    env->SetIntField(instance, handleField(env, instance), object->GetRuntimeHandle());
    return object.release();
}

}  // namespace

std::optional<jint> readHandle(JNIEnv* env, jobject instance) {
    jfieldID field = handleField(env, instance);
    if (field == nullptr) return std::nullopt;
    return env->GetIntField(instance, field);
}

QxTextObject* GetBoundTextObject(JNIEnv* env, jobject instance) {
    const std::optional<jint> handle = readHandle(env, instance);
    if (!handle) return nullptr;
    return *handle >= 0 ? QxTextObject::FindQxTextObject(*handle) : bindNewObject(env, instance);
}

QxTextObject* boundObjectOrError(JNIEnv* env, jobject instance, int line) {
    QxTextObject* const object = GetBoundTextObject(env, instance);
    if (object == nullptr) reportUnbound(line);
    return object;
}

void reportUnbound(int line) {
    failWith(kTextTag, kErrorUnbound, line);
}

}  // namespace QxFontEffect
