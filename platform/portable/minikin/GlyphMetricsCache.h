#pragma once

#include <algorithm>
#include <cstdint>
#include <mutex>
#include <unordered_map>
#include <vector>

#include <minikin/Font.h>
#include <minikin/MinikinFont.h>
#include <minikin/MinikinRect.h>

namespace android {

struct GlyphMetrics {
    float advance = 0.0f;
    minikin::MinikinRect box;
};

/// Remembers what the rasteriser said of a font's glyphs at the sizes last used.
///
/// Loading a hinted glyph runs its instructions, which takes longer than all the rest of layout, and shaping asks
/// for every glyph twice: once for its advance, once for its ink. Thread-safe.
class GlyphMetricsCache {
public:
    /// Gives out the metrics of glyphs in order; `measure(missing, metrics)` is asked for those not known yet.
    template <typename Measure>
    std::vector<GlyphMetrics> get(const minikin::RasterSettings& settings, minikin::FontFakery fakery,
                                  const uint16_t* glyphs, int count, Measure&& measure) {
        const std::lock_guard<std::mutex> guard(mLock);
        Known& known = glyphsAt(settings, fakery);

        std::vector<uint16_t> missing;
        for (int i = 0; i < count; ++i) {
            if (known.count(glyphs[i]) == 0) missing.push_back(glyphs[i]);
        }
        if (!missing.empty()) {
            std::sort(missing.begin(), missing.end());
            missing.erase(std::unique(missing.begin(), missing.end()), missing.end());
            std::vector<GlyphMetrics> metrics(missing.size());
            measure(missing, &metrics);
            // Entered only now: where memory runs out on the way, a glyph is not known rather than known as empty.
            for (size_t i = 0; i < missing.size(); ++i) known.emplace(missing[i], metrics[i]);
        }

        std::vector<GlyphMetrics> result;
        result.reserve(static_cast<size_t>(count));
        for (int i = 0; i < count; ++i) result.push_back(known.at(glyphs[i]));
        return result;
    }

private:
    using Known = std::unordered_map<uint16_t, GlyphMetrics>;
    struct Size {
        minikin::RasterSettings settings;
        minikin::FontFakery fakery;
        Known glyphs;
    };

    Known& glyphsAt(const minikin::RasterSettings& settings, minikin::FontFakery fakery);

    std::mutex mLock;
    std::vector<Size> mSizes;  ///< the last used one first
};

}  // namespace android
