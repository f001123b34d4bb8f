#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <minikin/Layout.h>

namespace minikin {

/// Consecutive UTF-16 units, the end excluded.
struct UnitRange {
    size_t start;
    size_t end;
    size_t length() const { return end - start; }
};

/// Part of a line that reads in one direction.
struct DirectionRun {
    UnitRange range;
    bool rightToLeft;
};

/// Splits a line of a paragraph into runs of one direction, in the order they stand on screen from left to right.
///
/// @param text   the paragraph, count units: it decides the direction, and runs of it are cut to the line.
/// @param line   within the paragraph.
std::vector<DirectionRun> directionRuns(const uint16_t* text, size_t count, UnitRange line, Bidi bidi);

}  // namespace minikin
