#pragma once

#include "base/Mutex.h"
#include "base/immortal.h"

namespace QxFontEffect {

/// Holds a lock of the whole process while it lives; every `Purpose` has one of its own. It works up to the very end of
/// the process. Without memory for the lock nobody waits.
template <typename Purpose>
class ProcessLock {
public:
    ProcessLock() { mutex().Lock(); }
    ~ProcessLock() { mutex().Unlock(); }
    ProcessLock(const ProcessLock&) = delete;
    ProcessLock& operator=(const ProcessLock&) = delete;

private:
    struct ConstructedMutex {
        ConstructedMutex() { mutex.Construct(); }
        Mutex mutex;
    };

    static Mutex& mutex() {
        static Immortal<ConstructedMutex> lock;
        return lock.value.mutex;
    }
};

}  // namespace QxFontEffect
