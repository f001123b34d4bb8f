#include <minikin/Font.h>

#include "FontFace.h"

namespace minikin {

Font::Builder& Font::Builder::setWeight(uint16_t weight) {
    mWeight = weight;
    mWeightSet = true;
    return *this;
}

Font::Builder& Font::Builder::setSlant(FontStyle::Slant slant) {
    mSlant = slant;
    mSlantSet = true;
    return *this;
}

Font Font::Builder::build() {
    if (mTypeface != nullptr && !(mWeightSet && mSlantSet)) {
        const FontStyle native = mTypeface->face().style();
        if (!mWeightSet) mWeight = native.weight();
        if (!mSlantSet) mSlant = native.slant();
    }
    return Font(std::move(mTypeface), FontStyle(mWeight, mSlant));
}

}  // namespace minikin
