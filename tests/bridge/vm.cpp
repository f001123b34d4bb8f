#include "bridge/vm.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

extern "C" JNIEXPORT jint JNICALL JNI_OnLoad(JavaVM* vm, void*);

namespace QxFontEffect::test {

namespace {

struct Vm {
    JavaVM* vm = nullptr;
    JNIEnv* env = nullptr;
};

Vm makeVm() {
    std::string classPath = "-Djava.class.path=" QX_TEST_CLASS_PATH;
    std::vector<JavaVMOption> options(4, JavaVMOption{});
    options[0].optionString = classPath.data();
    options[1].optionString = const_cast<char*>("-Xmx64m");
    options[2].optionString = const_cast<char*>("-XX:+UseSerialGC");
    // Without it the VM only tunes itself differently; with it, it checks every call.
    options[3].optionString =
        const_cast<char*>(std::getenv("QX_CHECK_JNI") != nullptr ? "-Xcheck:jni" : "-XX:TieredStopAtLevel=1");
    JavaVMInitArgs arguments = {};
    arguments.version = JNI_VERSION_1_6;
    arguments.nOptions = static_cast<jint>(options.size());
    arguments.options = options.data();
    Vm made;
    void* environment = nullptr;
    if (JNI_CreateJavaVM(&made.vm, &environment, &arguments) != JNI_OK) {
        ADD_FAILURE() << "no VM";
        std::abort();
    }
    made.env = static_cast<JNIEnv*>(environment);
    EXPECT_EQ(0x10002, JNI_OnLoad(made.vm, nullptr));
    EXPECT_FALSE(made.env->ExceptionCheck());
    return made;
}

const Vm& theVm() {
    static const Vm made = makeVm();
    return made;
}

}  // namespace

JNIEnv* env() {
    return theVm().env;
}

JavaVM* vm() {
    return theVm().vm;
}

jobject newText() {
    jclass textClass = env()->FindClass("com/zorvane/android/sdk/qxe/QxText");
    jobject text = env()->NewObject(textClass, env()->GetMethodID(textClass, "<init>", "()V"));
    env()->DeleteLocalRef(textClass);
    return text;
}

jobject sample(const char* method, const std::string& path) {
    jclass samples = env()->FindClass("qx/test/Samples");
    const char* const signature = path.empty() ? "()Ljava/lang/Object;" : "(Ljava/lang/String;)Ljava/lang/Object;";
    jmethodID id = env()->GetStaticMethodID(samples, method, signature);
    jstring argument = env()->NewStringUTF(path.c_str());
    jobject object = path.empty() ? env()->CallStaticObjectMethod(samples, id)
                                  : env()->CallStaticObjectMethod(samples, id, argument);
    EXPECT_FALSE(env()->ExceptionCheck()) << method;
    env()->DeleteLocalRef(argument);
    env()->DeleteLocalRef(samples);
    return object;
}

}  // namespace QxFontEffect::test
