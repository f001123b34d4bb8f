// Compiled with -mavx2 where the compiler knows it, see CMakeLists.txt. Nothing but constants may leave this file:
// it is linked into programs that run on processors without AVX2.
#include "pixel/kernel/rows.h"

#if defined(__AVX2__)
#include "pixel/kernel/rows_lanes.h"
#endif

namespace QxFontEffect::kernel {

#if defined(__AVX2__)
namespace {
constexpr PixelRows kRows = rowsNamed("avx2");
}
const PixelRows* const kAvx2Rows = &kRows;
#else
const PixelRows* const kAvx2Rows = nullptr;
#endif

}  // namespace QxFontEffect::kernel
