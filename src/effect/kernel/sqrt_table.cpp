#include "effect/kernel/sqrt_table.h"

#include <cmath>
#include <cstring>
#include <utility>

namespace QxFontEffect {
namespace {

// Roots in thousandths are roots of a million times the number, so integers decide the rounding: the nearest is
// floor + 1 when the number lies above (floor + 1/2)^2 = floor^2 + floor + 1/4.
constexpr int64_t kThousandthsSquared = 1000000;

constexpr int64_t nearestRoot(int64_t number, int64_t floorRoot) {
    return number - floorRoot * floorRoot > floorRoot ? floorRoot + 1 : floorRoot;
}

// The quotient is within half a double's last digit of the decimal number, and no three-decimal number of this size
// comes as near to the middle between two floats: rounding twice is rounding once.
constexpr float fromThousandths(int64_t thousandths) {
    return static_cast<float>(static_cast<double>(thousandths) / 1000.0);
}

struct Roots {
    float entries[QX_INT_SQRT_TABLE_SIZE];
};

constexpr Roots makeRoots() {
    Roots roots{};
    int64_t floorRoot = 0;
    for (int i = 0; i < QX_INT_SQRT_TABLE_SIZE; ++i) {
        const int64_t number = i * kThousandthsSquared;
        while ((floorRoot + 1) * (floorRoot + 1) <= number) ++floorRoot;
        roots.entries[i] = fromThousandths(nearestRoot(number, floorRoot));
    }
    return roots;
}

constexpr Roots kRoots = makeRoots();

}  // namespace

const float (&QX_INT_SQRT_TABLE)[QX_INT_SQRT_TABLE_SIZE] = kRoots.entries;

float roundedIntSqrt(int32_t squared) {
    if (squared < 0) return 0.0f;
    if (squared < QX_INT_SQRT_TABLE_SIZE) return kRoots.entries[squared];
    // Below 2^53, so the double is exact and its root is off by less than one.
    const int64_t number = squared * kThousandthsSquared;
    int64_t floorRoot = static_cast<int64_t>(std::sqrt(static_cast<double>(number)));
    while (floorRoot * floorRoot > number) --floorRoot;
    while ((floorRoot + 1) * (floorRoot + 1) <= number) ++floorRoot;
    return fromThousandths(nearestRoot(number, floorRoot));
}

float fsqrt(float x) {
    int32_t bits;
    std::memcpy(&bits, &x, sizeof bits);
    // The shift carries the sign on, as GCC and Clang define it for signed types; the difference may leave 31 bits
    // for a negative x and is taken unsigned.
    const uint32_t guess = 0x5F3759DFu - static_cast<uint32_t>(bits >> 1);
    float r;
    std::memcpy(&r, &guess, sizeof r);
    return x * (r * (1.5f - 0.5f * x * r * r));
}

}  // namespace QxFontEffect
