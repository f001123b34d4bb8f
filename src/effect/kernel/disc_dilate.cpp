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

uint8_t discCell(float radius, int64_t row, int64_t column) {
    if (row == 0 && column == 0) return cellOf(radius);
    return cellOf(radius - std::sqrt(static_cast<float>(row * row + column * column)) + 1.0f);
}

}  // namespace QxFontEffect
