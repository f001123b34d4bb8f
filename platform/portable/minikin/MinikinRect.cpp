#include <minikin/MinikinRect.h>

#include <algorithm>

namespace minikin {

void MinikinRect::offset(float dx, float dy) {
    mLeft += dx;
    mTop += dy;
    mRight += dx;
    mBottom += dy;
}

void MinikinRect::join(const MinikinRect& other) {
    if (other.isEmpty()) return;
    if (isEmpty()) {
        *this = other;
        return;
    }
    mLeft = std::min(mLeft, other.mLeft);
    mTop = std::min(mTop, other.mTop);
    mRight = std::max(mRight, other.mRight);
    mBottom = std::max(mBottom, other.mBottom);
}

}  // namespace minikin
