#include "sheet.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace contactsheet {

using qxrender::Picture;

namespace {

Picture blank(int width, int height) {
    Picture picture;
    picture.width = width;
    picture.height = height;
    picture.pixels.resize(static_cast<size_t>(width) * height);
    return picture;
}

int channel(uint32_t pixel, int shift) {
    return static_cast<int>(pixel >> shift & 255);
}

uint32_t average(const Picture& picture, int left, int top, int right, int bottom) {
    int64_t alpha = 0;
    std::array<int64_t, 3> sums{};
    for (int y = top; y < bottom; ++y)
        for (int x = left; x < right; ++x) {
            const uint32_t pixel = picture.at(x, y);
            const int weight = channel(pixel, 24);
            alpha += weight;
            for (int k = 0; k < 3; ++k) sums[static_cast<size_t>(k)] += int64_t{weight} * channel(pixel, 8 * k);
        }
    if (alpha == 0) return 0;
    const int64_t count = int64_t{right - left} * (bottom - top);
    uint32_t result = static_cast<uint32_t>((alpha + count / 2) / count) << 24;
    for (int k = 0; k < 3; ++k)
        result |= static_cast<uint32_t>((sums[static_cast<size_t>(k)] + alpha / 2) / alpha) << (8 * k);
    return result;
}

void paste(const Picture& picture, int left, int top, Picture& sheet) {
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x) sheet.at(left + x, top + y) = picture.at(x, y);
}

}  // namespace

Picture shrunkToFit(const Picture& picture, int width, int height) {
    const double scale = std::min({1.0, static_cast<double>(width) / std::max(picture.width, 1),
                                   static_cast<double>(height) / std::max(picture.height, 1)});
    if (scale >= 1.0) return picture;
    Picture small = blank(std::max(static_cast<int>(picture.width * scale), 1),
                          std::max(static_cast<int>(picture.height * scale), 1));
    const auto edge = [](int i, int from, int to) { return static_cast<int>(int64_t{i} * from / to); };
    for (int y = 0; y < small.height; ++y)
        for (int x = 0; x < small.width; ++x)
            small.at(x, y) =
                average(picture, edge(x, picture.width, small.width), edge(y, picture.height, small.height),
                        edge(x + 1, picture.width, small.width), edge(y + 1, picture.height, small.height));
    return small;
}

Picture makeSheet(const std::vector<Picture>& pictures, const Layout& layout) {
    std::vector<Picture> small;
    std::vector<int> rowHeights;
    for (const Picture& picture : pictures) {
        if (small.size() % static_cast<size_t>(layout.columns) == 0) rowHeights.push_back(0);
        small.push_back(shrunkToFit(picture, layout.cellWidth, layout.cellHeight));
        rowHeights.back() = std::max(rowHeights.back(), small.back().height);
    }
    int height = layout.gap;
    for (const int row : rowHeights) height += row + layout.gap;
    Picture sheet = blank(layout.columns * (layout.cellWidth + layout.gap) + layout.gap, height);

    int top = layout.gap;
    for (size_t i = 0; i < small.size(); ++i) {
        const auto row = i / static_cast<size_t>(layout.columns);
        const int column = static_cast<int>(i % static_cast<size_t>(layout.columns));
        const int left = layout.gap + column * (layout.cellWidth + layout.gap);
        paste(small[i], left + (layout.cellWidth - small[i].width) / 2, top + (rowHeights[row] - small[i].height) / 2,
              sheet);
        if (column == layout.columns - 1) top += rowHeights[row] + layout.gap;
    }
    flattenOnto(sheet, layout.background);
    return sheet;
}

}  // namespace contactsheet
