#include "text/counted_alloc.h"

#include <cstddef>
#include <cstdlib>

// GNU's allocator can be replaced by functions of the same names, and keeps its own under a second one.
#if defined(__GLIBC__) && defined(QX_BENCH_COUNT_HEAP)
#include <malloc.h>

#include <cerrno>

extern "C" {
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);
void* __libc_memalign(size_t alignment, size_t size);
void __libc_free(void* block);
}

namespace {

// One thread measures; a second one would only blur the figures.
int64_t gCurrent = 0, gPeak = 0, gRequests = 0;

void* taken(void* block) {
    if (block == nullptr) return block;
    gCurrent += static_cast<int64_t>(malloc_usable_size(block));
    if (gCurrent > gPeak) gPeak = gCurrent;
    ++gRequests;
    return block;
}

void givenBack(void* block) {
    if (block != nullptr) gCurrent -= static_cast<int64_t>(malloc_usable_size(block));
}

}  // namespace

extern "C" {

void* malloc(size_t size) {
    return taken(__libc_malloc(size));
}

void* calloc(size_t count, size_t size) {
    return taken(__libc_calloc(count, size));
}

void* realloc(void* block, size_t size) {
    const int64_t before = block == nullptr ? 0 : static_cast<int64_t>(malloc_usable_size(block));
    void* const moved = __libc_realloc(block, size);
    if (moved == nullptr && size != 0) return moved;
    gCurrent -= before;
    return taken(moved);
}

void* memalign(size_t alignment, size_t size) {
    return taken(__libc_memalign(alignment, size));
}

void* aligned_alloc(size_t alignment, size_t size) {
    return taken(__libc_memalign(alignment, size));
}

int posix_memalign(void** block, size_t alignment, size_t size) {
    void* const made = taken(__libc_memalign(alignment, size));
    if (made == nullptr) return ENOMEM;
    *block = made;
    return 0;
}

void free(void* block) {
    givenBack(block);
    __libc_free(block);
}
}

namespace qxbench {

bool heapIsCounted() {
    return true;
}

void resetHeapPeak() {
    gCurrent = gPeak = gRequests = 0;
}

HeapUse heapUse() {
    return {gCurrent, gPeak, gRequests};
}

}  // namespace qxbench

#else

namespace qxbench {

bool heapIsCounted() {
    return false;
}
void resetHeapPeak() {}
HeapUse heapUse() {
    return {};
}

}  // namespace qxbench

#endif
