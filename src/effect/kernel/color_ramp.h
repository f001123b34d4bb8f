#pragma once

#include <cstdint>

namespace QxFontEffect {

/// Entries of a colour table: 0 at the first stop, 256 at the last.
constexpr int kRampEntries = 257;

/// Where the first segment of a table starts. Gradients start it at the first stop's position and hold that stop's
/// colour before it; glows never read that position and start it at 0.
enum class RampStart { AtFirstStop, AtZero };

/// How an entry's place along the table becomes a position along the stops.
enum class RampCurve { Linear, SquareRoot, Square };

/// Mixes two A, R, G, B colours, two byte lanes at a time: (c1 * f + c0 * (256 - f)) >> 8 in each channel.
/// @param f  0..256.
uint32_t mixColors(uint32_t c0, uint32_t c1, int f);

/// The colour at position `t` of the segment that starts at `start` with `c0` and is `span` long, ending in `c1`.
///
/// Truncates to 256 steps a segment. A span of 0 gives c1, and c0 where t lies on it; a NaN gives c0.
uint32_t segmentColor(float t, float start, float span, uint32_t c0, uint32_t c1);

/// `i` / 256 with the curve applied.
float rampPosition(int i, RampCurve curve);

/// Scales the colour channels by alpha: A stays, each channel becomes ((channel + 1) * A) >> 8.
uint32_t premultiplyColor(uint32_t color);

/// Fades the alpha of the entries from `range` * 256 on to nothing at the last one; the colour bytes stay.
/// @param range  1 and more counts as 0.99, 0 and less (and NaN) as 0.01.
void fadeRampAlpha(uint32_t* ramp, float range);

/// Fills `ramp[0..256]` with `color`.
void fillRamp(uint32_t color, uint32_t* ramp);

/// Builds a colour table out of stops, in the order given, unsorted.
///
/// Walks the entries and goes on by one stop at most per entry, so of stops that lie closer than 1/256 some are
/// passed late. Entries past the last stop repeat its colour.
///
/// @param stops  `count` records with the members `color` (A, R, G, B) and `position` (0..1); not null.
/// @param count  1 or more. One stop fills the whole table.
/// @param ramp   kRampEntries entries, written.
template <typename Stop>
void makeColorRamp(const Stop* stops, int count, RampStart start, RampCurve curve, uint32_t* ramp) {
    fillRamp(stops[0].color, ramp);
    if (count == 1) return;

    float from = start == RampStart::AtZero ? 0.0f : stops[0].position;
    float to = stops[1].position;
    float span = to - from;
    int next = 1;
    for (int i = 1; i < kRampEntries - 1; ++i) {
        const float t = rampPosition(i, curve);
        if (to < t && next + 1 < count) {
            ++next;
            from = to;
            to = stops[next].position;
            span = to - from;
        }
        ramp[i] = segmentColor(t, from, span, stops[next - 1].color, stops[next].color);
    }
    ramp[kRampEntries - 1] = stops[count - 1].color;
}

}  // namespace QxFontEffect
