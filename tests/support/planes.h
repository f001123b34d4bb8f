#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <iomanip>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

#include "pixel/plane.h"
#include "support/random.h"

namespace QxFontEffect::test {

/// A width x height plane that owns its memory, with guard elements before the first row, behind every row and
/// behind the last, so that a write beside the plane is found even where it stays inside the allocation.
template <typename T>
class GuardedPlane {
public:
    /// @param gap    guard elements between two rows; the stride is width + gap.
    /// @param shift  guard elements before the first row beyond the least number, to move it off its alignment.
    GuardedPlane(int width, int height, T fill = T(), int gap = 5, int shift = 0)
        : mWidth(width), mHeight(height), mStride(width + gap), mStart(kMargin + static_cast<size_t>(shift)) {
        mElements.resize(mStart + static_cast<size_t>(mStride) * static_cast<size_t>(height) + kMargin);
        for (size_t i = 0; i < mElements.size(); ++i) mElements[i] = guardAt(i);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) at(x, y) = fill;
    }

    int width() const { return mWidth; }
    int height() const { return mHeight; }
    PlaneView<T> view() { return {mElements.data() + mStart, mWidth, mHeight, mStride}; }
    PlaneView<const T> view() const { return {mElements.data() + mStart, mWidth, mHeight, mStride}; }
    T& at(int x, int y) { return view().row(y)[x]; }
    const T& at(int x, int y) const { return view().row(y)[x]; }

    ::testing::AssertionResult guardsIntact() const {
        for (size_t i = 0; i < mElements.size(); ++i) {
            const T wanted = guardAt(i);
            if (isGuard(i) && std::memcmp(&mElements[i], &wanted, sizeof(T)) != 0)
                return ::testing::AssertionFailure() << "written outside the plane, " << placeOf(i);
        }
        return ::testing::AssertionSuccess();
    }

private:
    static constexpr size_t kMargin = 64;

    // Differs from element to element, so that a shifted copy of the guards is noticed too.
    static T guardAt(size_t index) { return static_cast<T>(0xA5A5A5A5u ^ (static_cast<uint32_t>(index) * 0x9Du)); }

    bool isGuard(size_t index) const {
        if (index < mStart) return true;
        const size_t inside = index - mStart;
        const size_t stride = static_cast<size_t>(mStride);
        return inside >= stride * static_cast<size_t>(mHeight) || inside % stride >= static_cast<size_t>(mWidth);
    }

    std::string placeOf(size_t index) const {
        std::ostringstream place;
        const ptrdiff_t inside = static_cast<ptrdiff_t>(index) - static_cast<ptrdiff_t>(mStart);
        if (inside < 0)
            place << -inside << " elements before row 0";
        else if (mHeight == 0)
            place << inside << " elements behind the empty plane";
        else
            place << "row " << inside / mStride << ", column " << inside % mStride;
        return place.str();
    }

    int mWidth;
    int mHeight;
    ptrdiff_t mStride;
    size_t mStart;
    std::vector<T> mElements;
};

using GuardedPlane8 = GuardedPlane<uint8_t>;
using GuardedPlane32 = GuardedPlane<uint32_t>;
using GuardedPlaneF = GuardedPlane<float>;

/// Samples 0..255, a third of them 0 and a third 255, as coverage has it.
inline GuardedPlane8 randomCoverage(Rng& rng, int width, int height, int gap = 5, int shift = 0) {
    GuardedPlane8 plane(width, height, 0, gap, shift);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const uint32_t kind = rng.below(3);
            plane.at(x, y) = kind == 0 ? uint8_t{0} : kind == 1 ? uint8_t{255} : rng.byte();
        }
    return plane;
}

/// Samples 0..255, all equally likely.
inline GuardedPlane8 randomPlane8(Rng& rng, int width, int height, int gap = 5, int shift = 0) {
    GuardedPlane8 plane(width, height, 0, gap, shift);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) plane.at(x, y) = rng.byte();
    return plane;
}

