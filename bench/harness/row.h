#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace qxbench {

using Step = std::function<void()>;

/// Work that is measured, with everything it needs. Several contenders do the same work on the same memory.
struct Case {
    Step reset;  ///< puts the memory back as it was; before every execution, not measured
    Step ours;   ///< the library
    Step plain;  ///< the plain loops, same bytes; empty where there are none
    Step peer;   ///< another library, nearly the same result; empty where there is none

    /// What the last execution left: bytes, or lengths in pixels.
    std::function<std::vector<float>()> result;
    /// Largest mean difference between the peer's result and ours, in units of `result`, that still counts as the
    /// same work.
    double peerSlack = 4.0;
};

/// A line of the table, made only when it is wanted.
struct Row {
    std::string effect;
    std::string mask;
    std::string parameter;  ///< radius, width or size in pixels; "" where there is none
    int64_t pixels;         ///< of the mask
    std::function<Case()> make;
    /// Pixels of the area that an effect works on, 0 where its memory is not measured.
    int64_t workingPixels = 0;

    std::string name() const { return effect + " " + mask + (parameter.empty() ? "" : " " + parameter); }
};

using Rows = std::vector<Row>;

}  // namespace qxbench
