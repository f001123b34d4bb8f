#include <jni.h>

#include "base/platform_log.h"
#include "bridge/error_natives.h"
#include "bridge/font_natives.h"
#include "bridge/java_exceptions.h"
#include "bridge/java_vm.h"
#include "bridge/scoped_refs.h"
#include "bridge/text_natives.h"

namespace QxFontEffect {

namespace {

constexpr char kTag[] = "QxText_Common_JNI";

// This is the number of 1.2, not of 1.6, which the environment is asked for. VMs accept both, and what a library
// answers here is visible to whoever loads it, so it stays.
constexpr jint kAnsweredVersion = 0x10002;

/// Runs the registrations. An exception that one of them leaves is set aside, because the next one may not call into
/// the VM with it, and thrown when all have run.
class Registrations {
public:
    explicit Registrations(JNIEnv* env) : mEnv(env), mThrown(env, nullptr) {}

    void add(bool registered, const char* failure) {
        if (registered) return;
        logError(kTag, "%s", failure);
        HandleException(mEnv);
        LocalRef<jthrowable> pending(mEnv, mEnv->ExceptionOccurred());
        if (!pending) return;
        mEnv->ExceptionClear();
        if (!mThrown) mThrown = std::move(pending);
    }

    void finish() {
        if (mThrown) mEnv->Throw(mThrown.get());
    }

private:
    JNIEnv* mEnv;
    LocalRef<jthrowable> mThrown;
};

}  // namespace

}  // namespace QxFontEffect

extern "C" JNIEXPORT jint JNICALL JNI_OnLoad(JavaVM* vm, void*) {
    using namespace QxFontEffect;
    logDebug(kTag, "QxText_JNI_OnLoad");
    JNIEnv* const env = environmentOf(vm);
    if (env == nullptr) return 0;

    // A class that cannot be registered leaves the others usable: the load goes on.
    Registrations registrations(env);
    registrations.add(Error_OnLoad(vm), "QxError Onload Fail!");
    registrations.add(QxFontManager_OnLoad(vm, env), "QxFontManager OnLoad Fail!");
    registrations.add(QxText_OnLoad(vm, env), "QxText OnLoad Fail!");
    registrations.finish();

    logDebug(kTag, "QxText_JNI_OnLoad .... done");
    return kAnsweredVersion;
}
