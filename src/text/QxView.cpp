#include "text/QxView.h"

#include "base/platform_log.h"

namespace QxFontEffect {

namespace {
constexpr char kTag[] = "QxView";
}

bool QxView::SetSize(int newWidth, int newHeight) {
    if (newWidth < 0 || newHeight < 0) {
        logError(kTag, "SetSize() - size invalid");
        return false;
    }
    width = newWidth;
    height = newHeight;
    return true;
}

bool QxView::SetBitmapWidth(int bitmapWidth) {
    if (bitmapWidth < 0) {
        // The slip in the name is part of the message; whoever searches logs for it must keep finding it.
        logError(kTag, "SetBitmapWidht() - width[%d] is invalid", bitmapWidth);
        return false;
    }
    if (bitmapSize == nullptr) return false;
    bitmapSize[0] = bitmapWidth;
    return true;
}

bool QxView::SetBitmapHeight(int bitmapHeight) {
    if (bitmapHeight < 0) {
        logError(kTag, "SetBitmapHeight() - height[%d] is invalid", bitmapHeight);
        return false;
    }
    if (bitmapSize == nullptr) return false;
    bitmapSize[1] = bitmapHeight;
    return true;
}

bool QxView::SetPadding(int left, int top, int right, int bottom) {
    paddingLeft = left;
    paddingTop = top;
    paddingRight = right;
    paddingBottom = bottom;
    return true;
}

}  // namespace QxFontEffect
