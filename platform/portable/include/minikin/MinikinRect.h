#pragma once

namespace minikin {

/// Float rectangle in pixels, y down; empty when it has no width or no height.
struct MinikinRect {
    MinikinRect() = default;
    MinikinRect(float left, float top, float right, float bottom)
        : mLeft(left), mTop(top), mRight(right), mBottom(bottom) {}

    bool isEmpty() const { return !(mLeft < mRight && mTop < mBottom); }
    void setEmpty() { *this = MinikinRect(); }
    void offset(float dx, float dy);
    /// Grows to hold other as well. An empty rectangle, on either side, does not take part.
    void join(const MinikinRect& other);

    bool operator==(const MinikinRect& other) const {
        return mLeft == other.mLeft && mTop == other.mTop && mRight == other.mRight && mBottom == other.mBottom;
    }

    float mLeft = 0.0f;
    float mTop = 0.0f;
    float mRight = 0.0f;
    float mBottom = 0.0f;
};

}  // namespace minikin
