#pragma once

#include <cstdint>
#include <cstring>
#include <vector>

#include "effect/QxECoreBase.h"
#include "pixel/QxBitmap.h"
#include "pixel/QxRect.h"
#include "pixel/plane.h"
#include "support/random.h"

namespace QxFontEffect::test {

/// What one core is run on: coverage, a destination of the same size, and a text rectangle that is the whole of it at
/// first. A copy has pixels of its own.
struct CorePicture {
    CorePicture(int width, int height)
        : coverage(static_cast<unsigned>(width), static_cast<unsigned>(height), 1),
          output(static_cast<unsigned>(width), static_cast<unsigned>(height), 4),
          rect(0, 0, width, height) {}

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

}  // namespace QxFontEffect::test
