#pragma once

#include <cstdint>

namespace minikin {

/// Vertical fit of a family: compact families keep tall scripts within Latin line heights, elegant ones do not.
enum class FamilyVariant : uint8_t { DEFAULT = 0, COMPACT = 1, ELEGANT = 2 };

}  // namespace minikin
