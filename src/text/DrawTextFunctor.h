#pragma once

#include <minikin/Layout.h>

#include <cstddef>

class SkCanvas;
namespace android {
class Paint;
}

namespace QxFontEffect {

/// Draws a stretch of a layout's glyphs that share one font, for `android::MinikinUtils::forFontRun`.
struct DrawTextFunctor {
    /// Draws glyphs start to end - 1 with the font that the paint has by then. The top-left corner of the layout's
    /// bounding box falls on the canvas's.
    void operator()(size_t start, size_t end) const;

    const minikin::Layout* layout;
    SkCanvas* canvas;       ///< over the line's coverage
    android::Paint* paint;  ///< its alpha scales the coverage
    const float* origin;    ///< the layout's bounding box: left, top, right, bottom
};

}  // namespace QxFontEffect
