#include "effect/kernel/color_ramp.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace QxFontEffect {
namespace {

struct Stop {
    uint32_t color;
    float position;
};

using Table = std::vector<uint32_t>;

Table ramp(const std::vector<Stop>& stops) {
    Table table(kRampEntries, 0xDEADBEEFu);
    makeColorRamp(stops.data(), static_cast<int>(stops.size()), RampStart::AtFirstStop, RampCurve::Linear,
                  table.data());
    return table;
}

TEST(ColorRamp, OddPositionsStayInsideTheStops) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const struct {
        std::vector<Stop> stops;
        int entry;
        uint32_t wanted;
    } rows[] = {
        {{{7, 0.3f}}, 200, 7},                       // one stop fills the table
        {{{1, 0}, {9, 0.25f}}, 65, 9},               // past the last stop
        {{{1, 0}, {9, 0.25f}}, 255, 9},              //
        {{{1, 0}, {5, 0.5f}, {9, 0.5f}}, 200, 9},    // the last two in one place
        {{{1, 0.5f}, {9, 0.5f}}, 128, 1},            // no length, on it
        {{{1, 0.5f}, {9, 0.5f}}, 129, 9},            // no length, behind it
        {{{1, 0}, {5, 0.75f}, {9, 0.25f}}, 255, 5},  // falling: the segment runs backwards
        {{{1, 0}, {9, nan}}, 255, 1},                // never reached
        {{{1, nan}, {9, 1}}, 255, 1},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ramp(row.stops)[static_cast<size_t>(row.entry)], row.wanted)
            << row.stops.size() << " stops, entry " << row.entry;
}

TEST(ColorRamp, FadeTakesAlphaToNothing) {
    const struct {
        float range;
        int first;
    } rows[] = {{0.3f, 76}, {1, 253}, {5, 253}, {0, 2}, {-1, 2}, {0.999999f, 255}, {std::nanf(""), 2}};
    for (const auto& row : rows) {
        Table table(kRampEntries, 0xC8123456u);
        fadeRampAlpha(table.data(), row.range);
        for (int i = 0; i < kRampEntries; ++i) {
            const int factor = i < row.first ? 256 : (256 - i) * 256 / (256 - row.first);
            const uint32_t alpha = static_cast<uint32_t>(0xC8 * factor >> 8);
            EXPECT_EQ(table[static_cast<size_t>(i)], alpha << 24 | 0x123456u) << row.range << " " << i;
        }
    }
}

}  // namespace
}  // namespace QxFontEffect
