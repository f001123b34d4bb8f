#pragma once

#include <hb.h>

#include <string>
#include <vector>

#include <minikin/FontCollection.h>
#include <minikin/MinikinFont.h>

namespace minikin {

/// All that layout wants to know of a paint and a typeface.
struct TextSettings {
    FontWish wish;
    RasterSettings raster;
    float letterSpacing = 0.0f;  ///< em
    float wordSpacing = 0.0f;    ///< pixels, on every space
    std::string features;        ///< CSS notation, comma separated

    float letterSpacingPixels() const { return letterSpacing * raster.size * raster.scaleX; }
};

/// The features to shape with. Items that name a range of characters are dropped, for there is no telling what text
/// they count in; so are those that cannot be read.
std::vector<hb_feature_t> shapingFeatures(const TextSettings& settings);

}  // namespace minikin
