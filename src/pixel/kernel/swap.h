#pragma once

#include <cstddef>
#include <cstdint>

namespace QxFontEffect::kernel {

/// Exchanges bytes 0 and 2 of `count` 4-byte pixels in place. A count below 1 does nothing.
void swapRedBlueRow(uint8_t* pixels, ptrdiff_t count);

}  // namespace QxFontEffect::kernel
