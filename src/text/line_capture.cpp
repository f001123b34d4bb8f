#include "text/line_capture.h"

#include <algorithm>

#include "effect/safe_convert.h"

namespace QxFontEffect {

namespace {

// Bits 4 to 6 of an Android gravity value.
constexpr int kVerticalMask = 0x70;
constexpr int kCenterVertical = 0x10;
constexpr int kFillVertical = 0x70;
constexpr int kBottom = 0x50;

int verticalGravity(const QxView& view) {
    return view.gravity & kVerticalMask;
}

/// Pixels of a sum that starts on a whole one: the sum is truncated, not its float part, which differs left of zero.
int truncatedSum(int whole, float part) {
    return truncToInt(static_cast<float>(whole) + part);
}

}  // namespace

int shownLineCount(const QxView& view, int lineCount) {
    if (view.lineLimit >= 1) return std::min(lineCount, view.lineLimit);
    if (view.maxLines >= 1) return std::min(lineCount, view.maxLines);
    return 0;
}

bool isBottomAligned(const QxView& view) {
    return verticalGravity(view) == kBottom;
}

bool isVerticallyCentered(const QxView& view) {
    return verticalGravity(view) == kCenterVertical || verticalGravity(view) == kFillVertical;
}

int baselineOrigin(const QxView& view, int baseline0, int bottom) {
    if (isBottomAligned(view)) return saturateToInt(int64_t{baseline0} - bottom + view.height - view.paddingBottom);
    int64_t origin = int64_t{view.paddingTop} + baseline0;
    if (isVerticallyCentered(view)) {
        const int64_t available = int64_t{view.height} - view.paddingTop - view.paddingBottom;
        if (available > bottom) origin += (available - bottom) / 2;
    }
    return saturateToInt(origin);
}

QxLineInfo captureLine(const QxView& view, const LayoutLine& line, int origin, int baseline0) {
    QxLineInfo info;
    info.x = truncatedSum(view.paddingLeft, line.left);
    info.y = saturateToInt(int64_t{origin} + line.baseline - baseline0);
    info.start = line.start;
    info.end = line.visibleEnd;
    info.direction = 1;
    info.bounds = QxRect(info.x, saturateToInt(int64_t{info.y} + line.ascent), truncatedSum(info.x, line.width),
                         saturateToInt(int64_t{info.y} + line.descent));
    return info;
}

}  // namespace QxFontEffect
