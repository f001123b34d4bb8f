#pragma once

#include <string>

#include "picture.h"

namespace qxrender {

/// The picture as a straight-alpha 8-bit RGBA PNG file. Throws Failure for an empty picture.
std::string encodePng(const Picture& picture);

/// Reads any PNG that libpng can turn into 8-bit RGBA. Throws Failure.
Picture readPng(const std::string& path);

}  // namespace qxrender
