#pragma once

namespace QxFontEffect {

struct MutexImpl;

/// A lock that its owning thread may take again; it is free when every Lock of that thread has had its Unlock.
///
/// Made in two steps: the constructor makes an empty shell, `Construct` the lock. Lock and Unlock of a shell have no
/// effect.
class Mutex {
public:
    Mutex() = default;
    Mutex(const Mutex&) = delete;
    Mutex& operator=(const Mutex&) = delete;
    /// No thread may hold the lock or wait for it.
    ~Mutex();

    /// Makes the lock, free. Already constructed: false and error 4, nothing changes. No system lock or no memory:
    /// false and error 1.
    bool Construct();

    void Lock();

    /// Ignored when the caller does not hold the lock.
    void Unlock();

private:
    MutexImpl* mImpl = nullptr;
};

}  // namespace QxFontEffect
