#pragma once

#include <optional>
#include <string>
#include <vector>

namespace qxrender {

/// One face of a font file.
struct Face {
    std::string file;
    int index = 0;     ///< within a collection
    int weight = 400;  ///< 1..1000
    bool italic = false;
};

/// The installed face nearest to family, weight and slant. Empty when no family of that name is installed; an empty
/// name or a generic one (sans-serif, serif, monospace) always finds something, if any font is installed.
std::optional<Face> matchFamily(const std::string& family, int weight, bool italic);

/// All upright, static faces of the family that `face` belongs to, lightest first.
std::vector<Face> uprightFacesOf(const Face& face);

/// A regular face that covers the characters, preferring the language (a fontconfig tag, may be empty).
std::optional<Face> matchCharacters(const std::vector<char32_t>& characters, const std::string& language, bool color);

/// Reads weight and slant of a font file. Empty when it is no font.
std::optional<Face> inspectFile(const std::string& file);

}  // namespace qxrender
