#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

namespace QxFontEffect::test {

/// The end of a rendering in the plainest loops, for pictures of one size: the layer shows outside the glyphs, then
/// colour is scaled by the text's alpha and made straight. Pixels are R, G, B, A bytes; `layer` is empty in plain mode.
inline void composeRef(const std::vector<uint8_t>& layer, const std::vector<uint8_t>& coverage, int textAlpha,
                       std::vector<uint8_t>& output) {
    const size_t pixels = output.size() / 4;
    for (size_t i = 0; i < pixels && !layer.empty(); ++i) {
        const int c = coverage[i];
        for (size_t k = 4 * i; k < 4 * i + 4; ++k) {
            const int outside = (layer[k] + 1) * (255 - c) >> 8;
            const int inside = (output[k] + 1) * c >> 8;
            output[k] = static_cast<uint8_t>(std::min(outside + inside, 255));
        }
    }
    for (size_t i = 0; i < pixels; ++i) {
        uint8_t* pixel = &output[4 * i];
        const int alpha = ((pixel[3] + 1) * textAlpha) >> 8;
        for (int k = 0; k < 3; ++k)
            pixel[k] = alpha == 0
                           ? uint8_t{0}
                           : static_cast<uint8_t>(std::min((((pixel[k] + 1) * textAlpha) & 0xFF00) / alpha, 255));
        pixel[3] = static_cast<uint8_t>(alpha);
    }
}

}  // namespace QxFontEffect::test
