#include "numbers.h"

#include <charconv>
#include <cmath>
#include <cstdint>

#include "failure.h"

namespace qxrender {

double parseNumber(const std::string& text, const std::string& where) {
    double value = 0;
    const char* end = text.data() + text.size();
    const char* begin = text.data() + (text.size() > 1 && text[0] == '+' ? 1 : 0);
    const auto result = std::from_chars(begin, end, value);
    if (result.ec != std::errc() || result.ptr != end || !std::isfinite(value))
        throw Failure(where + ": '" + text + "' is not a number");
    return value;
}

std::string formatNumber(double value) {
    char text[32];
    // Plain digits for whole numbers, where the shortest form would be 1e+05.
    const bool whole = value == std::floor(value) && std::abs(value) < 1e9;
    const auto result = whole ? std::to_chars(text, text + sizeof text, static_cast<int64_t>(value))
                              : std::to_chars(text, text + sizeof text, value);
    return std::string(text, result.ptr);
}

}  // namespace qxrender
