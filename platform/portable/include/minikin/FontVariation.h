#pragma once

#include <cstdint>

namespace minikin {

/// Four letters of an OpenType axis, most significant byte first.
using AxisTag = uint32_t;

/// Position on one axis of a variable font.
struct FontVariation {
    FontVariation(AxisTag tag, float position) : axisTag(tag), value(position) {}
    AxisTag axisTag;
    float value;
};

}  // namespace minikin
