#pragma once

#include "SkScalar.h"

/// Left, top, right, bottom in whole pixels, y down, far edges outside.
struct SkIRect {
    int32_t fLeft;
    int32_t fTop;
    int32_t fRight;
    int32_t fBottom;

    static constexpr SkIRect MakeEmpty() { return {0, 0, 0, 0}; }
    static constexpr SkIRect MakeLTRB(int32_t l, int32_t t, int32_t r, int32_t b) { return {l, t, r, b}; }
    static constexpr SkIRect MakeWH(int32_t w, int32_t h) { return {0, 0, w, h}; }

    constexpr int32_t left() const { return fLeft; }
    constexpr int32_t top() const { return fTop; }
    constexpr int32_t right() const { return fRight; }
    constexpr int32_t bottom() const { return fBottom; }
    /// For boxes whose sides fit an int.
    constexpr int32_t width() const { return fRight - fLeft; }
    constexpr int32_t height() const { return fBottom - fTop; }
    constexpr bool isEmpty() const { return fLeft >= fRight || fTop >= fBottom; }

    friend constexpr bool operator==(const SkIRect& a, const SkIRect& b) {
        return a.fLeft == b.fLeft && a.fTop == b.fTop && a.fRight == b.fRight && a.fBottom == b.fBottom;
    }
    friend constexpr bool operator!=(const SkIRect& a, const SkIRect& b) { return !(a == b); }
};

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
