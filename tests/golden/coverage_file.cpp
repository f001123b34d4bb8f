#include "golden/coverage_file.h"

#include <cstdio>
#include <memory>

namespace QxFontEffect::test {

Coverage readCoverage(const std::string& path) {
    Coverage coverage;
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"), std::fclose);
    int maximum = 0;
    if (file == nullptr || std::fscanf(file.get(), "P5 %d %d %d", &coverage.width, &coverage.height, &maximum) != 3 ||
        maximum != 255 || coverage.width < 1 || coverage.height < 1 || coverage.width > 10000 ||
        coverage.height > 10000)
        return {};
    std::fgetc(file.get());  // the one blank that ends the header
    coverage.pixels.resize(static_cast<size_t>(coverage.width) * static_cast<size_t>(coverage.height));
    if (std::fread(coverage.pixels.data(), 1, coverage.pixels.size(), file.get()) != coverage.pixels.size()) return {};
    return coverage;
}

Coverage cut(const Coverage& whole, int x, int y, int width, int height) {
    Coverage part;
    part.width = width;
    part.height = height;
    part.pixels.resize(static_cast<size_t>(width) * static_cast<size_t>(height));
    for (int row = 0; row < height; ++row)
        for (int column = 0; column < width; ++column) {
            const int sourceX = x + column;
            const int sourceY = y + row;
            if (sourceX < 0 || sourceY < 0 || sourceX >= whole.width || sourceY >= whole.height) continue;
            part.pixels[static_cast<size_t>(row) * static_cast<size_t>(width) + static_cast<size_t>(column)] =
                whole.pixels[static_cast<size_t>(sourceY) * static_cast<size_t>(whole.width) +
                             static_cast<size_t>(sourceX)];
        }
    return part;
}

}  // namespace QxFontEffect::test
