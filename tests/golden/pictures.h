#pragma once

#include <string>
#include <vector>

#include "picture.h"

namespace QxFontEffect::test {

struct NamedPicture {
    std::string name;
    qxrender::Picture picture;
};

/// Draws every picture of docs/gallery/pictures.txt, its variants one below the other, and every style of styles/ over
/// stored coverage, so that no font takes part.
///
/// @param root  the project's folder.
std::vector<NamedPicture> drawPictures(const std::string& root);

}  // namespace QxFontEffect::test
