#include "color.h"

#include <cctype>
#include <cstdio>

#include "failure.h"

namespace qxrender {

namespace {

/// Each digit of a short form stands for two equal ones.
uint32_t twice(uint32_t digit) {
    return digit * 17;
}

uint32_t pack(uint32_t alpha, uint32_t red, uint32_t green, uint32_t blue) {
    return alpha << 24 | red << 16 | green << 8 | blue;
}

}  // namespace

uint32_t parseColor(const std::string& text, const std::string& what) {
    const std::string wanted = what + ": '" + text + "' is no colour (#RGB, #RGBA, #RRGGBB or #AARRGGBB)";
    if (text.size() < 4 || text[0] != '#') throw Failure(wanted);
    uint32_t value = 0;
    for (size_t i = 1; i < text.size(); ++i) {
        const unsigned char c = static_cast<unsigned char>(text[i]);
        if (!std::isxdigit(c)) throw Failure(wanted);
        value = value << 4 | static_cast<uint32_t>(std::isdigit(c) ? c - '0' : std::tolower(c) - 'a' + 10);
    }
    const auto digit = [value](int fromRight) { return twice(value >> (4 * fromRight) & 15); };
    switch (text.size() - 1) {
        case 3:
            return pack(255, digit(2), digit(1), digit(0));
        case 4:
            return pack(digit(0), digit(3), digit(2), digit(1));
        case 6:
            return 0xFF000000u | value;
        case 8:
            return value;
        default:
            throw Failure(wanted);
    }
}

std::string formatColor(uint32_t color) {
    char text[10];
    std::snprintf(text, sizeof text, "#%08x", color);
    return text;
}

}  // namespace qxrender
