#pragma once

#include "SkBlendMode.h"
#include "SkColor.h"
#include "SkFilterQuality.h"

/// How something is drawn: opaque black, filled, source-over, not antialiased unless changed.
class SkPaint {
public:
    enum Style { kFill_Style = 0 };

    SkColor getColor() const { return mColor; }
    void setColor(SkColor color) { mColor = color; }
    void setARGB(U8CPU a, U8CPU r, U8CPU g, U8CPU b) { mColor = SkColorSetARGB(a, r, g, b); }
    uint8_t getAlpha() const { return static_cast<uint8_t>(SkColorGetA(mColor)); }
    /// Values above 255 count as 255.
    void setAlpha(U8CPU alpha) { mColor = SkColorSetA(mColor, alpha > 255 ? 255 : alpha); }

    Style getStyle() const { return mStyle; }
    void setStyle(Style style) { mStyle = style; }
    SkBlendMode getBlendMode() const { return mBlendMode; }
    void setBlendMode(SkBlendMode mode) { mBlendMode = mode; }
    bool isSrcOver() const { return mBlendMode == SkBlendMode::kSrcOver; }

    bool isAntiAlias() const { return mAntiAlias; }
    void setAntiAlias(bool on) { mAntiAlias = on; }
    bool isDither() const { return mDither; }
    void setDither(bool on) { mDither = on; }
    SkFilterQuality getFilterQuality() const { return mFilterQuality; }
    void setFilterQuality(SkFilterQuality quality) { mFilterQuality = quality; }

    void reset() { *this = SkPaint(); }

    friend bool operator==(const SkPaint& a, const SkPaint& b) {
        return a.mColor == b.mColor && a.mStyle == b.mStyle && a.mBlendMode == b.mBlendMode &&
               a.mAntiAlias == b.mAntiAlias && a.mDither == b.mDither && a.mFilterQuality == b.mFilterQuality;
    }
    friend bool operator!=(const SkPaint& a, const SkPaint& b) { return !(a == b); }

private:
    SkColor mColor = SK_ColorBLACK;
    Style mStyle = kFill_Style;
    SkBlendMode mBlendMode = SkBlendMode::kSrcOver;
    SkFilterQuality mFilterQuality = kNone_SkFilterQuality;
    bool mAntiAlias = false;
    bool mDither = false;
};
