#include <memory>

#include "peers/peers.h"
#include "pixel/QxBlender.h"
#include "pixel/kernel/layers.h"
#include "plain/plain.h"
#include "rows/rows.h"
#include "scene/blend_scene.h"

namespace qxbench {

using namespace QxFontEffect;

namespace {

constexpr int kTextAlpha = 255;

using Scene = std::shared_ptr<BlendScene>;

const uint8_t* layerOf(const BlendScene& scene) {
    return reinterpret_cast<const uint8_t*>(scene.colors.data());
}

Plane32 outputPlane(BlendScene& scene) {
    return {reinterpret_cast<uint32_t*>(scene.output.pixels), scene.width, scene.height, scene.width};
}

/// @param fill  void(const Scene&, Case&): sets the contenders.
template <typename Fill>
Row layerRow(const char* name, const Mask& mask, Fill fill) {
    return {name, mask.name, "", mask.pixels(), [&mask, fill] {
                const Scene scene = std::make_shared<BlendScene>(mask);
                Case work;
                work.reset = [scene] { scene->reset(); };
                work.result = [scene] { return scene->result(); };
                fill(scene, work);
                return work;
            }};
}

void fillComposition(const Scene& scene, Case& work) {
    work.ours = [scene] {
        kernel::composeLayers(layerOf(*scene), scene->mask.data(), kTextAlpha, scene->output.pixels, scene->pixels());
    };
    work.plain = [scene] {
        plain::compose(layerOf(*scene), scene->mask.data(), scene->output.pixels, scene->pixels());
        plain::unpremultiply(kTextAlpha, scene->output.pixels, scene->pixels());
    };
}

void fillUnpremultiply(const Scene& scene, Case& work) {
    work.ours = [scene] { kernel::unpremultiplyRow(kTextAlpha, scene->output.pixels, scene->pixels()); };
    work.plain = [scene] { plain::unpremultiply(kTextAlpha, scene->output.pixels, scene->pixels()); };
    work.peer = peers::unpremultiply(outputPlane(*scene));
}

void fillSwap(const Scene& scene, Case& work) {
    work.ours = [scene] { QxBlender::convertBGRAToARGB(&scene->output); };
    work.plain = [scene] { plain::swapRedBlue(scene->output.pixels, scene->pixels()); };
    work.peer = peers::swapRedBlue(outputPlane(*scene));
}

}  // namespace

void addLayerRows(const std::vector<Mask>& masks, Rows& rows) {
    for (const Mask& mask : masks) {
        rows.push_back(layerRow("layer composition", mask, fillComposition));
        rows.push_back(layerRow("un-premultiply", mask, fillUnpremultiply));
        rows.push_back(layerRow("channel swap", mask, fillSwap));
    }
}

}  // namespace qxbench
