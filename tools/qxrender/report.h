#pragma once

#include <string>

#include "render.h"

namespace qxrender {

/// The rendering in numbers, as a JSON document.
std::string formatReport(const Rendering& rendering);

}  // namespace qxrender
