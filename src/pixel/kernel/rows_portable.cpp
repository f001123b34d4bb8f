#include "pixel/kernel/rows_lanes.h"

namespace QxFontEffect::kernel {

const PixelRows kPortableRows = rowsNamed("portable");

}  // namespace QxFontEffect::kernel
