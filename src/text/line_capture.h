#pragma once

#include <cstdint>

#include "text/QxLineInfo.h"
#include "text/QxView.h"

namespace QxFontEffect {

/// What the platform's paragraph layout says of one line. Pixels, y down from the top of the text.
struct LayoutLine {
    int start;       ///< first UTF-16 index
    int visibleEnd;  ///< one past the last visible one
    int baseline;
    int ascent;  ///< negative
    int descent;
    float left;
    float width;
};

/// How many of `lineCount` lines are shown: the view's line limit decides when it is 1 or more, even when it is the
/// larger one, else its maximum; without either, none.
int shownLineCount(const QxView& view, int lineCount);

/// Whether the view shows the last lines instead of the first ones.
bool isBottomAligned(const QxView& view);

/// Whether the view centres (or fills) its lines between the paddings.
bool isVerticallyCentered(const QxView& view);

/// Baseline of line 0 in view pixels.
///
/// @param baseline0  baseline of line 0 in the layout.
/// @param bottom     bottom of the last shown line when the view is centred, of the last line of all when it is
///                   bottom aligned, not read otherwise.
int baselineOrigin(const QxView& view, int baseline0, int bottom);

/// Fills a record from a line, with the baseline origin of its view.
QxLineInfo captureLine(const QxView& view, const LayoutLine& line, int origin, int baseline0);

}  // namespace QxFontEffect
