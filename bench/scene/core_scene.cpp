#include "scene/core_scene.h"

#include <cstring>

#include "effect/QxText.h"

namespace qxbench {

using namespace QxFontEffect;

namespace {

constexpr uint32_t kTextColor = 0xFF2040C0u;

// Pixman takes coverage only in rows of whole 4-byte words.
unsigned roundedWidth(int width) {
    return static_cast<unsigned>((width + 3) / 4 * 4);
}

size_t bytesOf(const QxBitmap& bitmap) {
    return size_t{bitmap.width} * bitmap.height * bitmap.bytesPerPixel;
}

}  // namespace

Margins marginsOf(QxECoreBase& core) {
    return {core.getLeftOffset(), core.getTopOffset(), core.getRightOffset(), core.getBottomOffset()};
}

CoreScene::CoreScene(const Mask& mask, const Margins& margins, Ground ground)
    : coverage(roundedWidth(mask.width + margins.left + margins.right),
               static_cast<unsigned>(mask.height + margins.top + margins.bottom), 1),
      output(coverage.width, coverage.height, 4),
      rect(margins.left, margins.top, margins.left + mask.width, margins.top + mask.height) {
    for (int y = 0; y < mask.height; ++y)
        std::memcpy(coverage.pixels + static_cast<size_t>(rect.top + y) * coverage.width + rect.left,
                    mask.plane().row(y), static_cast<size_t>(mask.width));
    if (ground == Ground::Text) {
        QxText fill;
        QxTextProperty property(kTextColor, 1.0f);
        fill.setProperty(&property);
        ParamPostProcessing p = params();
        fill.doPostProcessing(&p);
    }
    mBefore.assign(output.pixels, output.pixels + bytesOf(output));
}

void CoreScene::reset() {
    std::memcpy(output.pixels, mBefore.data(), mBefore.size());
}

ConstPlane8 CoreScene::ink() const {
    const ptrdiff_t stride = coverage.width;
    return {coverage.pixels + rect.top * stride + rect.left, rect.right - rect.left, rect.bottom - rect.top, stride};
}

std::vector<float> CoreScene::result() const {
    return numbersOf(output.pixels, bytesOf(output));
}

std::vector<float> numbersOf(const uint8_t* bytes, size_t count) {
    return std::vector<float>(bytes, bytes + count);
}

}  // namespace qxbench
