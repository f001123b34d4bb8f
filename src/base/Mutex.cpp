#include "base/Mutex.h"

#include <pthread.h>

#include <atomic>
#include <cstdint>
#include <new>

#include "base/platform_log.h"

namespace QxFontEffect {

struct MutexImpl {
    pthread_mutex_t mutex;
    int32_t lockCount;
    // Read without the lock: a thread can find its own name here only if it put it there itself, so any order of
    // memory accesses will do, but not a torn read.
    std::atomic<pthread_t> owner;
};

namespace {

constexpr char kTag[] = "QX_Mutex";
constexpr pthread_t kNobody = 0;

bool isHeldByCaller(const MutexImpl& lock) {
    const pthread_t owner = lock.owner.load(std::memory_order_relaxed);
    return owner != kNobody && pthread_equal(owner, pthread_self()) != 0;
}

}  // namespace

Mutex::~Mutex() {
    if (mImpl == nullptr) return;
    pthread_mutex_destroy(&mImpl->mutex);
    delete mImpl;
}

bool Mutex::Construct() {
    if (mImpl != nullptr) return failWith(kTag, 4, 41);
    MutexImpl* made = new (std::nothrow) MutexImpl{{}, 0, {kNobody}};
    if (made == nullptr || pthread_mutex_init(&made->mutex, nullptr) != 0) {
        delete made;
        return failWith(kTag, 1, 45);
    }
    mImpl = made;
    return true;
}

void Mutex::Lock() {
    if (mImpl == nullptr) return;
    if (isHeldByCaller(*mImpl)) {
        ++mImpl->lockCount;
        return;
    }
    pthread_mutex_lock(&mImpl->mutex);
    mImpl->owner.store(pthread_self(), std::memory_order_relaxed);
    mImpl->lockCount = 1;
}

void Mutex::Unlock() {
    if (mImpl == nullptr || !isHeldByCaller(*mImpl)) return;
    if (--mImpl->lockCount > 0) return;
    mImpl->owner.store(kNobody, std::memory_order_relaxed);
    pthread_mutex_unlock(&mImpl->mutex);
}

}  // namespace QxFontEffect
