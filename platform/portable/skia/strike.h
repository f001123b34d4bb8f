#pragma once

#include <ft2build.h>
#include FT_FREETYPE_H

#include "SkFont.h"
#include "face_typeface.h"

namespace portable {

/// How FreeType has to be driven so that a font's glyphs come out as the platform draws them.
struct Strike {
    FaceSetting setting;
    FT_Int32 loadFlags = 0;
    /// 1-bit masks instead of antialiased ones.
    bool aliased = false;
    bool embolden = false;
    /// Advances straight from the design units instead of fitted to pixels.
    bool linearAdvance = false;
    /// x position in quarter pixels.
    bool subpixel = false;
    /// Too large for masks: glyphs are drawn as paths, made `pathScale` times as large as the strike.
    bool asPath = false;
    double pathScale = 1;
    /// Size of the font's picture for faces that have nothing but bitmaps.
    double sizeX = 0;
    double sizeY = 0;
    /// Columns to the right per row down.
    double skewX = 0;
};

/// Works out the strike of a font, leaving its typeface aside.
///
/// Above 256 px in either direction glyphs are taken as unhinted outlines of 64 px and enlarged.
///
/// @return false when the font draws nothing: size or stretch is 0, too small for FreeType's 1/64 px, not finite,
///         or beyond what its arithmetic can hold (stretch above 256, slant above 64).
bool makeStrike(const SkFont& font, Strike* strike);

}  // namespace portable
