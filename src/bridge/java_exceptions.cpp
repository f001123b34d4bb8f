#include "bridge/java_exceptions.h"

#include "bridge/scoped_refs.h"

namespace QxFontEffect {

void HandleException(JNIEnv* env) {
    const LocalRef<jthrowable> pending(env, env->ExceptionOccurred());
    if (!pending) return;
    env->ExceptionClear();
    {
        const LocalRef<jclass> noSuchMethod(env, env->FindClass("java/lang/NoSuchMethodError"));
        if (!noSuchMethod) env->ExceptionClear();
        if (noSuchMethod && env->IsInstanceOf(pending.get(), noSuchMethod.get())) return;
    }
    env->Throw(pending.get());
}

}  // namespace QxFontEffect
