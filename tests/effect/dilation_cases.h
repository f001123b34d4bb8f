#pragma once

#include <cstdint>
#include <vector>

#include "effect/disc_dilation.h"
#include "support/planes.h"
#include "support/random.h"
#include "support/reference/stroke_reference.h"

/// What the tests of both dilations start from, and what the plain loops make of it.
namespace QxFontEffect::test {

inline std::vector<const DilateKernels*> kernelsHere() {
    std::vector<const DilateKernels*> all{&dilateKernelsPortable()};
    if (dilateKernelsAvx2() != nullptr) all.push_back(dilateKernelsAvx2());
    return all;
}

/// Blank, full and partial samples in stretches, with blank rows between: what a line of text looks like.
inline GuardedPlane8 textLike(Rng& rng, int width, int height) {
    GuardedPlane8 plane(width, height);
    for (int y = 0; y < height; ++y) {
        uint8_t current = 0;
        const bool blank = rng.oneIn(3);
        for (int x = 0; x < width && !blank; ++x) {
            if (rng.oneIn(6)) current = rng.oneIn(2) ? uint8_t{0} : rng.oneIn(3) ? rng.byte() : uint8_t{255};
            plane.at(x, y) = current;
        }
    }
    return plane;
}

/// All of the result, which reaches half a disc beyond the area on every side.
inline std::vector<uint8_t> wholeResult(const GuardedPlane8& ink, const DilateArea& area, float radius) {
    std::vector<uint8_t> samples;
    for (int y = 0; y < area.height; ++y)
        for (int x = 0; x < area.width; ++x) {
            const int u = x - area.inkX, v = y - area.inkY;
            const bool within = u >= 0 && v >= 0 && u < ink.width() && v < ink.height();
            const uint8_t c = within ? ink.at(u, v) : uint8_t{0};
            samples.push_back(area.complement ? static_cast<uint8_t>(255 - c) : c);
        }
    const reference::Disc disc = reference::disc(radius);
    std::vector<uint8_t> plane(static_cast<size_t>(area.width + disc.side - 1) *
                               static_cast<size_t>(area.height + disc.side - 1));
    reference::dilate(samples, area.width, area.height, disc, plane);
    return plane;
}

/// All of what the disc reaches, or a part of it.
inline DilateRange randomRange(Rng& rng, const DilateArea& area, int reach) {
    DilateRange range{-reach, -reach, area.width + reach, area.height + reach};
    if (rng.oneIn(2)) return range;
    range.x0 = rng.between(-reach, area.width - 1);
    range.x1 = rng.between(static_cast<int>(range.x0) + 1, area.width + reach);
    range.y0 = rng.between(-reach, area.height - 1);
    range.y1 = rng.between(static_cast<int>(range.y0) + 1, area.height + reach);
    return range;
}

}  // namespace QxFontEffect::test
