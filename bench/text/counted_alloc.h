#pragma once

#include <cstdint>

namespace qxbench {

/// Memory that the whole process has asked for, shared libraries included, in the allocator's own sizes.
struct HeapUse {
    int64_t current;  ///< bytes in use now, more than at the last `resetHeapPeak`
    int64_t peak;     ///< most since then
    int64_t requests;
};

/// False where the C library's allocator cannot be watched; all figures are 0 then.
bool heapIsCounted();

void resetHeapPeak();
HeapUse heapUse();

}  // namespace qxbench
