#include "strike.h"

#include <cmath>

namespace portable {
namespace {

constexpr double kLargestMask = 256;
constexpr double kPathSize = 64;
constexpr double kLargestStretch = 256;
constexpr double kLargestSkew = 64;

/// Truncates, as the platform does when it hands a size to FreeType.
FT_F26Dot6 to26d6(double pixels) {
    return static_cast<FT_F26Dot6>(pixels * 64);
}
FT_Fixed to16d16(double value) {
    return static_cast<FT_Fixed>(value * 65536);
}

/// FreeType's flags are of several integer types; all of them fit 32 bits.
long hintingFlags(const SkFont& font, SkFontHinting hinting) {
    const bool aliased = font.getEdging() == SkFont::Edging::kAlias;
    const long unhinted = hinting == SkFontHinting::kNone ? FT_LOAD_NO_HINTING : 0;
    const long automatic = font.isForceAutoHinting() ? FT_LOAD_FORCE_AUTOHINT : FT_LOAD_NO_AUTOHINT;
    if (unhinted != 0) return unhinted | FT_LOAD_NO_AUTOHINT | (aliased ? FT_LOAD_TARGET_MONO : FT_LOAD_TARGET_NORMAL);
    if (aliased) return FT_LOAD_TARGET_MONO | automatic;
    if (hinting == SkFontHinting::kSlight) return FT_LOAD_TARGET_LIGHT;
    // Full hinting is meant for striped masks and does not differ from normal on plain ones.
    return FT_LOAD_TARGET_NORMAL | automatic;
}

bool drawable(const SkFont& font) {
    const double size = font.getSize();
    const double stretch = std::fabs(font.getScaleX());
    return std::isfinite(size) && stretch <= kLargestStretch && std::fabs(font.getSkewX()) <= kLargestSkew;
}

}  // namespace

bool makeStrike(const SkFont& font, Strike* strike) {
    if (!drawable(font)) return false;

    const double size = font.getSize();
    const double stretch = std::fabs(font.getScaleX());
    const double skew = font.getSkewX();
    // The product is a single-precision one on the platform; 1/64 px can depend on it.
    const double sizeX = std::fabs(font.getSize() * font.getScaleX());
    if (!std::isfinite(sizeX)) return false;
    const bool mirrored = font.getScaleX() < 0;

    Strike made;
    made.asPath = size > kLargestMask || sizeX > kLargestMask;
    made.pathScale = made.asPath ? size / kPathSize : 1;
    made.setting.width = to26d6(made.asPath ? kPathSize * stretch : sizeX);
    made.setting.height = to26d6(made.asPath ? kPathSize : size);
    // FreeType takes a size of 0 in one direction for "as in the other".
    if (made.setting.width < 1 || made.setting.height < 1) return false;
    made.setting.matrix.xx = mirrored ? -0x10000 : 0x10000;
    made.setting.matrix.xy = to16d16(-skew);

    // Slanted outlines do not meet the pixel grid, so fitting them to it would only bend them.
    const bool upright = skew == 0 && !mirrored;
    const SkFontHinting hinting = upright && !made.asPath ? font.getHinting() : SkFontHinting::kNone;
    made.loadFlags =
        static_cast<FT_Int32>(hintingFlags(font, hinting) | FT_LOAD_COLOR | FT_LOAD_IGNORE_GLOBAL_ADVANCE_WIDTH);
    // Embedded pictures are of upright glyphs of one size.
    if (!font.isEmbeddedBitmaps() || made.asPath || !upright) made.loadFlags |= FT_LOAD_NO_BITMAP;
    made.linearAdvance = font.isLinearMetrics() || hinting == SkFontHinting::kNone || hinting == SkFontHinting::kSlight;

    made.aliased = font.getEdging() == SkFont::Edging::kAlias;
    made.embolden = font.isEmbolden();
    made.subpixel = font.isSubpixel();
    made.sizeX = mirrored ? -sizeX : sizeX;
    made.sizeY = size;
    made.skewX = skew;
    *strike = made;
    return true;
}

}  // namespace portable
