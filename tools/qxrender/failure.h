#pragma once

#include <stdexcept>
#include <string>
#include <system_error>

namespace qxrender {

/// What the user did wrong or the machine refused, in one line fit for stderr. Ends the program with exit code 2.
class Failure : public std::runtime_error {
public:
    explicit Failure(const std::string& line) : std::runtime_error(line) {}
};

/// What a value of errno means.
inline std::string errorText(int number) {
    return std::generic_category().message(number);
}

}  // namespace qxrender
