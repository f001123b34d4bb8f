#include "bridge/java_vm.h"

#include <atomic>

namespace QxFontEffect {

namespace {
std::atomic<JavaVM*> javaVm{nullptr};
}

void rememberJavaVm(JavaVM* vm) {
    javaVm = vm;
}

JavaVM* rememberedJavaVm() {
    return javaVm;
}

JNIEnv* environmentOf(JavaVM* vm) {
    void* environment = nullptr;
    if (vm == nullptr || vm->GetEnv(&environment, JNI_VERSION_1_6) != JNI_OK) return nullptr;
    return static_cast<JNIEnv*>(environment);
}

}  // namespace QxFontEffect
