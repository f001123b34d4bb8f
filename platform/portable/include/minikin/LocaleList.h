#pragma once

#include <cstdint>
#include <string>

namespace minikin {

/// Gives the id of a comma separated list of BCP 47 language tags.
///
/// Ids are process-wide and never freed. They follow the exact string, in order of first registration: "ja" and
/// "ja-JP" are two lists. 0 stands for the empty list and for a string without one usable tag. Thread-safe.
uint32_t registerLocaleList(const std::string& locales);

}  // namespace minikin
