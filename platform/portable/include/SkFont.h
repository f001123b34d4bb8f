#pragma once

#include "SkFontTypes.h"
#include "SkRect.h"
#include "SkRefCnt.h"
#include "SkTypeface.h"

class SkPaint;

/// A typeface with everything that decides the shape of a glyph: size, stretch, slant, weight fakery, smoothing.
/// A plain value; copies share the typeface.
class SkFont {
public:
    enum class Edging {
        /// Masks of 0 and 255 only.
        kAlias = 0,
        kAntiAlias = 1,
        /// Drawn like kAntiAlias: coverage planes have no colour stripes.
        kSubpixelAntiAlias = 2,
    };

    SkFont() = default;
    explicit SkFont(sk_sp<SkTypeface> typeface, SkScalar size = kDefaultSize) : mTypeface(std::move(typeface)) {
        setSize(size);
    }

    SkTypeface* getTypeface() const { return mTypeface.get(); }
    sk_sp<SkTypeface> refTypeface() const { return mTypeface; }
    void setTypeface(sk_sp<SkTypeface> typeface) { mTypeface = std::move(typeface); }

    SkScalar getSize() const { return mSize; }
    /// Pixels per em. Negative sizes and NaN become 0, and a font of size 0 has no ink and no advances.
    void setSize(SkScalar size) { mSize = size > 0 ? size : 0; }
    SkScalar getScaleX() const { return mScaleX; }
    void setScaleX(SkScalar scale) { mScaleX = scale; }
    SkScalar getSkewX() const { return mSkewX; }
    /// Columns to the right per row down: negative values lean to the right.
    void setSkewX(SkScalar skew) { mSkewX = skew; }

    Edging getEdging() const { return mEdging; }
    void setEdging(Edging edging) { mEdging = edging; }
    SkFontHinting getHinting() const { return mHinting; }
    void setHinting(SkFontHinting hinting) { mHinting = hinting; }

    bool isEmbolden() const { return mEmbolden; }
    void setEmbolden(bool on) { mEmbolden = on; }
    bool isSubpixel() const { return mSubpixel; }
    void setSubpixel(bool on) { mSubpixel = on; }
    bool isLinearMetrics() const { return mLinearMetrics; }
    void setLinearMetrics(bool on) { mLinearMetrics = on; }
    bool isEmbeddedBitmaps() const { return mEmbeddedBitmaps; }
    void setEmbeddedBitmaps(bool on) { mEmbeddedBitmaps = on; }
    bool isForceAutoHinting() const { return mForceAutoHinting; }
    void setForceAutoHinting(bool on) { mForceAutoHinting = on; }
    bool isBaselineSnap() const { return mBaselineSnap; }
    /// Stored only: rows of text are always level here, so the baseline always falls on a pixel row.
    void setBaselineSnap(bool on) { mBaselineSnap = on; }

    /// Advances and ink boxes of glyphs, as layout wants them.
    ///
    /// @param glyphs  `count` glyph ids; unknown ones have no ink and no advance.
    /// @param widths  null, or `count` advances in pixels: hinted whole pixels for upright text, else fractional.
    /// @param bounds  null, or `count` boxes rounded outward to whole pixels round the glyph's own origin, y down;
    ///                all zero for a glyph without ink.
    /// @param paint   not looked at.
    void getWidthsBounds(const SkGlyphID glyphs[], int count, SkScalar widths[], SkRect bounds[],
                         const SkPaint* paint) const;
    void getWidths(const SkGlyphID glyphs[], int count, SkScalar widths[]) const {
        getWidthsBounds(glyphs, count, widths, nullptr, nullptr);
    }

    friend bool operator==(const SkFont& a, const SkFont& b) {
        return a.mTypeface == b.mTypeface && a.mSize == b.mSize && a.mScaleX == b.mScaleX && a.mSkewX == b.mSkewX &&
               a.mEdging == b.mEdging && a.mHinting == b.mHinting && a.mEmbolden == b.mEmbolden &&
               a.mSubpixel == b.mSubpixel && a.mLinearMetrics == b.mLinearMetrics &&
               a.mEmbeddedBitmaps == b.mEmbeddedBitmaps && a.mForceAutoHinting == b.mForceAutoHinting &&
               a.mBaselineSnap == b.mBaselineSnap;
    }
    friend bool operator!=(const SkFont& a, const SkFont& b) { return !(a == b); }

private:
    static constexpr SkScalar kDefaultSize = 12;

    sk_sp<SkTypeface> mTypeface;
    SkScalar mSize = kDefaultSize;
    SkScalar mScaleX = 1;
    SkScalar mSkewX = 0;
    Edging mEdging = Edging::kAntiAlias;
    SkFontHinting mHinting = SkFontHinting::kNormal;
    bool mEmbolden = false;
    bool mSubpixel = false;
    bool mLinearMetrics = false;
    bool mEmbeddedBitmaps = false;
    bool mForceAutoHinting = false;
    bool mBaselineSnap = true;
};
