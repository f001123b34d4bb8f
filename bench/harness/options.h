#pragma once

#include <string>

#include "harness/measure.h"

namespace qxbench {

struct Options {
    std::string filter;  ///< only rows whose name has it; empty for all
    std::string json;    ///< file for the same figures, empty for none
    bool check = false;
    bool peers = false;
    bool plain = false;
    Effort effort;
};

/// Reads the command line. Ends the process after --help and on anything it does not know.
Options readOptions(int argc, char** argv);

}  // namespace qxbench
