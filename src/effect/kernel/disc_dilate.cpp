#include "effect/kernel/disc_dilate.h"

#include <cmath>

namespace QxFontEffect {
namespace {

// Half the largest side that an int holds.
constexpr float kMaxReach = 1073741823.0f;

uint8_t cellOf(float cover) {
    const float limited = cover < 0.0f ? 0.0f : cover > 1.0f ? 1.0f : cover;
    const float value = limited * 255.0f + 0.5f;
    return value > 255.0f ? uint8_t{255} : static_cast<uint8_t>(value);
}

}  // namespace

int discReach(float radius) {
    const float rounded = radius + 0.5f;
    if (!(rounded > -1.0f) || !(rounded < kMaxReach)) return -1;
    return static_cast<int>(rounded);
}

void discRow(float radius, int reach, int row, uint8_t* cells) {
    for (int64_t column = -reach; column <= reach; ++column) {
        const float distance = std::sqrt(static_cast<float>(int64_t{row} * row + column * column));
        cells[column + reach] = cellOf(radius - distance + 1.0f);
    }
    if (row == 0) cells[reach] = cellOf(radius);
}

}  // namespace QxFontEffect
