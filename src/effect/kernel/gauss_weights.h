#pragma once

#include <cstdint>

namespace QxFontEffect {

/// Centre weights of the two bells in use: shadows, bevel and emboss blur with the first, glows with the second.
constexpr int kSoftPeak = 100;
constexpr int kGlowPeak = 128;

/// Radii above this are not drawn: the square of a tap's distance no longer fits 32 bits there, and a picture padded
/// by the radius would not fit any memory.
constexpr int kMaxGaussRadius = 46340;

/// Weight of the tap `distance` pixels from the centre of a bell of `radius`: `peak` in the middle, 1 at the radius.
///
/// (int)(exp(-d^2 / (r^2 / ln 100)) * peak + 0.5), all single precision but for the last sum.
///
/// @param radius    0..kMaxGaussRadius, pixels.
/// @param peak      kSoftPeak or kGlowPeak.
/// @param distance  0..radius.
int gaussWeight(int radius, int peak, int distance);

/// An integer bell, stored as the boxes it is a sum of.
///
/// The weights fall from `peak` to 1 in whole steps, so any bell is at most `peak` boxes on one another: the weight at
/// distance d is the sum of `height` over the boxes whose `reach` is at least d. This is complete, needs no memory
/// that grows with the radius, and tells what changes when the bell moves by one pixel: the box ends.
struct GaussBell {
    struct Box {
        int32_t reach;   ///< half width in pixels, covers -reach..reach
        int32_t height;  ///< above 0
    };

    int32_t radius;        ///< pixels, 0 for the single tap
    int32_t peak;          ///< weight of the centre
    int32_t sum;           ///< of all 2 * radius + 1 weights; at most 5e6
    int32_t boxCount;      ///< 1..peak
    Box boxes[kGlowPeak];  ///< from the narrowest to the widest; the heights add up to `peak`
};

/// The bell of `radius` 0..kMaxGaussRadius with `peak` kSoftPeak or kGlowPeak.
GaussBell makeGaussBell(int radius, int peak);

}  // namespace QxFontEffect
