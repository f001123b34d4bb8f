#pragma once

#include <minikin/FontFamily.h>

#include <memory>
#include <string>
#include <vector>

namespace qxhost {

/// One face of a font file, and the family that it belongs to.
struct Face {
    std::string file;
    int family = 0;  ///< families are numbered from 0 in the order in which they are asked for glyphs
    int ttcIndex = 0;
    int weight = -1;  ///< -1: as the font says
    int variant = 0;
};

/// Makes the families of a typeface. Faces that cannot be loaded are left out, and families without faces with them.
/// Files are read once and stay in memory for the life of the process, as layouts read them in place.
/// @param languages  locale list of each family.
std::vector<std::shared_ptr<minikin::FontFamily>> makeFamilies(const std::vector<Face>& faces,
                                                               const std::vector<std::string>& languages);

}  // namespace qxhost
