#pragma once

#include <cstdint>

#include "effect/ParamPostProcessing.h"
#include "effect/QxGlowProperty.h"
#include "effect/core_record.h"
#include "effect/gradient_fill.h"

namespace QxFontEffect {

/// What the outer and the inner glow have in common, which is all but the side of the outline they lie on.

enum class GlowSide { Outer, Inner };

/// Draws a glow around the glyphs, or one that comes in from what lies around them. The inner glow is not confined to
/// the glyphs: its area ends in a frame of opaque white, which the layer composition covers.
void drawGlow(const ParamPostProcessing& p, const QxGlowProperty& property, GlowSide side);

/// Fills the 257 entries of a glow's colour table: the stops from 0 on, faded towards the end. A size of exactly 0
/// makes it all zero.
/// @param mode  1 spreads the stops by the square root, 2 by the square, any other value evenly.
void makeGlowRamp(const QxGlowProperty* property, uint32_t* lut, float range, int mode);

/// Grows a grey image in place, see `growByBoxPlane8`. Nothing changes when memory for two planes cannot be had.
void growGlow(uint8_t* buffer, int passes, int width, int height);

/// The margin of a glow, the same on every side; its faint rim reaches further.
int32_t glowMargin(const QxGlowProperty* property);

/// Gives a core a copy of `given`'s record with stops of its own in place of `slot`'s.
template <typename Record>
void replaceGlowRecord(Record*& slot, const Record& given) {
    replaceRecordWithStops(slot, given, given.size, given.color, given.opacity);
}

}  // namespace QxFontEffect
