#pragma once

#include "SkScalar.h"

/// Left, top, right, bottom in float pixels, y down, far edges outside.
struct SkRect {
    SkScalar fLeft;
    SkScalar fTop;
    SkScalar fRight;
    SkScalar fBottom;

    static constexpr SkRect MakeEmpty() { return {0, 0, 0, 0}; }
    static constexpr SkRect MakeLTRB(SkScalar l, SkScalar t, SkScalar r, SkScalar b) { return {l, t, r, b}; }
    static constexpr SkRect MakeWH(SkScalar w, SkScalar h) { return {0, 0, w, h}; }
    static constexpr SkRect MakeXYWH(SkScalar x, SkScalar y, SkScalar w, SkScalar h) { return {x, y, x + w, y + h}; }

    constexpr SkScalar left() const { return fLeft; }
    constexpr SkScalar top() const { return fTop; }
    constexpr SkScalar right() const { return fRight; }
    constexpr SkScalar bottom() const { return fBottom; }
    constexpr SkScalar width() const { return fRight - fLeft; }
    constexpr SkScalar height() const { return fBottom - fTop; }

    /// True for an edge that is NaN, too.
    constexpr bool isEmpty() const { return !(fLeft < fRight && fTop < fBottom); }
    void setEmpty() { *this = MakeEmpty(); }
    void setLTRB(SkScalar l, SkScalar t, SkScalar r, SkScalar b) { *this = MakeLTRB(l, t, r, b); }
    void offset(SkScalar dx, SkScalar dy) { *this = {fLeft + dx, fTop + dy, fRight + dx, fBottom + dy}; }

    friend constexpr bool operator==(const SkRect& a, const SkRect& b) {
        return a.fLeft == b.fLeft && a.fTop == b.fTop && a.fRight == b.fRight && a.fBottom == b.fBottom;
    }
    friend constexpr bool operator!=(const SkRect& a, const SkRect& b) { return !(a == b); }
};
