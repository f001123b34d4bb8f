#pragma once

#include "SkScalar.h"

struct SkPoint {
    SkScalar fX;
    SkScalar fY;

    static constexpr SkPoint Make(SkScalar x, SkScalar y) { return {x, y}; }

    constexpr SkScalar x() const { return fX; }
    constexpr SkScalar y() const { return fY; }
    void set(SkScalar x, SkScalar y) {
        fX = x;
        fY = y;
    }
};
