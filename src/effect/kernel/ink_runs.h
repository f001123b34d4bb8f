#pragma once

#include <cstdint>
#include <cstring>

namespace QxFontEffect {
namespace kernel {

/// Columns begin..end - 1 of a coverage row, all of them inked. Empty at the row's end.
struct InkRun {
    int begin;
    int end;

    bool empty() const { return begin == end; }
};

/// The first run of non-zero bytes at or after column `from` of a row of `width` columns. Blank stretches, most of a
/// text's box, are skipped eight bytes at a time.
inline InkRun nextInkRun(const uint8_t* row, int from, int width) {
    int begin = from;
    for (uint64_t bytes; begin + 8 <= width; begin += 8) {
        std::memcpy(&bytes, row + begin, sizeof bytes);
        if (bytes != 0) break;
    }
    while (begin < width && row[begin] == 0) ++begin;
    int end = begin;
    while (end < width && row[end] != 0) ++end;
    return {begin, end};
}

}  // namespace kernel
}  // namespace QxFontEffect
