#include "coverage_gamma.h"

#include <array>
#include <cmath>

namespace portable {
namespace {

// Asked for is 1.4; it is kept in 64ths.
constexpr double kGamma = 89.0 / 64.0;

std::array<uint8_t, 256> makeTable() {
    std::array<uint8_t, 256> table{};
    for (size_t c = 0; c < table.size(); ++c) {
        const double ground = std::pow(1 - static_cast<double>(c) / 255, 1 / kGamma);
        table[c] = static_cast<uint8_t>(std::lround(255 * (1 - ground)));
    }
    return table;
}

}  // namespace

const uint8_t* blackCoverageGamma() {
    static const std::array<uint8_t, 256> table = makeTable();
    return table.data();
}

}  // namespace portable
