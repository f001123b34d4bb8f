#pragma once

#include <string>

#include "picture.h"

namespace qxrender {

/// Writes a straight-alpha 8-bit RGBA PNG. The file appears whole under its name or not at all. Throws Failure.
void writePng(const std::string& path, const Picture& picture);

/// Reads any PNG that libpng can turn into 8-bit RGBA. Throws Failure.
Picture readPng(const std::string& path);

}  // namespace qxrender
