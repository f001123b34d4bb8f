#pragma once

#include <cstdint>

namespace QxFontEffect {

/// Geometry of the view a text is shown in. Pixels.
///
/// Setters that refuse a value log an error, return false and keep the old one.
class QxView {
public:
    /// Both or neither: a negative value refuses the pair.
    bool SetSize(int newWidth, int newHeight);
    int GetWidth() const { return width; }
    int GetHeight() const { return height; }

    /// Size of the bitmap to draw into, margins of the effects included. Refused, too, when there is no `bitmapSize`.
    bool SetBitmapWidth(int bitmapWidth);
    bool SetBitmapHeight(int bitmapHeight);
    int GetBitmapWidth() const { return bitmapSize == nullptr ? 0 : bitmapSize[0]; }
    int GetBitmapHeight() const { return bitmapSize == nullptr ? 0 : bitmapSize[1]; }

    /// Any values; always true.
    bool SetPadding(int left, int top, int right, int bottom);

    /// The pair bitmap width, bitmap height; owned by the view's owner.
    int32_t* GetDrawingBitmapSize() const { return bitmapSize; }

    int32_t width = 0;
    int32_t height = 0;
    int32_t* bitmapSize = nullptr;  ///< two values, made and freed by whoever makes the view
    int32_t paddingLeft = 0;
    int32_t paddingTop = 0;
    int32_t paddingRight = 0;
    int32_t paddingBottom = 0;
    int32_t gravity = 3;    ///< an Android gravity value: bits 0-2 horizontal, bits 4-6 vertical
    int32_t lineLimit = 0;  ///< lines shown at most; below 1 none set
    int32_t maxLines = 0;   ///< the view's own limit, used when lineLimit is not set
};

}  // namespace QxFontEffect
