// How the loops of gauss_kernels_body.h run the programs of gauss_taps.h and divide. Included by that file alone.

#include "effect/kernel/gauss_kernels.h"
#include "effect/kernel/vectors.h"

#if defined(__SSE2__)
#include <immintrin.h>
#endif

namespace QxFontEffect {
namespace {

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "even samples are the lower halves of 32-bit lanes");

constexpr int kVectors = 4;  // that share one walk over a program

inline U16s wordsAt(const uint16_t* at) {
    return loadVector<U16s>(at);
}

/// A word in all lanes, out of a program: it stands in both halves.
inline U16s inAllWords(int32_t bothHalves) {
    return (U16s)(I32s{} + bothHalves);
}

inline I32s evenOf(U16s words) {
    return (I32s)((U32s)words << 16) >> 16;
}

inline I32s oddOf(U16s words) {
    return (I32s)words >> 16;
}

/// A place of a program. The compiler is kept from folding the sum into every read: that costs an operation each.
inline const uint16_t* placeAt(const uint16_t* base, int32_t place) {
    const uint16_t* at = base + place;
    __asm__("" : "+r"(at));
    return at;
}

/// The change of the sums of some vectors whose samples lie `stride` words apart, by taps gathered by factor.
template <int vectors>
inline void runGathered(const int32_t* word, const uint16_t* base, int stride, U16s* change) {
    U16s added[vectors] = {};
    for (int i = 0; i < vectors; ++i) change[i] = U16s{};
    for (int32_t level = *word++; level > 0; --level) {
        const int32_t factor = word[0];
        const int32_t* addsEnd = word + 3 + word[1];
        const int32_t* end = addsEnd + word[2];
        for (word += 3; word < addsEnd; ++word) {
            const uint16_t* at = placeAt(base, *word);
            for (int i = 0; i < vectors; ++i) added[i] += wordsAt(at + i * stride);
        }
        for (; word < end; ++word) {
            const uint16_t* at = placeAt(base, *word);
            for (int i = 0; i < vectors; ++i) added[i] -= wordsAt(at + i * stride);
        }
        const U16s times = inAllWords(factor);
        for (int i = 0; i < vectors; ++i) change[i] += added[i] * times;
    }
}

/// The same by a product per tap.
template <int vectors>
inline void runFlat(const int32_t* word, const uint16_t* base, int stride, U16s* change) {
    for (int i = 0; i < vectors; ++i) change[i] = U16s{};
    int32_t sums = word[0], differences = word[1];
    for (word += 2; sums > 0; --sums, word += 3) {
        const U16s factor = inAllWords(word[0]);
        const uint16_t* first = placeAt(base, word[1]);
        const uint16_t* second = placeAt(base, word[2]);
        for (int i = 0; i < vectors; ++i)
            change[i] += (wordsAt(first + i * stride) + wordsAt(second + i * stride)) * factor;
    }
    for (; differences > 0; --differences, word += 3) {
        const U16s factor = inAllWords(word[0]);
        const uint16_t* more = placeAt(base, word[1]);
        const uint16_t* less = placeAt(base, word[2]);
        for (int i = 0; i < vectors; ++i)
            change[i] += (wordsAt(more + i * stride) - wordsAt(less + i * stride)) * factor;
    }
}

template <int vectors>
inline void runProgram(bool isFlat, const int32_t* program, const uint16_t* base, int stride, U16s* change) {
    if (isFlat)
        runFlat<vectors>(program, base, stride, change);
    else
        runGathered<vectors>(program, base, stride, change);
}

/// Running sums of the even and of the odd samples of a vector, and their quotients.
struct LargeSums {
    explicit LargeSums(int32_t sum) : even(I32s{} + sum), odd(even) {}
    LargeSums(I32s evenSums, I32s oddSums) : even(evenSums), odd(oddSums) {}

    void add(U16s change) {
        even += evenOf(change);
        odd += oddOf(change);
    }
    U16s quotients(const GaussQuotient& quotient) const {
        return (U16s)(divided(even, quotient) | divided(odd, quotient) << 16);
    }

    I32s even;
    I32s odd;

private:
    static I32s divided(I32s sums, const GaussQuotient& quotient) {
        const I32s estimate = __builtin_convertvector(__builtin_convertvector(sums, F32s) * quotient.inverse, I32s);
        const I32s rest = sums - estimate * quotient.sum;
        // Comparisons give -1 where they hold.
        return estimate + (rest < 0) - (rest >= quotient.sum);
    }
};

/// The same for small weight sums: kept as floats with half a unit added, which is exact and what the quotient wants.
struct SmallSums {
    explicit SmallSums(int32_t sum) : even(F32s{} + (static_cast<float>(sum) + 0.5f)), odd(even) {}
    SmallSums(I32s evenSums, I32s oddSums)
        : even(__builtin_convertvector(evenSums, F32s) + 0.5f), odd(__builtin_convertvector(oddSums, F32s) + 0.5f) {}

    void add(U16s change) {
        even += __builtin_convertvector(evenOf(change), F32s);
        odd += __builtin_convertvector(oddOf(change), F32s);
    }
    U16s quotients(const GaussQuotient& quotient) const {
        const I32s evens = __builtin_convertvector(even * quotient.inverse, I32s);
        const I32s odds = __builtin_convertvector(odd * quotient.inverse, I32s);
        return (U16s)(evens | odds << 16);
    }

    F32s even;
    F32s odd;
};

}  // namespace
}  // namespace QxFontEffect
