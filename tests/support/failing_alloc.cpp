#include "support/failing_alloc.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <new>

// With --wrap=NAME the linker sends every reference to NAME to __wrap_NAME, and __real_NAME to the original. That
// leaves the sanitizers' own allocator in place below us, with its checks that new meets delete and malloc free.
// The names of operator new are those of targets with a 64-bit size_t.

namespace {

thread_local bool active = false;
thread_local int paused = 0;
thread_local int refuseAt = -1;
thread_local int made = 0;

bool refuseThis() {
    if (!active || paused > 0) return false;
    return made++ == refuseAt;
}

}  // namespace

extern "C" {

void qxPauseFailingAlloc(int change) {
    paused += change;
}

void* __real_malloc(size_t size);
void* __real_calloc(size_t count, size_t size);
void* __real_realloc(void* old, size_t size);
void* __real__Znwm(size_t size);
void* __real__Znam(size_t size);
void* __real__ZnwmRKSt9nothrow_t(size_t size, const std::nothrow_t& tag) noexcept;
void* __real__ZnamRKSt9nothrow_t(size_t size, const std::nothrow_t& tag) noexcept;

void* __wrap_malloc(size_t size) {
    return refuseThis() ? nullptr : __real_malloc(size);
}
void* __wrap_calloc(size_t count, size_t size) {
    return refuseThis() ? nullptr : __real_calloc(count, size);
}
void* __wrap_realloc(void* old, size_t size) {
    return refuseThis() ? nullptr : __real_realloc(old, size);
}

void* __wrap__Znwm(size_t size) {
    if (refuseThis()) throw std::bad_alloc();
    return __real__Znwm(size);
}
void* __wrap__Znam(size_t size) {
    if (refuseThis()) throw std::bad_alloc();
    return __real__Znam(size);
}
void* __wrap__ZnwmRKSt9nothrow_t(size_t size, const std::nothrow_t& tag) noexcept {
    return refuseThis() ? nullptr : __real__ZnwmRKSt9nothrow_t(size, tag);
}
void* __wrap__ZnamRKSt9nothrow_t(size_t size, const std::nothrow_t& tag) noexcept {
    return refuseThis() ? nullptr : __real__ZnamRKSt9nothrow_t(size, tag);
}

}  // extern "C"

namespace QxFontEffect::test {

FailingAlloc::FailingAlloc(int failAt) {
    if (active) ADD_FAILURE() << "another FailingAlloc is alive in this thread";
    refuseAt = failAt;
    made = 0;
    active = true;
}

FailingAlloc::~FailingAlloc() {
    active = false;
}

bool FailingAlloc::refused() const {
    return refuseAt >= 0 && made > refuseAt;
}

int FailingAlloc::requests() const {
    return made;
}

}  // namespace QxFontEffect::test
