#pragma once

#include <string>

namespace qxrender {

/// Reads a finite decimal number, whatever the process's locale; throws Failure opening with `where`.
double parseNumber(const std::string& text, const std::string& where);

/// The shortest form that reads back the same: "0.1", "100".
std::string formatNumber(double value);

}  // namespace qxrender
