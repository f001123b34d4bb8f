#include "effect/kernel/shade.h"

namespace QxFontEffect {

void complementWhereInked(const uint8_t* coverage, int count, uint8_t* row) {
    for (int x = 0; x < count; ++x) {
        const uint8_t shadow = static_cast<uint8_t>(255 - row[x]);
        row[x] = coverage[x] == 0 ? uint8_t{0} : shadow;
    }
}

}  // namespace QxFontEffect
