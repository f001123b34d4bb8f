#pragma once

#include <map>

#include <minikin/Layout.h>
#include <minikin/MinikinFont.h>

namespace android {
class Paint;
struct Typeface;
}  // namespace android

namespace qxhost {

/// Heights above and below the baseline in whole pixels; ascent is negative.
struct LineHeights {
    int ascent = 0;
    int descent = 0;
};

/// Line heights of the fonts of one paint and typeface.
class LineMetrics {
public:
    LineMetrics(const android::Paint& paint, const android::Typeface* typeface);

    /// Of the typeface's first font: what a line without glyphs has, and what every line has at least.
    LineHeights smallest() const { return mSmallest; }

    /// The largest over the fonts of the layout.
    LineHeights of(const minikin::Layout& layout);

private:
    struct PerEm {
        float ascender = 0.0f;
        float descender = 0.0f;
    };

    const PerEm& perEm(const minikin::MinikinFont* font);
    void widen(LineHeights& heights, const minikin::MinikinFont* font);

    const float mSize;
    std::map<const minikin::MinikinFont*, PerEm> mFonts;
    LineHeights mSmallest;
};

}  // namespace qxhost
