#pragma once

#include <atomic>
#include <cstddef>
#include <utility>

/// Base of shared objects. An object starts with one owner; `unref` of the last one deletes it. The count may be
/// changed from any thread.
class SkRefCnt {
public:
    SkRefCnt() = default;
    virtual ~SkRefCnt() = default;
    SkRefCnt(const SkRefCnt&) = delete;
    SkRefCnt& operator=(const SkRefCnt&) = delete;

    void ref() const { mOwners.fetch_add(1, std::memory_order_relaxed); }
    void unref() const {
        if (mOwners.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
    }
    bool unique() const { return mOwners.load(std::memory_order_acquire) == 1; }

private:
    mutable std::atomic<int> mOwners{1};
};

/// Shared pointer to a `SkRefCnt`. Made from a bare pointer it takes over that owner and adds none.
template <typename T>
class sk_sp {
public:
    using element_type = T;

    constexpr sk_sp() = default;
    constexpr sk_sp(std::nullptr_t) {}
    explicit sk_sp(T* object) : mObject(object) {}
    sk_sp(const sk_sp& other) : mObject(shared(other.get())) {}
    sk_sp(sk_sp&& other) noexcept : mObject(other.release()) {}
    template <typename U>
    sk_sp(const sk_sp<U>& other) : mObject(shared(other.get())) {}
    template <typename U>
    sk_sp(sk_sp<U>&& other) noexcept : mObject(other.release()) {}
    ~sk_sp() { drop(mObject); }

    sk_sp& operator=(const sk_sp& other) {
        if (this != &other) reset(shared(other.get()));
        return *this;
    }
    sk_sp& operator=(sk_sp&& other) noexcept {
        reset(other.release());
        return *this;
    }

    T* get() const { return mObject; }
    T* operator->() const { return mObject; }
    T& operator*() const { return *mObject; }
    explicit operator bool() const { return mObject != nullptr; }

    void reset(T* object = nullptr) {
        T* old = mObject;
        mObject = object;
        drop(old);
    }
    /// Hands the owner to the caller and becomes null.
    T* release() {
        T* object = mObject;
        mObject = nullptr;
        return object;
    }
    void swap(sk_sp& other) { std::swap(mObject, other.mObject); }

private:
    static T* shared(T* object) {
        if (object != nullptr) object->ref();
        return object;
    }
    static void drop(T* object) {
        if (object != nullptr) object->unref();
    }

    T* mObject = nullptr;
};

template <typename T, typename U>
bool operator==(const sk_sp<T>& a, const sk_sp<U>& b) {
    return a.get() == b.get();
}
template <typename T>
bool operator==(const sk_sp<T>& a, std::nullptr_t) {
    return !a;
}
template <typename T, typename U>
bool operator!=(const sk_sp<T>& a, const sk_sp<U>& b) {
    return !(a == b);
}
template <typename T>
bool operator!=(const sk_sp<T>& a, std::nullptr_t) {
    return static_cast<bool>(a);
}

template <typename T, typename... Args>
sk_sp<T> sk_make_sp(Args&&... args) {
    return sk_sp<T>(new T(std::forward<Args>(args)...));
}

/// A second owner of an object that somebody else keeps too.
template <typename T>
sk_sp<T> sk_ref_sp(T* object) {
    if (object != nullptr) object->ref();
    return sk_sp<T>(object);
}
