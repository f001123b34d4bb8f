#include <minikin/MinikinFont.h>

#include <mutex>

#include "FontFace.h"

namespace minikin {

struct MinikinFont::LazyFace {
    std::once_flag once;
    std::unique_ptr<const FontFace> face;
};

MinikinFont::MinikinFont(int32_t uniqueId) : mUniqueId(uniqueId), mFace(std::make_unique<LazyFace>()) {}

MinikinFont::~MinikinFont() = default;

// Opened at first use and not in the constructor: the bytes are known only to the derived class.
const FontFace& MinikinFont::face() const {
    std::call_once(mFace->once, [this] {
        mFace->face = std::make_unique<const FontFace>(GetFontData(), GetFontSize(), GetFontIndex(), GetAxes());
    });
    return *mFace->face;
}

}  // namespace minikin
