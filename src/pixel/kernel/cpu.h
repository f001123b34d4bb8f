#pragma once

namespace QxFontEffect::kernel {

/// Whether code compiled with -mavx2 may run here.
inline bool cpuHasAvx2() {
#if defined(__x86_64__) || defined(__i386__)
    return __builtin_cpu_supports("avx2");
#else
    return false;
#endif
}

}  // namespace QxFontEffect::kernel
