#pragma once

#include <cstdint>

namespace qxrender {

/// Bytes that the machine could hand out now, limits of the process included.
int64_t availableMemory();

}  // namespace qxrender
