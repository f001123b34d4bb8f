#pragma once

#include <string>
#include <vector>

namespace qxrender {

struct FontRequest {
    std::string file;    ///< a font file; empty: by family
    std::string family;  ///< a family name that fontconfig knows; empty: its sans-serif
    int weight = 400;    ///< 1..1000
    bool italic = false;
    std::string languages;  ///< BCP 47 tags, comma separated; decides between fonts that cover the same characters
};

struct FontChoice {
    std::string userFont;     ///< file to put before the system families; empty when they are enough
    bool fakeBold = false;    ///< the face found is lighter than asked for
    bool fakeItalic = false;  ///< the face found is upright
};

/// Finds the fonts for a text and hands the library its system families: the family asked for (or the default),
/// then one for every script of the text, emoji and symbols included. The families are the process's: only the first
/// call chooses them, and it has to come before any text is set.
///
/// @param text  the code points to be drawn.
/// Throws Failure: a family that is not installed, a file that is missing or no font.
FontChoice prepareFonts(const FontRequest& request, const std::vector<char32_t>& text);

}  // namespace qxrender
