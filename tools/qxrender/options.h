#pragma once

#include <optional>
#include <string>

#include "job.h"

namespace qxrender {

/// What the command line asks for.
struct Options {
    Job job;
    std::string output;     ///< PNG; empty when only a style is to be saved
    std::string saveStyle;  ///< empty: not wanted
    std::optional<uint32_t> background;
    std::optional<int> trim;  ///< pixels to leave around the ink
    bool report = false;
    bool verbose = false;  ///< let the library's log through to stderr
};

/// Parses the command line. Nothing to do (after --help and the like) gives an empty result. Throws Failure.
std::optional<Options> parseOptions(int argc, char** argv);

}  // namespace qxrender
