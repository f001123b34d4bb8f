#pragma once

#include <cstddef>
#include <string>

namespace qxrender {

/// The whole file, or standard input for "-". Throws Failure, which calls it `what`: cannot be read, or is larger than
/// `limit` bytes.
std::string readInputFile(const char* what, const std::string& path, size_t limit);

}  // namespace qxrender
