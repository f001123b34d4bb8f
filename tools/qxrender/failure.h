#pragma once

#include <stdexcept>
#include <string>

namespace qxrender {

/// What the user did wrong or the machine refused, in one line fit for stderr. Ends the program with exit code 2.
class Failure : public std::runtime_error {
public:
    explicit Failure(const std::string& line) : std::runtime_error(line) {}
};

}  // namespace qxrender
