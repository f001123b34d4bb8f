#pragma once

#include <cstdint>

#include "base/Scratch.h"
#include "effect/QxReliefProperty.h"
#include "effect/kernel/distance.h"
#include "effect/kernel/gauss_weights.h"
#include "effect/kernel/relief.h"
#include "pixel/QxRect.h"
#include "pixel/plane.h"

namespace QxFontEffect {

/// What the bevel and the emboss share: the light, the two maps with their blurs, and the size of the area they work
/// on.

/// Pixels of a working area above which a relief is not drawn. Far beyond any picture; it keeps an absurd size from
/// taking all of the machine's memory before it fails.
constexpr int64_t kMaxReliefPixels = int64_t{1} << 28;

/// What a smooth relief's maps are multiplied by: blurring thins them out.
constexpr float kSmoothGain = 1.83f;

/// Whether every setting that enters the geometry or the light is a finite number.
bool hasFiniteSettings(const QxReliefProperty& property);

/// The light of a record. Angle 0 is the right and 90 the top. Direction 0 has the light there, so that the shape looks
/// raised; any other direction has it opposite, so that the shape looks sunken.
ReliefLight reliefLight(const QxReliefProperty& property);

/// A rectangle of destination pixels that a relief is worked out on.
struct ReliefArea {
    int32_t x, y;
    int32_t width, height;
};

/// The text rectangle grown by `margin` on every side. False where it is inverted, lies beyond any bitmap or is larger
/// than kMaxReliefPixels.
bool reliefArea(const QxRect& rect, int64_t margin, ReliefArea& area);

/// The part of the coverage within `rect`, as it lies on the area; empty where they do not meet.
PlacedInk inkOn(const ReliefArea& area, ConstPlane8 coverage, const QxRect& rect);

/// Shadow and highlight map of one working area.
class ReliefMaps {
public:
    ReliefMaps(int width, int height);

    explicit operator bool() const { return mShadow && mHighlight && mSpare; }

    /// Lights the height field but for its outermost columns and rows, which stay 0.
    void light(ConstPlaneF heights, const ReliefLight& light, const ReliefBand& band);

    /// Blurs both maps with the soft bell. A frame of `frame` pixels becomes 0 and is not seen by the second pass.
    /// False when memory for it cannot be had.
    bool blur(int radius, int frame);

    const uint8_t* shadowRow(int y) const { return mShadow.data() + ptrdiff_t{y} * mWidth; }
    const uint8_t* highlightRow(int y) const { return mHighlight.data() + ptrdiff_t{y} * mWidth; }

private:
    void blurMap(Scratch<uint8_t>& map, const GaussBell& bell, int frame, uint8_t* scratch);

    int mWidth, mHeight;
    Scratch<uint8_t> mShadow, mHighlight, mSpare;
};

}  // namespace QxFontEffect
