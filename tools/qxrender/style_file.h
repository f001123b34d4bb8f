#pragma once

#include <string>

#include "job.h"

namespace qxrender {

/// Reads a style document (docs/style.schema.json). Members that are unknown or of the wrong type end in a Failure
/// that names the file and the member's path; numbers beyond a range are taken and left to the library to clamp.
/// Pattern files are found relative to the document.
Style readStyle(const std::string& path);

/// The document of a style: every parameter written out, ready to be read back.
std::string formatStyle(const Style& style);

}  // namespace qxrender
