#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <immintrin.h>
#endif

/// Vectors of the compiler's own kind, as wide as the file they are used in is compiled for: AVX2 where it is asked
/// for, else SSE2 or NEON. One text of a kernel is compiled once for each.
///
/// Everything has internal linkage, and kernels written with it use no function templates of the standard library: an
/// out-of-line copy of one, compiled for AVX2, could end up in a program that runs on a processor without it.
namespace QxFontEffect {
namespace {

#if defined(__AVX2__)
constexpr int kVectorBytes = 32;
#else
constexpr int kVectorBytes = 16;
#endif

using U8s = uint8_t __attribute__((vector_size(kVectorBytes)));
using U16s = uint16_t __attribute__((vector_size(kVectorBytes)));
using U32s = uint32_t __attribute__((vector_size(kVectorBytes)));
using I32s = int32_t __attribute__((vector_size(kVectorBytes)));
using U64s = uint64_t __attribute__((vector_size(kVectorBytes)));
using F32s = float __attribute__((vector_size(kVectorBytes)));

constexpr int kU16Lanes = kVectorBytes / 2;
constexpr int kFloatLanes = kVectorBytes / 4;

template <typename Vector>
inline Vector loadVector(const void* from) {
    Vector v;
    std::memcpy(&v, from, sizeof v);
    return v;
}

template <typename Vector>
inline void storeVector(void* to, Vector v) {
    std::memcpy(to, &v, sizeof v);
}

template <typename Vector>
inline Vector lesser(Vector a, Vector b) {
    return a < b ? a : b;
}

template <typename Vector>
inline Vector greater(Vector a, Vector b) {
    return a > b ? a : b;
}

/// a - b, or 0 where b is greater.
inline U8s lessened(U8s a, U8s b) {
#if defined(__AVX2__)
    return (U8s)_mm256_subs_epu8((__m256i)a, (__m256i)b);
#elif defined(__SSE2__)
    return (U8s)_mm_subs_epu8((__m128i)a, (__m128i)b);
#else
    return greater(a, b) - b;
#endif
}

inline bool allBitsSet(U8s v) {
#if defined(__AVX2__)
    return _mm256_testc_si256((__m256i)v, _mm256_set1_epi8(-1)) != 0;
#elif defined(__SSE2__)
    return _mm_movemask_epi8(_mm_cmpeq_epi8((__m128i)v, _mm_set1_epi8(-1))) == 0xFFFF;
#else
    const U64s words = reinterpret_cast<U64s>(v);
    return (words[0] & words[1]) == ~uint64_t{0};
#endif
}

inline bool noBitsSet(U8s v) {
#if defined(__AVX2__)
    return _mm256_testz_si256((__m256i)v, (__m256i)v) != 0;
#elif defined(__SSE2__)
    return _mm_movemask_epi8(_mm_cmpeq_epi8((__m128i)v, _mm_setzero_si128())) == 0xFFFF;
#else
    const U64s words = reinterpret_cast<U64s>(v);
    return (words[0] | words[1]) == 0;
#endif
}

}  // namespace
}  // namespace QxFontEffect
