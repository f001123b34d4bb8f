#include "glyph_mask.h"

#include <cmath>

#include "bitmap_glyph.h"
#include "coverage_gamma.h"
#include "face_typeface.h"
#include "pixel_math.h"

#include FT_OUTLINE_H

namespace portable {
namespace {

constexpr double kFarthestOrigin = 1 << 24;
// FreeType's 1-bit rasteriser counts columns and rows in 16 bits.
constexpr int kLargestOutline = 32000;
// Up to here a glyph is drawn whole, whatever its clip.
constexpr int64_t kLargestWholeMask = 1 << 24;

bool nearEnough(SkPoint origin) {
    return std::fabs(origin.fX) <= kFarthestOrigin && std::fabs(origin.fY) <= kFarthestOrigin;
}

/// Where a mask stands: whole pixels, and the rest in quarters of a pixel to the right.
struct MaskPlace {
    int x, y, quarters;
};

MaskPlace placeMask(SkPoint origin, bool subpixel) {
    const int y = saturatedFloor(origin.fY + 0.5f);
    if (!subpixel) return {saturatedFloor(origin.fX + 0.5f), y, 0};
    const float x = origin.fX + 0.125f;
    const float whole = std::floor(x);
    return {saturatedFloor(whole), y, static_cast<int>((x - whole) * 4)};
}

/// Pixels touched by an outline, y down; empty when it is too large to draw.
SkIRect pixelsOf(const FT_Outline& outline) {
    if (outline.n_contours <= 0) return SkIRect::MakeEmpty();
    FT_BBox box;
    FT_Outline_Get_CBox(&outline, &box);
    const auto edge = [](FT_Pos v) { return saturatedFloor(static_cast<double>(v) / 64); };
    const SkIRect pixels =
        SkIRect::MakeLTRB(edge(box.xMin), -edge(box.yMax + 63), edge(box.xMax + 63), -edge(box.yMin));
    const bool fits = pixels.width() <= kLargestOutline && pixels.height() <= kLargestOutline;
    return fits ? pixels : SkIRect::MakeEmpty();
}

void unpackBits(const uint8_t* bits, int width, uint8_t* coverage) {
    for (int x = 0; x < width; ++x) coverage[x] = (bits[x / 8] >> (7 - x % 8) & 1) != 0 ? 255 : 0;
}

bool renderAliased(FT_Outline* outline, GlyphMask* mask) {
    const int width = mask->box.width();
    const int rows = mask->box.height();
    const size_t pitch = (static_cast<size_t>(width) + 7) / 8;
    const auto bits = std::make_unique<uint8_t[]>(pitch * static_cast<size_t>(rows));

    FT_Bitmap target = {};
    target.width = static_cast<unsigned>(width);
    target.rows = static_cast<unsigned>(rows);
    target.pitch = static_cast<int>(pitch);
    target.buffer = bits.get();
    target.pixel_mode = FT_PIXEL_MODE_MONO;
    if (FT_Outline_Get_Bitmap(fontLibrary(), outline, &target) != 0) return false;
    for (int y = 0; y < rows; ++y)
        unpackBits(bits.get() + static_cast<size_t>(y) * pitch, width, mask->row(mask->box.fTop + y));
    return true;
}

bool renderAntialiased(FT_Outline* outline, const uint8_t* gamma, GlyphMask* mask) {
    FT_Bitmap target = {};
    target.width = static_cast<unsigned>(mask->box.width());
    target.rows = static_cast<unsigned>(mask->box.height());
    target.pitch = mask->box.width();
    target.buffer = mask->pixels.get();
    target.pixel_mode = FT_PIXEL_MODE_GRAY;
    target.num_grays = 256;
    if (FT_Outline_Get_Bitmap(fontLibrary(), outline, &target) != 0) return false;
    if (gamma == nullptr) return true;

    uint8_t* end = mask->row(mask->box.fBottom);
    for (uint8_t* pixel = mask->pixels.get(); pixel != end; ++pixel) *pixel = gamma[*pixel];
    return true;
}

/// The pixels to draw of an outline. FreeType shortens curves at the edges of its target, which moves their coverage
/// by a level or two, so that only outlines much larger than a screen are cut.
SkIRect maskArea(const SkIRect& box, const SkIRect& clip) {
    const SkIRect visible = intersected(box, clip);
    const bool whole = int64_t{box.width()} * box.height() <= kLargestWholeMask;
    return whole && !visible.isEmpty() ? box : visible;
}

/// Draws what the clip can show of an outline. Outline and clip are in the same pixels, the outline y up.
GlyphMask renderOutline(FT_Outline* outline, bool aliased, const uint8_t* gamma, const SkIRect& clip) {
    GlyphMask mask;
    if (!mask.allocate(maskArea(pixelsOf(*outline), clip))) return mask;

    FT_Outline_Translate(outline, FT_Pos{-64} * mask.box.fLeft, FT_Pos{64} * mask.box.fBottom);
    const bool done = aliased ? renderAliased(outline, &mask) : renderAntialiased(outline, gamma, &mask);
    return done ? std::move(mask) : GlyphMask();
}

GlyphMask rasteriseMask(FT_GlyphSlot slot, const Strike& strike, SkPoint origin, const SkIRect& clip) {
    const MaskPlace place = placeMask(origin, strike.subpixel);
    FT_Outline_Translate(&slot->outline, FT_Pos{16} * place.quarters, 0);
    GlyphMask mask =
        renderOutline(&slot->outline, strike.aliased, blackCoverageGamma(), moved(clip, -place.x, -place.y));
    if (!mask.box.isEmpty()) mask.box = moved(mask.box, place.x, place.y);
    return mask;
}

/// Enlarges an outline and moves it to its place on the canvas. False when it gets too large.
bool placePath(FT_Outline* outline, double scale, SkPoint origin) {
    constexpr double kLimit = 64.0 * (kFarthestOrigin + kLargestOutline);
    for (int i = 0; i < outline->n_points; ++i) {
        FT_Vector& point = outline->points[i];
        const double x = static_cast<double>(point.x) * scale + 64.0 * origin.fX;
        const double y = static_cast<double>(point.y) * scale - 64.0 * origin.fY;
        if (!(std::fabs(x) <= kLimit && std::fabs(y) <= kLimit)) return false;
        point.x = std::lround(x);
        point.y = std::lround(y);
    }
    return true;
}

GlyphMask rasterisePath(FT_GlyphSlot slot, const Strike& strike, SkPoint origin, const SkIRect& clip) {
    if (!placePath(&slot->outline, strike.pathScale, origin)) return GlyphMask();
    // A path has no drop-out control: a pixel is in when its centre is.
    slot->outline.flags |= FT_OUTLINE_IGNORE_DROPOUTS;
    return renderOutline(&slot->outline, strike.aliased, nullptr, clip);
}

GlyphMask rasteriseBitmap(const GlyphLoader& loader, FT_GlyphSlot slot, SkPoint origin, const SkIRect& clip) {
    const MaskPlace place = placeMask(origin, false);
    BitmapPlacement placement;
    placement.left = slot->bitmap_left * loader.bitmapScaleX();
    placement.top = -slot->bitmap_top * loader.bitmapScaleY();
    placement.scaleX = loader.bitmapScaleX();
    placement.scaleY = loader.bitmapScaleY();
    placement.skewX = loader.strike().skewX;
    GlyphMask mask = silhouetteOf(slot->bitmap, placement, moved(clip, -place.x, -place.y));
    if (!mask.box.isEmpty()) mask.box = moved(mask.box, place.x, place.y);
    return mask;
}

}  // namespace

bool GlyphMask::allocate(const SkIRect& area) {
    if (area.isEmpty()) return false;
    const size_t bytes = static_cast<size_t>(area.width()) * static_cast<size_t>(area.height());
    pixels = std::make_unique<uint8_t[]>(bytes);
    box = area;
    return true;
}

GlyphMask rasteriseGlyph(GlyphLoader& loader, SkGlyphID glyph, SkPoint origin, const SkIRect& clip) {
    if (!nearEnough(origin) || clip.isEmpty()) return GlyphMask();
    FT_GlyphSlot slot = loader.load(glyph);
    if (slot == nullptr) return GlyphMask();
    if (slot->format == FT_GLYPH_FORMAT_BITMAP) return rasteriseBitmap(loader, slot, origin, clip);
    return loader.strike().asPath ? rasterisePath(slot, loader.strike(), origin, clip)
                                  : rasteriseMask(slot, loader.strike(), origin, clip);
}

}  // namespace portable
