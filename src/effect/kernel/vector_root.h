#pragma once

#include "effect/kernel/vectors.h"

namespace QxFontEffect {
namespace {

/// fsqrt of sqrt_table.h in every lane, for numbers that are not negative: the same operations in the same order.
inline F32s fastRoot(F32s x) {
    const F32s r = reinterpret_cast<F32s>(0x5F3759DFu - (reinterpret_cast<U32s>(x) >> 1));
    return x * (r * (1.5f - 0.5f * x * r * r));
}

}  // namespace
}  // namespace QxFontEffect
