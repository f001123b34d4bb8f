#pragma once

#include <cstdint>
#include <vector>

#include "effect/QxECoreBase.h"
#include "effect/QxTextProperty.h"
#include "pixel/QxBitmap.h"
#include "scene/masks.h"

namespace qxbench {

/// What an effect finds in the picture it draws into.
enum class Ground {
    Blank,  ///< effects inside the glyphs run first
    Text,   ///< effects around the glyphs go beneath the filled text
};

/// Pixels around a mask.
struct Margins {
    int left, top, right, bottom;
};

Margins marginsOf(QxFontEffect::QxECoreBase& core);

/// What one effect is run on: a mask in the middle of a picture with room for the effect, as the stack lays it out. The
/// text rectangle is the whole mask.
struct CoreScene {
    CoreScene(const Mask& mask, const Margins& margins, Ground ground);

    QxFontEffect::ParamPostProcessing params() { return {&output, &coverage, &rect, 0, nullptr}; }

    /// The picture as it was before the first effect.
    void reset();

    /// The mask as it lies in the coverage.
    QxFontEffect::ConstPlane8 ink() const;

    std::vector<float> result() const;

    QxFontEffect::QxBitmap coverage;
    QxFontEffect::QxBitmap output;
    QxFontEffect::QxRect rect;

private:
    std::vector<uint8_t> mBefore;
};

/// Bytes of a picture as numbers to compare.
std::vector<float> numbersOf(const uint8_t* bytes, size_t count);

}  // namespace qxbench
