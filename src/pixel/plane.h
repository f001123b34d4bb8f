#pragma once

#include <cstddef>
#include <cstdint>

namespace QxFontEffect {

/// A view of memory somebody else owns: `height` rows of `width` elements, row starts `stride` elements apart.
/// Kernels take and give these and nothing else.
template <typename T>
struct PlaneView {
    T* data;
    int width;
    int height;
    ptrdiff_t stride;

    T* row(int y) const { return data + y * stride; }
};

using Plane8 = PlaneView<uint8_t>;
using ConstPlane8 = PlaneView<const uint8_t>;
using Plane32 = PlaneView<uint32_t>;
using ConstPlane32 = PlaneView<const uint32_t>;
using PlaneF = PlaneView<float>;
using ConstPlaneF = PlaneView<const float>;

}  // namespace QxFontEffect
