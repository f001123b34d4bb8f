#include "GlyphMetricsCache.h"

#include <algorithm>

namespace android {

namespace {

// A text uses few sizes and some hundred glyphs; an editor that drags a size slider uses many.
constexpr size_t kMaxSizes = 4;
constexpr size_t kMaxGlyphs = 8192;

}  // namespace

GlyphMetricsCache::Known& GlyphMetricsCache::glyphsAt(const minikin::RasterSettings& settings,
                                                      minikin::FontFakery fakery) {
    auto found = std::find_if(mSizes.begin(), mSizes.end(),
                              [&](const Size& size) { return size.settings == settings && size.fakery == fakery; });
    if (found == mSizes.end()) {
        if (mSizes.size() == kMaxSizes) mSizes.pop_back();
        mSizes.push_back({settings, fakery, {}});
        found = mSizes.end() - 1;
    }
    std::rotate(mSizes.begin(), found, found + 1);
    Known& glyphs = mSizes.front().glyphs;
    if (glyphs.size() > kMaxGlyphs) glyphs.clear();
    return glyphs;
}

}  // namespace android
