#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include <minikin/FontStyle.h>
#include <minikin/MinikinFont.h>

namespace minikin {

class Font;

/// What drawing has to imitate because the font at hand lacks it.
class FontFakery {
public:
    FontFakery() = default;
    FontFakery(bool fakeBold, bool fakeItalic) : mFakeBold(fakeBold), mFakeItalic(fakeItalic) {}

    // Not const, since they are not on the device either: what compiles here has to compile there.
    bool isFakeBold() { return mFakeBold; }
    bool isFakeItalic() { return mFakeItalic; }

    bool operator==(const FontFakery& other) const {
        return mFakeBold == other.mFakeBold && mFakeItalic == other.mFakeItalic;
    }
    bool operator!=(const FontFakery& other) const { return !(*this == other); }

private:
    bool mFakeBold = false;
    bool mFakeItalic = false;
};

/// A font of a family together with the fakery that brings it to the wanted style.
struct FakedFont {
    bool operator==(const FakedFont& other) const { return font == other.font && fakery == other.fakery; }
    bool operator!=(const FakedFont& other) const { return !(*this == other); }

    const Font* font = nullptr;  ///< owned by its family
    FontFakery fakery;
};

/// A font file with the style it plays in its family. Copies share the file.
class Font {
public:
    /// Collects what makes a font. A style that is left unset is read from the font's OS/2 table.
    class Builder {
    public:
        explicit Builder(const std::shared_ptr<MinikinFont>& typeface) : mTypeface(typeface) {}

        Builder& setStyle(FontStyle style) { return setWeight(style.weight()).setSlant(style.slant()); }
        Builder& setWeight(uint16_t weight);
        Builder& setSlant(FontStyle::Slant slant);

        /// Makes the font and empties the builder: one builder, one font.
        Font build();

    private:
        std::shared_ptr<MinikinFont> mTypeface;
        uint16_t mWeight = FontStyle::kNormalWeight;
        FontStyle::Slant mSlant = FontStyle::Slant::UPRIGHT;
        bool mWeightSet = false;
        bool mSlantSet = false;
    };

    Font(Font&&) = default;
    Font(const Font&) = default;
    Font& operator=(Font&&) = default;
    Font& operator=(const Font&) = default;

    /// Null only for a font that was built from an empty builder.
    const std::shared_ptr<MinikinFont>& typeface() const { return mTypeface; }
    FontStyle style() const { return mStyle; }

private:
    Font(std::shared_ptr<MinikinFont>&& typeface, FontStyle style) : mTypeface(std::move(typeface)), mStyle(style) {}

    std::shared_ptr<MinikinFont> mTypeface;
    FontStyle mStyle;
};

}  // namespace minikin
