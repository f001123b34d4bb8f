#include "effect/kernel/shade.h"

namespace QxFontEffect {

void complementWhereInked(const uint8_t* coverage, const uint8_t* blurred, int count, uint8_t* shadow) {
    for (int x = 0; x < count; ++x) {
        const uint8_t complement = static_cast<uint8_t>(255 - blurred[x]);
        shadow[x] = coverage[x] == 0 ? uint8_t{0} : complement;
    }
}

}  // namespace QxFontEffect
