#pragma once

#include <cstdint>

namespace minikin {

/// Weight (100..1000, 400 is normal, 700 bold) and slant of a font, or of the font that a text wants.
class FontStyle {
public:
    enum class Slant : bool { ITALIC = true, UPRIGHT = false };

    static constexpr uint16_t kNormalWeight = 400;

    constexpr FontStyle() : FontStyle(kNormalWeight, Slant::UPRIGHT) {}
    constexpr FontStyle(uint16_t weight, Slant slant) : mWeight(weight), mSlant(slant) {}

    constexpr uint16_t weight() const { return mWeight; }
    constexpr Slant slant() const { return mSlant; }

    constexpr bool operator==(const FontStyle& other) const {
        return mWeight == other.mWeight && mSlant == other.mSlant;
    }
    constexpr bool operator!=(const FontStyle& other) const { return !(*this == other); }

private:
    uint16_t mWeight;
    Slant mSlant;
};

}  // namespace minikin
