#pragma once

#include <string>
#include <vector>

namespace qxrender {

/// Reads a UTF-8 file whole ("-" is standard input); a byte order mark and one newline at the end are dropped.
/// Throws Failure.
std::string readTextFile(const std::string& path);

/// Decodes UTF-8; throws Failure for anything malformed, for NUL and beyond 64 MiB.
std::vector<char32_t> decodeText(const std::string& utf8);

}  // namespace qxrender
