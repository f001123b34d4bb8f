#include "effect/kernel/pinned_math.h"

#include <cstdint>
#include <cstring>
#include <limits>

namespace QxFontEffect {
namespace {

uint32_t bitsOf(float value) {
    uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

float floatOf(uint32_t bits) {
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

/// 2^exponent for -1022..1023.
double powerOfTwo(int exponent) {
    const uint64_t bits = static_cast<uint64_t>(exponent + 1023) << 52;
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

constexpr float kNotANumber = std::numeric_limits<float>::quiet_NaN();

bool isFinite(float x) {
    return (bitsOf(x) & 0x7F800000u) != 0x7F800000u;
}

// Sine and cosine in double precision for a result in single: the range reduction and the minimax polynomials of
// Arm's Optimized Routines (sincosf), which several C libraries share.
constexpr double kHalfPi = 0x1.921FB54442D18p0;
constexpr double kTwoOverPiScaled = 0x1.45F306DC9C883p+23;  // 2 / pi * 2^24
constexpr double kCosine[] = {0x1p0, -0x1.ffffffd0c621cp-2, 0x1.55553e1068f19p-5, -0x1.6c087e89a359dp-10,
                              0x1.99343027bf8c3p-16};
constexpr double kSine[] = {-0x1.555545995a603p-3, 0x1.1107605230bc4p-7, -0x1.994eb3774cf24p-13};

/// x = quadrant * pi / 2 + rest, with the rest in -pi/4..pi/4; of the quadrant the low two bits count.
struct Reduced {
    double rest;
    int quadrant;
};

Reduced reduceSmall(double x) {
    const double scaled = x * kTwoOverPiScaled;
    const int quadrant = (static_cast<int32_t>(scaled) + 0x800000) >> 24;
    return {x - quadrant * kHalfPi, quadrant};
}

// Payne and Hanek: a float is a 24-bit integer times a power of two, so all but 96 bits of 2 / pi contribute whole
// turns or nothing that counts.
Reduced reduceLarge(uint32_t bits) {
    static constexpr uint8_t kTwoOverPi[] = {0x00, 0x00, 0x00, 0xa2, 0xf9, 0x83, 0x6e, 0x4e, 0x44, 0x15, 0x29, 0xfc,
                                             0x27, 0x57, 0xd1, 0xf5, 0x34, 0xdd, 0xc0, 0xdb, 0x62, 0x95, 0x99, 0x3c,
                                             0x43, 0x90, 0x41, 0xfe, 0x51, 0x63, 0xab, 0xde, 0xbb, 0xc5};
    const auto word = [](uint32_t at) {
        const uint8_t* byte = kTwoOverPi + at;
        return static_cast<uint32_t>(byte[0]) << 24 | static_cast<uint32_t>(byte[1]) << 16 |
               static_cast<uint32_t>(byte[2]) << 8 | byte[3];
    };
    const uint32_t first = (bits >> 26) & 15;
    const uint32_t mantissa = ((bits & 0xFFFFFFu) | 0x800000u) << ((bits >> 23) & 7);
    const uint32_t high = mantissa * word(first);
    const uint64_t middle = static_cast<uint64_t>(mantissa) * word(first + 4);
    const uint64_t low = static_cast<uint64_t>(mantissa) * word(first + 8);
    uint64_t turns = (static_cast<uint64_t>(high) << 32 | low >> 32) + middle;
    const uint64_t quadrant = (turns + (uint64_t{1} << 61)) >> 62;
    turns -= quadrant << 62;
    // Two's complement, as GCC and Clang convert it: the rest may lie on either side of 0.
    const double rest = static_cast<double>(static_cast<int64_t>(turns)) * 0x1.921FB54442D18p-62;
    return {(bits >> 31) != 0 ? -rest : rest, static_cast<int>((bits >> 31) != 0 ? 0 - quadrant : quadrant)};
}

Reduced reduce(float x) {
    const uint32_t magnitude = bitsOf(x) & 0x7FFFFFFFu;
    if (magnitude < bitsOf(0x1.921FB6p-1f)) return {x, 0};
    if (magnitude < bitsOf(120.0f)) return reduceSmall(x);
    return reduceLarge(bitsOf(x));
}

float sineOf(double x) {
    const double x2 = x * x;
    const double x3 = x * x2;
    const double tail = kSine[1] + x2 * kSine[2];
    const double x7 = x3 * x2;
    const double head = x + x3 * kSine[0];
    return static_cast<float>(head + x7 * tail);
}

float cosineOf(double x) {
    const double x2 = x * x;
    const double x4 = x2 * x2;
    const double tail = kCosine[3] + x2 * kCosine[4];
    const double head = kCosine[0] + x2 * kCosine[1];
    const double x6 = x4 * x2;
    const double middle = head + x4 * kCosine[2];
    return static_cast<float>(middle + x6 * tail);
}

/// Sine of the reduced angle, `quarterTurns` added.
float sineOfReduced(Reduced angle, int quarterTurns) {
    const int quadrant = angle.quadrant + quarterTurns;
    const float value = (quadrant & 1) == 0 ? sineOf(angle.rest) : cosineOf(angle.rest);
    return (quadrant & 2) == 0 ? value : -value;
}

// The tangent of fdlibm (k_tanf.c, after Sun Microsystems' k_tan.c), in single precision on a reduced angle of two
// floats: its rounding errors are what the platforms' tanf returns.
struct ReducedFloat {
    float rest;
    float error;  ///< to be added to rest
    int quadrant;
};

ReducedFloat reduceForTangent(float x) {
    const Reduced angle = reduce(x);
    const float rest = static_cast<float>(angle.rest);
    return {rest, static_cast<float>(angle.rest - rest), angle.quadrant};
}

/// tan(x + error), or its negative reciprocal, for |x| up to pi / 4.
float tangentOfReduced(float x, float error, bool reciprocal) {
    constexpr float kPi4 = 7.8539812565e-01f;
    constexpr float kPi4Tail = 3.7748947079e-08f;
    constexpr float kT[] = {3.3333334327e-01f, 1.3333334029e-01f, 5.3968254477e-02f, 2.1869488060e-02f,
                            8.8632395491e-03f, 3.5920790397e-03f, 1.4562094584e-03f, 5.8804126456e-04f,
                            2.4646313977e-04f, 7.8179444245e-05f, 7.1407252108e-05f, -1.8558637748e-05f,
                            2.5907305826e-05f};
    const bool negative = bitsOf(x) >> 31 != 0;
    const uint32_t magnitude = bitsOf(x) & 0x7FFFFFFFu;
    const float sign = negative ? -1.0f : 1.0f;
    const float plainOrReciprocal = reciprocal ? -1.0f : 1.0f;
    if (magnitude < 0x39000000u) return reciprocal ? -1.0f / x : x;  // |x| < 2^-13

    const bool folded = magnitude >= 0x3f2ca140u;  // |x| >= 0.6744
    if (folded) {
        if (negative) {
            x = -x;
            error = -error;
        }
        x = (kPi4 - x) + (kPi4Tail - error);
        error = 0.0f;
        if (floatOf(bitsOf(x) & 0x7FFFFFFFu) < 0x1p-13f)
            return sign * plainOrReciprocal * (1.0f - 2.0f * plainOrReciprocal * x);
    }
    const float z = x * x;
    const float z2 = z * z;
    const float odd = kT[1] + z2 * (kT[3] + z2 * (kT[5] + z2 * (kT[7] + z2 * (kT[9] + z2 * kT[11]))));
    const float even = z * (kT[2] + z2 * (kT[4] + z2 * (kT[6] + z2 * (kT[8] + z2 * (kT[10] + z2 * kT[12])))));
    const float cube = z * x;
    float rest = error + z * (cube * (odd + even) + error);
    rest += kT[0] * cube;
    const float w = x + rest;
    if (folded) return sign * (plainOrReciprocal - 2.0f * (x - (w * w / (w + plainOrReciprocal) - rest)));
    if (!reciprocal) return w;
    // -1 / w with the part of w that rounding lost.
    const float wHigh = floatOf(bitsOf(w) & 0xFFFFF000u);
    const float wLow = rest - (wHigh - x);
    const float quotient = -1.0f / w;
    const float quotientHigh = floatOf(bitsOf(quotient) & 0xFFFFF000u);
    const float s = 1.0f + quotientHigh * wHigh;
    return quotientHigh + quotient * (s + quotientHigh * wLow);
}

}  // namespace

float pinnedExp(float x) {
    if (x != x) return kNotANumber;
    if (x > 89.0f) return std::numeric_limits<float>::infinity();
    if (x < -104.0f) return 0.0f;

    // exp(x) = 2^k * exp(rest) with |rest| <= ln 2 / 2; ln 2 in two parts, the first short enough for k * part to be
    // exact (W. J. Cody and W. Waite, Software Manual for the Elementary Functions, 1980). The Taylor polynomial of
    // degree 13 leaves less than 2^-57.
    constexpr double kLn2High = 0x1.62e42fee00000p-1;
    constexpr double kLn2Low = 0x1.a39ef35793c76p-33;
    const double exact = x;
    const int k = static_cast<int>(exact * 0x1.71547652b82fep0 + (x < 0.0f ? -0.5 : 0.5));
    const double rest = (exact - k * kLn2High) - k * kLn2Low;
    double sum = 1.0;
    for (int n = 13; n >= 1; --n) sum = 1.0 + sum * rest / n;
    return static_cast<float>(sum * powerOfTwo(k));
}

float pinnedSin(float x) {
    if (!isFinite(x)) return kNotANumber;
    if ((bitsOf(x) & 0x7FFFFFFFu) < bitsOf(0x1p-12f)) return x;
    return sineOfReduced(reduce(x), 0);
}

float pinnedCos(float x) {
    if (!isFinite(x)) return kNotANumber;
    return sineOfReduced(reduce(x), 1);
}

float pinnedTan(float x) {
    if (!isFinite(x)) return kNotANumber;
    const uint32_t magnitude = bitsOf(x) & 0x7FFFFFFFu;
    if (magnitude <= 0x3f490fdau) return tangentOfReduced(x, 0.0f, false);  // up to pi / 4
    const ReducedFloat angle = reduceForTangent(x);
    return tangentOfReduced(angle.rest, angle.error, (angle.quadrant & 1) != 0);
}

}  // namespace QxFontEffect
