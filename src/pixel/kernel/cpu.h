#pragma once

#include <cstdlib>

namespace QxFontEffect::kernel {

/// Whether code compiled with -mavx2 may run here. Asked once a process.
///
/// The environment variable QX_PORTABLE_KERNELS switches such code off, so that both forms of every kernel can be
/// tested on one machine. It changes no pixel.
inline bool cpuHasAvx2() {
#if defined(__x86_64__) || defined(__i386__)
    // Read under the static's own lock; the library sets no variable itself.
    // NOLINTNEXTLINE(concurrency-mt-unsafe)
    static const bool has = std::getenv("QX_PORTABLE_KERNELS") == nullptr && __builtin_cpu_supports("avx2");
    return has;
#else
    return false;
#endif
}

}  // namespace QxFontEffect::kernel
