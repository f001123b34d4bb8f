#pragma once

#include "SkTypeface.h"

namespace portable {

/// The font behind a typeface, for the layout side, which reads the same bytes with its own library.
struct FontAccess {
    /// The whole file, not owned, alive as long as the typeface.
    const uint8_t* bytes = nullptr;
    size_t size = 0;
    /// Face within a collection.
    int index = 0;
    /// The font draws its glyphs as coloured pictures of one or a few sizes (it has a CBDT table).
    bool hasColorBitmaps = false;
};

/// All zero for null.
FontAccess accessFont(const SkTypeface* typeface);

}  // namespace portable
