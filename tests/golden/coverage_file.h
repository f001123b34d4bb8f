#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace QxFontEffect::test {

/// Text coverage as it was once rasterised, so that no font code takes part when pictures are compared.
struct Coverage {
    int width = 0;
    int height = 0;
    std::vector<uint8_t> pixels;  ///< rows top to bottom
};

/// Reads an 8-bit binary PGM. Empty when that fails.
Coverage readCoverage(const std::string& path);

/// Cuts out width x height pixels at (x, y); what lies outside is 0.
Coverage cut(const Coverage& whole, int x, int y, int width, int height);

}  // namespace QxFontEffect::test
