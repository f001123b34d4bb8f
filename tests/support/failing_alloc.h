#pragma once

#include "support/allocation_pause.h"

namespace QxFontEffect::test {

/// Refuses one allocation of the calling thread while it lives: the one with number `failAt`, counted from 0 since
/// construction; negative refuses none and only counts. malloc, calloc and realloc give null, operator new throws
/// std::bad_alloc, its nothrow form gives null. Link the target qx_failing_alloc.
///
/// The linker redirects the requests of the program's own object files (the library's, since it is linked in
/// statically); what a shared library allocates by itself is not seen. One at a time per thread.
///
///     for (int n = 0;; ++n) {
///         Picture picture;                       // fresh, made outside the guarded part
///         FailingAlloc failing(n);
///         core.doPostProcessing(&picture.params);
///         if (!failing.refused()) break;         // every request has had its turn
///         AllocationPause pause;
///         EXPECT_SAME_PLANE(untouched, picture, "request", n);
///     }
class FailingAlloc {
public:
    explicit FailingAlloc(int failAt);
    ~FailingAlloc();
    FailingAlloc(const FailingAlloc&) = delete;
    FailingAlloc& operator=(const FailingAlloc&) = delete;

    /// Whether request `failAt` was made.
    bool refused() const;

    /// Requests made so far, the refused one included.
    int requests() const;
};

}  // namespace QxFontEffect::test
