#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>

#include "effect/QxBevel.h"
#include "effect/exact_distances.h"
#include "effect/kernel/gauss_weights.h"
#include "peers/peers.h"
#include "plain/plain.h"
#include "rows/rows.h"

namespace qxbench {

using namespace QxFontEffect;

namespace {

/// A mask with a frame of the radius around it, which the blur reads but does not write.
struct BlurScene {
    BlurScene(const Mask& mask, int blurRadius)
        : radius(blurRadius),
          width(mask.width + 2 * radius),
          height(mask.height + 2 * radius),
          source(static_cast<size_t>(width) * static_cast<size_t>(height)),
          output(source.size()) {
        for (int y = 0; y < mask.height; ++y) std::copy_n(mask.plane().row(y), mask.width, inside(source).row(y));
    }

    Plane8 inside(std::vector<uint8_t>& bytes) const {
        return {bytes.data() + ptrdiff_t{radius} * width + radius, width - 2 * radius, height - 2 * radius, width};
    }
    ConstPlane8 ink() {
        const Plane8 plane = inside(source);
        return {plane.data, plane.width, plane.height, plane.stride};
    }

    int radius, width, height;
    std::vector<uint8_t> source, output;
};

Row blurRow(const Mask& mask, int radius) {
    return {"blur", mask.name, std::to_string(radius), mask.pixels(), [&mask, radius] {
                const auto scene = std::make_shared<BlurScene>(mask, radius);
                const Plane8 dst = scene->inside(scene->output);
                Case work;
                work.ours = [scene] {
                    QxBevel::blur(scene->source.data(), scene->output.data(), scene->width, scene->height,
                                  scene->radius);
                };
                work.plain = [scene, dst] { plain::blur(scene->ink(), scene->radius, kSoftPeak, dst); };
                work.peer = peers::blur(scene->ink(), radius, kSoftPeak, dst);
                work.result = [scene] { return std::vector<float>(scene->output.begin(), scene->output.end()); };
                return work;
            }};
}

/// A map whose rows are whole blocks.
struct DistanceScene {
    explicit DistanceScene(const Mask& mask)
        : width(mask.width),
          height(mask.height),
          stride(distanceBlocks(width) * ptrdiff_t{kDistanceBlock}),
          samples(static_cast<size_t>(stride) * static_cast<size_t>(height)) {}

    PlaneF map() { return {samples.data(), width, height, stride}; }
    std::vector<float> withoutMargin() const {
        std::vector<float> all;
        for (int y = 0; y < height; ++y) {
            const auto row = samples.begin() + y * stride;
            all.insert(all.end(), row, row + width);
        }
        return all;
    }

    int width, height;
    ptrdiff_t stride;
    std::vector<float> samples;
};

Row distanceRow(const Mask& mask, int radius) {
    return {"distance transform", mask.name, std::to_string(radius), mask.pixels(), [&mask, radius] {
                const auto scene = std::make_shared<DistanceScene>(mask);
                const PlaneF map = scene->map();
                Case work;
                work.ours = [&mask, radius, map] {
                    ExactDistances rows({mask.plane(), 0, 0}, false, radius, map.width, map.height);
                    for (int y = 0; y < map.height; ++y) rows.next(map.row(y));
                };
                work.plain = [&mask, radius, map] { plain::distances(mask.plane(), radius, map); };
                work.peer = peers::distances(mask.plane(), radius, map);
                work.result = [scene] { return scene->withoutMargin(); };
                // The library's square root is good to 0.2 per cent.
                work.peerSlack = 0.002 * radius;
                return work;
            }};
}

}  // namespace

void addKernelRows(const std::vector<Mask>& masks, Rows& rows) {
    for (const Mask& mask : masks) {
        for (const int radius : {5, 20, 100}) rows.push_back(blurRow(mask, radius));
        for (const int radius : {11, 34, 68}) rows.push_back(distanceRow(mask, radius));
    }
}

}  // namespace qxbench
