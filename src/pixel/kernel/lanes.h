#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <immintrin.h>
#endif

/// Several pixels at a time, written with the compiler's vector extensions: the same text is SSE2 code on plain
/// x86-64, AVX2 code where a file is compiled for it, and NEON code on arm64. Shuffles need GCC 12 or Clang.
///
/// Everything is in an unnamed namespace, and nothing of the standard library that could leave an out-of-line copy
/// is used: a file compiled for AVX2 must not lend its code to a program on a processor without it.
namespace QxFontEffect::kernel {
namespace {

#if defined(__AVX2__)
constexpr int kVectorBytes = 32;
#else
constexpr int kVectorBytes = 16;
#endif

/// The processors we run on keep the first byte of a pixel in the low bits of a word.
static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "lanes are split by shifts");

using Words = uint32_t __attribute__((vector_size(kVectorBytes)));   // a pixel a lane
using Halves = uint16_t __attribute__((vector_size(kVectorBytes)));  // two channels of a pixel, one a lane
using Shorts = int16_t __attribute__((vector_size(kVectorBytes)));
using Bytes = uint8_t __attribute__((vector_size(kVectorBytes)));
using Signed = int32_t __attribute__((vector_size(kVectorBytes)));
using Floats = float __attribute__((vector_size(kVectorBytes)));

constexpr int kVectorPixels = kVectorBytes / 4;

/// Pixels that a row is walked in; a multiple of both vector widths.
constexpr ptrdiff_t kBlock = 16;

inline Words load(const uint8_t* p) {
    Words words;
    std::memcpy(&words, p, sizeof words);
    return words;
}
inline void store(uint8_t* p, Words words) {
    std::memcpy(p, &words, sizeof words);
}

inline Words words(Halves h) {
    return reinterpret_cast<Words>(h);
}
inline Halves halves(Words w) {
    return reinterpret_cast<Halves>(w);
}

/// All bits of a lane where it is 0.
inline Halves isZero(Halves h) {
    return reinterpret_cast<Halves>(h == 0);
}

/// All bits of a lane where it is above 255; for lanes below 32768.
inline Halves isAbove255(Halves h) {
    return reinterpret_cast<Halves>(reinterpret_cast<Shorts>(h) > 255);
}

/// The four channels of pixels, two vectors of 16-bit lanes: first and third byte, second and fourth.
struct Channels {
    Halves even;
    Halves odd;
};

inline Channels split(Words pixels) {
    return {halves(pixels) & 255, halves(pixels) >> 8};
}
inline Channels operator+(Channels c, Halves h) {
    return {c.even + h, c.odd + h};
}
inline Channels operator+(Channels c, uint16_t value) {
    return {c.even + value, c.odd + value};
}
inline Channels operator+(Channels u, Channels v) {
    return {u.even + v.even, u.odd + v.odd};
}
inline Channels operator*(Channels c, Halves h) {
    return {c.even * h, c.odd * h};
}
inline Channels operator>>(Channels c, int bits) {
    return {c.even >> bits, c.odd >> bits};
}

/// Pixels from lanes of 0..255.
inline Words join(Channels c) {
    return words(c.even | c.odd << 8);
}
/// Pixels from the high bytes of the lanes: join(c >> 8).
inline Words joinHigh(Channels c) {
    return words(c.even >> 8 | (c.odd & 0xFF00));
}

/// (lane * factor) >> 8 where the product fits a lane. Factors stand in the high bytes, `high` is 256 times as much:
/// then the result is the high half of the product.
inline Halves scaled(Halves lanes, Halves high) {
#if defined(__AVX2__)
    return reinterpret_cast<Halves>(
        _mm256_mulhi_epu16(reinterpret_cast<__m256i>(lanes), reinterpret_cast<__m256i>(high)));
#elif defined(__SSE2__)
    return reinterpret_cast<Halves>(_mm_mulhi_epu16(reinterpret_cast<__m128i>(lanes), reinterpret_cast<__m128i>(high)));
#else
    return lanes * (high >> 8) >> 8;
#endif
}
inline Channels scaled(Channels c, Halves high) {
    return {scaled(c.even, high), scaled(c.odd, high)};
}

/// Adds bytes; sums that pass 255 stay there.
inline Words addLimited(Words u, Words v) {
#if defined(__AVX2__)
    return reinterpret_cast<Words>(_mm256_adds_epu8(reinterpret_cast<__m256i>(u), reinterpret_cast<__m256i>(v)));
#elif defined(__SSE2__)
    return reinterpret_cast<Words>(_mm_adds_epu8(reinterpret_cast<__m128i>(u), reinterpret_cast<__m128i>(v)));
#else
    const Bytes a = reinterpret_cast<Bytes>(u), b = reinterpret_cast<Bytes>(v), room = ~b;
    return reinterpret_cast<Words>((a < room ? a : room) + b);
#endif
}

#if defined(__AVX2__)
#define QX_IN_EACH_PIXEL(first, second)                                                                              \
    (first), (second), 2 + (first), 2 + (second), 4 + (first), 4 + (second), 6 + (first), 6 + (second), 8 + (first), \
        8 + (second), 10 + (first), 10 + (second), 12 + (first), 12 + (second), 14 + (first), 14 + (second)
#else
#define QX_IN_EACH_PIXEL(first, second) \
    (first), (second), 2 + (first), 2 + (second), 4 + (first), 4 + (second), 6 + (first), 6 + (second)
#endif

/// The fourth channel of each pixel in both of its lanes.
inline Halves alphaOf(Channels c) {
    return __builtin_shufflevector(c.odd, c.odd, QX_IN_EACH_PIXEL(1, 1));
}

/// The same in the high bytes of its lanes.
inline Halves highAlphaOf(Words pixels) {
#if defined(__AVX2__)
    const __m256i places = _mm256_setr_epi8(-1, 3, -1, 3, -1, 7, -1, 7, -1, 11, -1, 11, -1, 15, -1, 15,  //
                                            -1, 3, -1, 3, -1, 7, -1, 7, -1, 11, -1, 11, -1, 15, -1, 15);
    return reinterpret_cast<Halves>(_mm256_shuffle_epi8(reinterpret_cast<__m256i>(pixels), places));
#else
    const Words alpha = pixels & 0xFF000000u;
    return halves(alpha | alpha >> 16);
#endif
}

/// Exchanges the first and the third channel of each pixel.
inline Channels swapRedBlue(Channels c) {
    return {__builtin_shufflevector(c.even, c.even, QX_IN_EACH_PIXEL(1, 0)), c.odd};
}
inline Words swapRedBlue(Words w) {
#if defined(__AVX2__)
    // One shuffle of bytes, which the compiler makes more of.
    const __m256i places = _mm256_setr_epi8(2, 1, 0, 3, 6, 5, 4, 7, 10, 9, 8, 11, 14, 13, 12, 15,  //
                                            2, 1, 0, 3, 6, 5, 4, 7, 10, 9, 8, 11, 14, 13, 12, 15);
    return reinterpret_cast<Words>(_mm256_shuffle_epi8(reinterpret_cast<__m256i>(w), places));
#else
    const Halves even = halves(w & 0xFF00FFu);
    return (w & 0xFF00FF00u) | words(__builtin_shufflevector(even, even, QX_IN_EACH_PIXEL(1, 0)));
#endif
}

#undef QX_IN_EACH_PIXEL

/// The same value in both lanes of every pixel.
inline Halves everywhere(uint32_t value) {
    return Halves{} + static_cast<uint16_t>(value);
}

inline uint64_t quad(const uint8_t* p) {
    uint64_t value;
    std::memcpy(&value, p, sizeof value);
    return value;
}

/// Whether none of the bits of `mask` is set in `words`.
inline bool noneSet(Words words, Words mask) {
#if defined(__AVX2__)
    using Quads = long long __attribute__((vector_size(kVectorBytes)));
    return __builtin_ia32_ptestz256(reinterpret_cast<Quads>(words), reinterpret_cast<Quads>(mask)) != 0;
#else
    using Quads = uint64_t __attribute__((vector_size(kVectorBytes)));
    const Quads set = reinterpret_cast<Quads>(words & mask);
    return (set[0] | set[1]) == 0;
#endif
}

inline bool masksAllZero(const uint8_t* block) {
    return (quad(block) | quad(block + 8)) == 0;
}
inline bool masksAllFull(const uint8_t* block) {
    return (quad(block) & quad(block + 8)) == UINT64_MAX;
}
inline bool pixelsAllZero(const uint8_t* block) {
    Words any = load(block);
    for (int i = kVectorBytes; i < 4 * kBlock; i += kVectorBytes) any |= load(block + i);
    return noneSet(any, ~Words{});
}
inline bool pixelsAllOpaque(const uint8_t* block) {
    Words all = load(block);
    for (int i = kVectorBytes; i < 4 * kBlock; i += kVectorBytes) all &= load(block + i);
    return noneSet(~all, Words{} + 0xFF000000u);
}

/// The byte of its lane that a spread mask stands in.
enum class MaskByte { Low, High };

#if defined(__AVX2__)
/// Spreads eight mask bytes so that each stands in both lanes of its pixel.
template <MaskByte kByte>
inline Halves spreadEight(const uint8_t* mask) {
    const __m256i low = _mm256_setr_epi8(0, -1, 0, -1, 1, -1, 1, -1, 2, -1, 2, -1, 3, -1, 3, -1,  //
                                         4, -1, 4, -1, 5, -1, 5, -1, 6, -1, 6, -1, 7, -1, 7, -1);
    const __m256i high = _mm256_setr_epi8(-1, 0, -1, 0, -1, 1, -1, 1, -1, 2, -1, 2, -1, 3, -1, 3,  //
                                          -1, 4, -1, 4, -1, 5, -1, 5, -1, 6, -1, 6, -1, 7, -1, 7);
    const __m256i eight = _mm256_set1_epi64x(static_cast<long long>(quad(mask)));
    return reinterpret_cast<Halves>(_mm256_shuffle_epi8(eight, kByte == MaskByte::Low ? low : high));
}
#endif

/// Spreads `kBlock` mask bytes so that each stands in both lanes of its pixel.
template <MaskByte kByte>
inline void spreadMask(const uint8_t* mask, Halves* spread) {
#if defined(__AVX2__)
    spread[0] = spreadEight<kByte>(mask);
    spread[1] = spreadEight<kByte>(mask + 8);
#else
    const Bytes m = reinterpret_cast<Bytes>(load(mask)), none = {};
    const Bytes a = kByte == MaskByte::Low ? m : none, b = kByte == MaskByte::Low ? none : m;
    const Halves low =
        reinterpret_cast<Halves>(__builtin_shufflevector(a, b, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23));
    const Halves high = reinterpret_cast<Halves>(
        __builtin_shufflevector(a, b, 8, 24, 9, 25, 10, 26, 11, 27, 12, 28, 13, 29, 14, 30, 15, 31));
    spread[0] = __builtin_shufflevector(low, low, 0, 0, 1, 1, 2, 2, 3, 3);
    spread[1] = __builtin_shufflevector(low, low, 4, 4, 5, 5, 6, 6, 7, 7);
    spread[2] = __builtin_shufflevector(high, high, 0, 0, 1, 1, 2, 2, 3, 3);
    spread[3] = __builtin_shufflevector(high, high, 4, 4, 5, 5, 6, 6, 7, 7);
#endif
}

}  // namespace
}  // namespace QxFontEffect::kernel
