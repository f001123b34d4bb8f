#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

#include "effect/QxECoreBase.h"
#include "pixel/QxBitmap.h"
#include "pixel/QxRect.h"
#include "pixel/plane.h"
#include "support/planes.h"
#include "support/random.h"

namespace QxFontEffect::test {

/// What one core is run on: coverage, a destination of the same size, and a text rectangle that is the whole of it at
/// first. A copy has pixels of its own.
struct CorePicture {
    CorePicture(int width, int height)
        : coverage(static_cast<unsigned>(width), static_cast<unsigned>(height), 1),
          output(static_cast<unsigned>(width), static_cast<unsigned>(height), 4),
          rect(0, 0, width, height) {}

    /// Up to `mostWidth` x `mostHeight` pixels with random ink, some of them on paint; one output in three is of
    /// another size.
    static CorePicture random(Rng& rng, int mostWidth, int mostHeight) {
        CorePicture picture(rng.between(1, mostWidth), rng.between(1, mostHeight));
        picture.inkAtRandom(rng);
        if (rng.oneIn(3)) picture.output = QxBitmap(rng.below(100) + 1u, rng.below(70) + 1u, 4);
        if (!rng.oneIn(3)) picture.paintAtRandom(rng);
        return picture;
    }

    /// Somewhere in the picture and up to `beyond` pixels over its edges; now and then empty, or all of the picture.
    void rectAtRandom(Rng& rng, int beyond = 0) {
        if (rng.oneIn(4)) return;
        rect.left = rng.between(-beyond, rect.right);
        rect.top = rng.between(-beyond, rect.bottom);
        rect.right = rng.between(rect.left, rect.right + beyond);
        rect.bottom = rng.between(rect.top, rect.bottom + beyond);
    }

    /// Points into this picture.
    ParamPostProcessing params(int32_t layerMode = 0) { return {&output, &coverage, &rect, layerMode, nullptr}; }

    void runs(QxECoreBase& core, int32_t layerMode = 0) {
        ParamPostProcessing record = params(layerMode);
        core.doPostProcessing(&record);
    }

    uint8_t& ink(int x, int y) {
        return coverage.pixels[static_cast<size_t>(y) * coverage.width + static_cast<size_t>(x)];
    }

    /// Byte k of an output pixel: R, G, B, A.
    uint8_t& out(int x, int y, int k) {
        return output
            .pixels[(static_cast<size_t>(y) * output.width + static_cast<size_t>(x)) * 4 + static_cast<size_t>(k)];
    }

    /// The output as values with red lowest and alpha highest, for comparison.
    ConstPlane32 outputPlane() {
        values.resize(size_t{output.width} * output.height);
        if (!values.empty()) std::memcpy(values.data(), output.pixels, values.size() * 4);
        return {values.data(), static_cast<int>(output.width), static_cast<int>(output.height),
                static_cast<ptrdiff_t>(output.width)};
    }

    bool blank() const {
        for (size_t i = 0; i < size_t{output.width} * output.height * 4; ++i)
            if (output.pixels[i] != 0) return false;
        return true;
    }

    /// Glyph-like coverage: blank, full and partial pixels in runs.
    void inkAtRandom(Rng& rng) {
        uint8_t current = 0;
        for (size_t i = 0; i < size_t{coverage.width} * coverage.height; ++i) {
            if (rng.oneIn(4)) current = rng.oneIn(2) ? uint8_t{0} : rng.oneIn(2) ? uint8_t{255} : rng.byte();
            coverage.pixels[i] = current;
        }
    }

    void inkAll(uint8_t value) { std::fill_n(coverage.pixels, size_t{coverage.width} * coverage.height, value); }

    /// A ring around the middle with soft edges, `thickness` pixels to either side of `radius`: a disc if that is 0.
    void inkRing(float radius, float thickness) {
        const float cx = static_cast<float>(coverage.width / 2), cy = static_cast<float>(coverage.height / 2);
        for (int y = 0; y < static_cast<int>(coverage.height); ++y)
            for (int x = 0; x < static_cast<int>(coverage.width); ++x) {
                const float distance = std::hypot(static_cast<float>(x) - cx, static_cast<float>(y) - cy);
                const float cover = std::clamp(thickness - std::fabs(distance - radius) + 0.5f, 0.0f, 1.0f);
                ink(x, y) = static_cast<uint8_t>(cover * 255.0f);
            }
    }

    /// Premultiplied colour everywhere, as cores before this one leave it; a quarter stays blank.
    void paintAtRandom(Rng& rng) {
        for (size_t i = 0; i < size_t{output.width} * output.height; ++i) {
            uint8_t* pixel = output.pixels + 4 * i;
            const uint32_t alpha = rng.oneIn(4) ? 0 : rng.oneIn(3) ? 255 : rng.byte();
            for (int k = 0; k < 3; ++k) pixel[k] = static_cast<uint8_t>(rng.below(alpha + 1));
            pixel[3] = static_cast<uint8_t>(alpha);
        }
    }

    QxBitmap coverage;
    QxBitmap output;
    QxRect rect;
    std::vector<uint32_t> values;
};

/// Draws a record with a core of its own.
template <typename Core, typename Record>
void drawWith(CorePicture& picture, Record record, int32_t layerMode = 0) {
    Core core;
    core.setProperty(&record);
    picture.runs(core, layerMode);
}

/// Whether a core makes of a picture what the plain loops make of it.
///
/// @param reference  void(const Record&, const ParamPostProcessing&).
/// @param context    what a failure says beside the rectangle.
template <typename Core, typename Record, typename Reference, typename... Context>
::testing::AssertionResult drawsLike(Reference reference, CorePicture picture, const Record& record, int32_t layerMode,
                                     const Context&... context) {
    CorePicture wanted = picture;
    reference(record, wanted.params(layerMode));
    drawWith<Core>(picture, record, layerMode);
    const QxRect& rect = picture.rect;
    return samePlane(wanted.outputPlane(), picture.outputPlane(), context..., "rectangle", rect.left, rect.top,
                     rect.right, rect.bottom);
}

}  // namespace QxFontEffect::test
