#pragma once

#include <cstdint>

namespace QxFontEffect {

class List;
class QxBitmap;
class QxView;

/// Where a result shows anything: whole pixels, far edges outside. Empty rectangles are all zero.
struct ContentClip {
    int left;
    int top;
    int right;
    int bottom;
};

/// The content rectangle of a view within a picture of width x height pixels.
///
/// The paddings of the view narrow its bitmap size, but not at an edge towards which the text is aligned: effects may
/// spill over there. The paddings are not moved by the effect margins. Paddings that meet or cross show nothing.
///
/// @param view  null clips nothing.
ContentClip contentClip(const QxView* view, int width, int height);

/// Rectangles behind the lines of a text.
struct LineBackgrounds {
    const List* lines;  ///< QxLineInfo records; null paints none
    uint32_t color;     ///< 0xAARRGGBB
};

/// Paints the backgrounds into `output`, then the picture of the effects over them, both within the clip. Red and
/// blue change places in both on the way, which is the order the caller's 32-bit pixels have.
///
/// Both bitmaps are R, G, B, A at entry, not premultiplied, of one size; `output` is all zero.
void composeResult(const ContentClip& clip, const LineBackgrounds& backgrounds, QxBitmap* effects, QxBitmap* output);

}  // namespace QxFontEffect
