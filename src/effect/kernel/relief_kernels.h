#pragma once

#include <cstdint>

#include "effect/kernel/relief.h"

namespace QxFontEffect {

/// The inner loops of the relief passes, once per instruction set, behind one table. Rows come in blocks of
/// kReliefBlock.
constexpr int kReliefBlock = 32;

/// The light on a part of the field that is flat at height 0.
struct FlatLight {
    uint8_t shadow;
    uint8_t highlight;
};

struct ReliefKernels {
    const char* name;

    /// lightReliefRow over whole blocks. @param flat  what it gives for nothing but heights of 0.
    void (*light)(const float* above, const float* here, const float* below, int blocks, const ReliefLight& light,
                  const ReliefBand& band, FlatLight flat, uint8_t* shadow, uint8_t* highlight);

    /// Turns both maps of a row into premultiplied pixels, in whole blocks. Returns whether a pixel is not 0.
    bool (*color)(const uint8_t* shadow, const uint8_t* highlight, int blocks, const ReliefColors& colors,
                  uint32_t* dst);
};

/// What every processor runs.
const ReliefKernels& reliefKernelsPortable();
/// Null where the program was not built for AVX2 or the processor has none.
const ReliefKernels* reliefKernelsAvx2();
/// The fastest of them here.
const ReliefKernels& reliefKernels();

}  // namespace QxFontEffect
