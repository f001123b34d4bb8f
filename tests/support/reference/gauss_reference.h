#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

/// The integer bell and its blur in their plainest loops.
namespace QxFontEffect::test::reference {

struct Bell {
    int radius;
    int64_t sum;
    std::vector<int> weights;  // from the centre outwards

    int at(int distance) const { return weights[static_cast<size_t>(std::abs(distance))]; }
};

inline Bell bell(int radius, float peak) {
    Bell made{radius, static_cast<int64_t>(peak), {static_cast<int>(peak)}};
    const float q = static_cast<float>(radius) * static_cast<float>(radius) / 4.60517f;
    for (int i = 1; i <= radius; ++i) {
        const float value = std::exp(-static_cast<float>(i * i) / q) * peak;
        made.weights.push_back(static_cast<int>(static_cast<double>(value) + 0.5));
        made.sum += 2 * made.weights.back();
    }
    return made;
}

/// A byte plane without row padding.
struct Grey {
    Grey(int64_t planeWidth, int64_t planeHeight, uint8_t value = 0)
        : width(static_cast<int>(planeWidth)),
          height(static_cast<int>(planeHeight)),
          samples(static_cast<size_t>(planeWidth * planeHeight), value) {}

    uint8_t& at(int x, int y) {
        return samples[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)];
    }
    uint8_t at(int x, int y) const {
        return samples[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)];
    }

    int width;
    int height;
    std::vector<uint8_t> samples;
};

/// One row of a blur: the vertical pass into a line whose ends hold `edge`, the sums of the horizontal pass out of it.
/// Sums exist for the columns radius .. width - radius - 1.
inline std::vector<int64_t> blurredRowSums(const Grey& src, const Bell& bell, int y, uint8_t edge) {
    const int r = bell.radius;
    std::vector<int64_t> line(static_cast<size_t>(src.width), edge), sums(line.size());
    for (int x = r; x < src.width - r; ++x) {
        int64_t total = bell.at(0) * src.at(x, y);
        for (int i = 1; i <= r; ++i) total += bell.at(i) * (src.at(x, y - i) + src.at(x, y + i));
        line[static_cast<size_t>(x)] = total / bell.sum;
    }
    for (int x = r; x < src.width - r; ++x)
        for (int i = -r; i <= r; ++i) sums[static_cast<size_t>(x)] += bell.at(i) * line[static_cast<size_t>(x + i)];
    return sums;
}

}  // namespace QxFontEffect::test::reference
