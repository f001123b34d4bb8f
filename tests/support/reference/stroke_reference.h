#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "effect/ParamPostProcessing.h"
#include "effect/QxStrokeProperty.h"
#include "pixel/QxBlender.h"
#include "support/reference/coverage_reference.h"

/// The stroke in its plainest loops.
namespace QxFontEffect::test::reference {

struct Disc {
    int side;
    std::vector<uint8_t> cells;
};

inline uint8_t discCell(float value) {
    const float scaled = std::min(std::max(value, 0.0f), 1.0f) * 255.0f + 0.5f;
    return scaled > 255.0f ? uint8_t{255} : static_cast<uint8_t>(scaled);
}

inline Disc disc(float radius) {
    const int reach = static_cast<int>(radius + 0.5f);
    Disc made{2 * reach + 1, {}};
    for (int i = 0; i < made.side; ++i)
        for (int j = 0; j < made.side; ++j) {
            const int squared = (i - reach) * (i - reach) + (j - reach) * (j - reach);
            made.cells.push_back(discCell(radius - std::sqrt(static_cast<float>(squared)) + 1.0f));
        }
    made.cells[static_cast<size_t>(reach * made.side + reach)] = discCell(radius);
    return made;
}

/// Spreads each source value over the disc around it. `plane` is larger than `src` by half a disc on every side.
inline void dilate(const std::vector<uint8_t>& src, int width, int height, const Disc& disc,
                   std::vector<uint8_t>& plane) {
    const int planeWidth = width + disc.side - 1;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (int i = 0; i < disc.side; ++i)
                for (int j = 0; j < disc.side; ++j) {
                    const int cell = disc.cells[static_cast<size_t>(i * disc.side + j)];
                    uint8_t& d = plane[static_cast<size_t>((y + i) * planeWidth + x + j)];
                    const int given = src[static_cast<size_t>(y * width + x)];
                    if (d < 255) d = static_cast<uint8_t>(std::max<int>(d, cell == 255 ? given : cell - 255 + given));
                }
}

inline void stroke(const QxStrokeProperty& property, const ParamPostProcessing& p) {
    const QxRect& rect = *p.textRect;
    const bool centered = property.position == 0, outside = property.position == 1;
    const Disc kernel = disc(centered ? property.size * 0.5f : property.size);
    const int half = kernel.side >> 1;

    const int width = rect.right - rect.left + 2, height = rect.bottom - rect.top + 2;
    std::vector<uint8_t> padded, complement;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const bool frame = x == 0 || y == 0 || x == width - 1 || y == height - 1;
            padded.push_back(frame ? uint8_t{0} : coverageAt(*p.srcBitmap, rect.left + x - 1, rect.top + y - 1));
            complement.push_back(static_cast<uint8_t>(255 - padded.back()));
        }

    const int planeWidth = width + 2 * half, planeHeight = height + 2 * half;
    std::vector<uint8_t> grown(static_cast<size_t>(planeWidth) * planeHeight), shrunk = grown;
    if (centered || outside) dilate(padded, width, height, kernel, grown);
    if (!outside) dilate(complement, width, height, kernel, shrunk);
    std::vector<uint8_t> plane = outside ? grown : shrunk;
    for (size_t i = 0; centered && i < plane.size(); ++i) plane[i] = std::min(grown[i], shrunk[i]);

    const int mode = centered && p.layerMode != 1 ? QXE_BLEND_SRC_OVER : QXE_BLEND_DST_OVER;
    for (QxBitmap* target : {p.dstBitmap, p.baseBitmap})
        if (target != nullptr)
            QxBlender::drawBitmapBlend8(rect.left - 1 - half, rect.top - 1 - half, target, plane.data(), planeWidth,
                                        planeHeight, planeWidth, property.color, mode);
}

}  // namespace QxFontEffect::test::reference
