#pragma once

#include <cstdint>

namespace QxFontEffect {

/// An integer rectangle; `right` and `bottom` lie just outside it.
class QxRect {
public:
    QxRect() = default;
    QxRect(int32_t leftEdge, int32_t topEdge, int32_t rightEdge, int32_t bottomEdge)
        : left(leftEdge), top(topEdge), right(rightEdge), bottom(bottomEdge) {}
    QxRect(const QxRect&) = default;
    QxRect& operator=(const QxRect&) = default;
    virtual ~QxRect() = default;

    int32_t left = 0;
    int32_t top = 0;
    int32_t right = 0;
    int32_t bottom = 0;
};

}  // namespace QxFontEffect
