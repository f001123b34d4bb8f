#pragma once

/// Defined by the failing allocator where a program links it.
extern "C" void qxPauseFailingAlloc(int change) __attribute__((weak));

namespace QxFontEffect::test {

/// While one lives, allocations of this thread are neither counted nor refused by the failing allocator. Test
/// helpers that run inside the code under test (log sinks, callbacks) take one before they allocate.
class AllocationPause {
public:
    AllocationPause() {
        if (qxPauseFailingAlloc) qxPauseFailingAlloc(1);
    }
    ~AllocationPause() {
        if (qxPauseFailingAlloc) qxPauseFailingAlloc(-1);
    }
    AllocationPause(const AllocationPause&) = delete;
    AllocationPause& operator=(const AllocationPause&) = delete;
};

}  // namespace QxFontEffect::test
