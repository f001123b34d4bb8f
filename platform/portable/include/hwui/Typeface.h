#pragma once

#include <memory>
#include <vector>

#include <minikin/FontCollection.h>
#include <minikin/FontFamily.h>
#include <minikin/FontStyle.h>

namespace android {

/// The families a text may be drawn with, and the style it wishes for.
struct Typeface {
    std::shared_ptr<minikin::FontCollection> fFontCollection;
    minikin::FontStyle fStyle;

    /// Makes a typeface; the caller deletes it.
    ///
    /// @param families  in order of preference; copied, so the vector keeps them. May be empty here (such text lays
    ///                  out to nothing); the device does not survive that.
    /// @param weight    1..1000, clamped; -1 takes the first family's (any other negative weight is 400).
    /// @param italic    0 or 1; -1 takes the first family's.
    static Typeface* createFromFamilies(std::vector<std::shared_ptr<minikin::FontFamily>>&& families, int weight,
                                        int italic);
};

}  // namespace android
