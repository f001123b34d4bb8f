#pragma once

#include "harness/options.h"
#include "harness/report.h"

namespace qxbench {

/// Whole renders of long texts through text objects: 500 and 5,000 lines that end in newlines, and as many of one
/// wrapped paragraph. The time a line takes should not depend on their number. With `check` just a few lines, and no
/// figures.
/// @return false where a text does not draw.
bool measureTextPath(const Options& options, Report& report);

/// Bytes of an idle text object, most bytes of one render, and most bytes of each effect on each pixel of its working
/// area. Rows without a working area are passed over.
void measureMemory(const Options& options, const Rows& rows, Report& report);

}  // namespace qxbench