/// Any 32-bit values.
inline GuardedPlane32 randomPlane32(Rng& rng, int width, int height, int gap = 5, int shift = 0) {
    GuardedPlane32 plane(width, height, 0, gap, shift);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) plane.at(x, y) = rng.next32();
    return plane;
}

namespace detail {

template <typename T>
PlaneView<const T> readable(const PlaneView<T>& plane) {
    return {plane.data, plane.width, plane.height, plane.stride};
}
template <typename T>
PlaneView<const T> readable(const GuardedPlane<T>& plane) {
    return plane.view();
}

template <typename T>
::testing::AssertionResult guardsOf(const PlaneView<T>&) {
    return ::testing::AssertionSuccess();
}
template <typename T>
::testing::AssertionResult guardsOf(const GuardedPlane<T>& plane) {
    return plane.guardsIntact();
}

template <typename T>
std::string shown(T value) {
    std::ostringstream text;
    if (std::is_floating_point<T>::value)
        text << std::setprecision(9) << value;
    else if (sizeof(T) == 1)
        text << static_cast<uint64_t>(value);
    else
        text << "0x" << std::hex << std::setw(8) << std::setfill('0') << static_cast<uint64_t>(value);
    return text.str();
}

template <typename T>
void printWhole(std::ostream& out, const char* name, PlaneView<const T> plane) {
    out << "\n" << name << ":";
    for (int y = 0; y < plane.height; ++y) {
        out << "\n ";
        for (int x = 0; x < plane.width; ++x) out << ' ' << std::setw(3) << shown(plane.row(y)[x]);
    }
}

/// Elements compare by their bits: a float plane tells 0 from -0 and may hold NaN.
template <typename T>
::testing::AssertionResult compared(PlaneView<const T> want, PlaneView<const T> got) {
    if (want.width != got.width || want.height != got.height)
        return ::testing::AssertionFailure() << "want " << want.width << " x " << want.height << " elements, got "
                                             << got.width << " x " << got.height;
    constexpr int kNamed = 5;
    constexpr int kSmallSide = 12;
    std::ostringstream named;
    int wrong = 0;
    for (int y = 0; y < want.height; ++y)
        for (int x = 0; x < want.width; ++x) {
            const T& wanted = want.row(y)[x];
            const T& given = got.row(y)[x];
            if (std::memcmp(&wanted, &given, sizeof(T)) == 0) continue;
            if (++wrong <= kNamed)
                named << "\n  (" << x << ", " << y << "): want " << shown(wanted) << ", got " << shown(given);
        }
    if (wrong == 0) return ::testing::AssertionSuccess();
    if (want.width <= kSmallSide && want.height <= kSmallSide) {
        printWhole(named, "want", want);
        printWhole(named, "got", got);
    }
    return ::testing::AssertionFailure() << wrong << " of " << want.width << " x " << want.height << " elements differ"
                                         << named.str();
}

}  // namespace detail

/// Whether two planes (views or guarded planes of one element type) are equal, and nothing was written beside `got`.
/// A failure names the first five wrong elements with both values, prints small planes whole, and ends with the
/// `context` values, which should be enough to run the case again.
template <typename Want, typename Got, typename... Context>
::testing::AssertionResult samePlane(const Want& want, const Got& got, const Context&... context) {
    ::testing::AssertionResult result = detail::compared(detail::readable(want), detail::readable(got));
    if (result) result = detail::guardsOf(got);
    if constexpr (sizeof...(context) > 0) {
        if (result) return result;
        std::ostringstream text;
        ((text << ' ' << context), ...);
        result << "\nwith" << text.str();
    }
    return result;
}

}  // namespace QxFontEffect::test

/// EXPECT_SAME_PLANE(want, got, context...): a non-fatal `samePlane`.
#define EXPECT_SAME_PLANE(want, ...) EXPECT_TRUE(::QxFontEffect::test::samePlane(want, __VA_ARGS__))
