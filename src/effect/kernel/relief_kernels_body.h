// The loops of relief_kernels.h, included once per instruction set.

#include "effect/kernel/relief_kernels.h"
#include "effect/kernel/vector_root.h"
#include "effect/kernel/vectors.h"

namespace QxFontEffect {
namespace {

constexpr int kBlockVectors = kReliefBlock / kFloatLanes;
constexpr float kPerByte = 1.0f / 256.0f;  // exact: a shift by 8 of what a float holds exactly

inline F32s same(float value) {
    return F32s{} + value;
}

inline F32s truncated(F32s v) {
    return __builtin_convertvector(__builtin_convertvector(v, I32s), F32s);
}

/// 0..255; a NaN gives 0.
inline F32s byteRange(F32s v) {
    return lesser(v > F32s{} ? v : F32s{}, same(255.0f));
}

inline F32s strengthOf(F32s height, const ReliefBand& band) {
    const F32s fromTop = band.top - height;
    const F32s inBand = band.bothEnds ? lesser(height, fromTop) : fromTop;
    return truncated(byteRange(inBand * band.gain));
}

inline F32s shadeOf(F32s gx, F32s gy, const ReliefLight& light) {
    const F32s length = fastRoot(light.h * light.h + gx * gx + gy * gy);
    return byteRange((light.h * light.lz - light.lx * gx - light.ly * gy) / length * 255.0f);
}

/// ((alpha * shade >> 8) + 1) * strength >> 8. Products stay below 2^24 and are exact.
inline I32s applied(float alpha, F32s shade, F32s strength) {
    const F32s factor = truncated(alpha * shade * kPerByte) + 1.0f;
    return __builtin_convertvector(factor * strength * kPerByte, I32s);
}

struct LitBlock {
    int32_t shadow[kReliefBlock];
    int32_t highlight[kReliefBlock];
};

inline void lightBlock(const float* above, const float* here, const float* below, const ReliefLight& light,
                       const ReliefBand& band, LitBlock& lit) {
    const float shadowAlpha = static_cast<float>(light.shadowAlpha);
    const float highlightAlpha = static_cast<float>(light.highlightAlpha);
    for (int i = 0; i < kReliefBlock; i += kFloatLanes) {
        const F32s gx = (loadVector<F32s>(here + i - 1) - loadVector<F32s>(here + i + 1)) * 0.5f;
        const F32s gy = (loadVector<F32s>(above + i) - loadVector<F32s>(below + i)) * 0.5f;
        const F32s strength = strengthOf(loadVector<F32s>(here + i), band);
        const F32s shade = shadeOf(gx, gy, light);
        const F32s whole = truncated(shade);
        // Adding 1 before the truncation can carry the last fraction up.
        const F32s shaded = band.rising ? truncated(shade + 1.0f) : 255.0f - whole;
        const F32s highlit = band.rising ? 256.0f - whole : whole + 1.0f;
        storeVector(lit.shadow + i, applied(shadowAlpha, shaded, strength));
        storeVector(lit.highlight + i, applied(highlightAlpha, highlit, strength));
    }
}

inline bool allBelowOne(const float* here, const ReliefBand& band) {
    F32s most = strengthOf(loadVector<F32s>(here), band);
    for (int i = kFloatLanes; i < kReliefBlock; i += kFloatLanes)
        most = greater(most, strengthOf(loadVector<F32s>(here + i), band));
    return noBitsSet(reinterpret_cast<U8s>(most));
}

/// Whether the block and what borders on it is at height 0, which is all bits clear.
inline bool isFlat(const float* above, const float* here, const float* below) {
    U32s any = loadVector<U32s>(here - 1) | loadVector<U32s>(here + kReliefBlock + 1 - kFloatLanes);
    for (int i = 0; i < kReliefBlock; i += kFloatLanes)
        any |= loadVector<U32s>(above + i) | loadVector<U32s>(below + i) | loadVector<U32s>(here + i);
    return noBitsSet(reinterpret_cast<U8s>(any));
}

inline void fillBytes(uint8_t value, uint8_t* to) {
    std::memset(to, value, kReliefBlock);
}

void light(const float* above, const float* here, const float* below, int blocks, const ReliefLight& source,
           const ReliefBand& band, FlatLight flat, uint8_t* shadow, uint8_t* highlight) {
    for (int block = 0; block < blocks; ++block) {
        if (allBelowOne(here, band)) {
            fillBytes(0, shadow);
            fillBytes(0, highlight);
        } else if (isFlat(above, here, below)) {
            fillBytes(flat.shadow, shadow);
            fillBytes(flat.highlight, highlight);
        } else {
            LitBlock lit;
            lightBlock(above, here, below, source, band, lit);
            for (int i = 0; i < kReliefBlock; ++i) shadow[i] = static_cast<uint8_t>(lit.shadow[i]);
            for (int i = 0; i < kReliefBlock; ++i) highlight[i] = static_cast<uint8_t>(lit.highlight[i]);
        }
        above += kReliefBlock;
        here += kReliefBlock;
        below += kReliefBlock;
        shadow += kReliefBlock;
        highlight += kReliefBlock;
    }
}

inline bool isBlank(const uint8_t* shadow, const uint8_t* highlight) {
    U8s any = loadVector<U8s>(shadow) | loadVector<U8s>(highlight);
    for (int i = kVectorBytes; i < kReliefBlock; i += kVectorBytes)
        any |= loadVector<U8s>(shadow + i) | loadVector<U8s>(highlight + i);
    return noBitsSet(any);
}

using ByteLanes = uint8_t __attribute__((vector_size(kFloatLanes)));

inline I32s gained(const uint8_t* map, float gain) {
    const I32s values = __builtin_convertvector(loadVector<ByteLanes>(map), I32s);
    return __builtin_convertvector(gain * __builtin_convertvector(values, F32s), I32s);
}

/// (channel + 1) * strength, in 16 bits: the upper half of each lane is 0.
inline U32s scaled(U32s channel, U32s strength) {
    return reinterpret_cast<U32s>(reinterpret_cast<U16s>(channel + 1) * reinterpret_cast<U16s>(strength));
}

bool color(const uint8_t* shadow, const uint8_t* highlight, int blocks, const ReliefColors& colors, uint32_t* dst) {
    bool any = false;
    for (int block = 0; block < blocks; ++block) {
        if (isBlank(shadow, highlight)) {
            std::memset(dst, 0, kReliefBlock * sizeof *dst);
        } else {
            any = true;
            for (int i = 0; i < kReliefBlock; i += kFloatLanes) {
                const I32s difference = gained(highlight + i, colors.gain) - gained(shadow + i, colors.gain);
                const I32s size = difference < 0 ? -difference : difference;
                const U32s strength = reinterpret_cast<U32s>(size > 255 ? I32s{} + 255 : size);
                const U32s tint = difference > 0 ? U32s{} + colors.highlight : U32s{} + colors.shadow;
                const U32s red = scaled(tint >> 16 & 255, strength), green = scaled(tint >> 8 & 255, strength);
                const U32s blue = scaled(tint & 255, strength);
                storeVector(dst + i, strength << 24 | (red & 0xFF00u) << 8 | (green & 0xFF00u) | blue >> 8);
            }
        }
        shadow += kReliefBlock;
        highlight += kReliefBlock;
        dst += kReliefBlock;
    }
    return any;
}

constexpr ReliefKernels kernelsNamed(const char* name) {
    return {name, light, color};
}

}  // namespace
}  // namespace QxFontEffect
