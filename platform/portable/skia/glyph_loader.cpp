#include "glyph_loader.h"

#include <algorithm>
#include <cmath>

#include FT_OUTLINE_H

namespace portable {
namespace {

// The platform's choice: fake bold widens strokes by a 34th of the em.
constexpr FT_Pos kEmboldenDivisor = 34;

/// The smallest strike that need not be enlarged, else the largest.
int bestStrike(FT_Face face, double pixels) {
    int best = -1;
    for (int i = 0; i < face->num_fixed_sizes; ++i) {
        const FT_Pos size = face->available_sizes[i].y_ppem;
        const FT_Pos held = best < 0 ? 0 : face->available_sizes[best].y_ppem;
        const bool enough = static_cast<double>(size) >= pixels * 64;
        const bool heldEnough = static_cast<double>(held) >= pixels * 64;
        if (best < 0 || (enough && (!heldEnough || size < held)) || (!heldEnough && size > held)) best = i;
    }
    return best;
}

void embolden(FT_GlyphSlot slot) {
    FT_Face face = slot->face;
    const FT_Pos em = FT_MulFix(face->units_per_EM, face->size->metrics.y_scale);
    FT_Outline_Embolden(&slot->outline, em / kEmboldenDivisor);
}

SkRect outlineBounds(const FT_Outline& outline, double scale) {
    if (outline.n_contours <= 0) return SkRect::MakeEmpty();
    FT_BBox box;
    FT_Outline_Get_CBox(&outline, &box);
    const auto outward = [scale](double edge26d6, double sign) {
        return static_cast<float>(sign * std::floor(sign * edge26d6 / 64) * scale);
    };
    return SkRect::MakeLTRB(outward(static_cast<double>(box.xMin), 1), outward(static_cast<double>(-box.yMax), 1),
                            outward(static_cast<double>(box.xMax), -1), outward(static_cast<double>(-box.yMin), -1));
}

SkRect bitmapBounds(const GlyphLoader& loader, FT_GlyphSlot slot) {
    if (slot->bitmap.width == 0 || slot->bitmap.rows == 0) return SkRect::MakeEmpty();
    const double x0 = slot->bitmap_left * loader.bitmapScaleX();
    const double x1 = (slot->bitmap_left + static_cast<double>(slot->bitmap.width)) * loader.bitmapScaleX();
    const double y0 = -slot->bitmap_top * loader.bitmapScaleY();
    const double y1 = y0 + slot->bitmap.rows * loader.bitmapScaleY();
    const double lean0 = loader.strike().skewX * y0;
    const double lean1 = loader.strike().skewX * y1;
    return SkRect::MakeLTRB(
        static_cast<float>(std::floor(std::min(x0, x1) + std::min(lean0, lean1))), static_cast<float>(std::floor(y0)),
        static_cast<float>(std::ceil(std::max(x0, x1) + std::max(lean0, lean1))), static_cast<float>(std::ceil(y1)));
}

double advanceOf(const GlyphLoader& loader, FT_GlyphSlot slot) {
    const Strike& strike = loader.strike();
    if (slot->format == FT_GLYPH_FORMAT_BITMAP)
        return static_cast<double>(slot->advance.x) / 64 * loader.bitmapScaleX();
    if (!strike.linearAdvance) return static_cast<double>(slot->advance.x) / 64;
    // FreeType leaves this one as it is for upright, unmirrored text.
    const double sign = strike.setting.matrix.xx < 0 ? -1 : 1;
    return sign * static_cast<double>(slot->linearHoriAdvance) / 65536 * strike.pathScale;
}

bool finite(const GlyphMetrics& metrics) {
    const SkRect& box = metrics.bounds;
    return std::isfinite(metrics.advance) && std::isfinite(box.fLeft) && std::isfinite(box.fTop) &&
           std::isfinite(box.fRight) && std::isfinite(box.fBottom);
}

}  // namespace

GlyphLoader::GlyphLoader(const SkFont& font) {
    if (font.getTypeface() == nullptr || !makeStrike(font, &mStrike)) return;
    const FaceTypeface& typeface = *static_cast<const FaceTypeface*>(font.getTypeface());
    mLock = std::unique_lock<std::mutex>(typeface.mutex());
    if (apply(typeface)) mFace = typeface.face();
}

bool GlyphLoader::apply(const FaceTypeface& typeface) {
    FT_Face face = typeface.face();
    if (!FT_IS_SCALABLE(face)) return selectBitmaps(face);
    if (typeface.setting() == mStrike.setting) return true;

    // A failure half-way must not look like the old setting.
    typeface.setting() = FaceSetting();
    if (FT_Set_Char_Size(face, mStrike.setting.width, mStrike.setting.height, 72, 72) != 0) return false;
    FT_Set_Transform(face, &mStrike.setting.matrix, nullptr);
    typeface.setting() = mStrike.setting;
    return true;
}

bool GlyphLoader::selectBitmaps(FT_Face face) {
    const int index = bestStrike(face, mStrike.sizeY);
    if (index < 0 || FT_Select_Size(face, index) != 0) return false;
    const FT_Bitmap_Size& size = face->available_sizes[index];
    if (size.x_ppem <= 0 || size.y_ppem <= 0) return false;
    mBitmapScaleX = mStrike.sizeX * 64 / static_cast<double>(size.x_ppem);
    mBitmapScaleY = mStrike.sizeY * 64 / static_cast<double>(size.y_ppem);
    // Its pictures are all it has: they are drawn even where embedded bitmaps are not wanted.
    mStrike.loadFlags &= ~FT_LOAD_NO_BITMAP;
    mStrike.asPath = false;
    return true;
}

FT_GlyphSlot GlyphLoader::load(SkGlyphID glyph) {
    if (mFace == nullptr || FT_Load_Glyph(mFace, glyph, mStrike.loadFlags) != 0) return nullptr;
    FT_GlyphSlot slot = mFace->glyph;
    if (slot->format == FT_GLYPH_FORMAT_BITMAP) return slot;
    if (slot->format != FT_GLYPH_FORMAT_OUTLINE) return nullptr;
    if (mStrike.embolden) embolden(slot);
    return slot;
}

GlyphMetrics measureGlyph(GlyphLoader& loader, SkGlyphID glyph) {
    GlyphMetrics metrics;
    FT_GlyphSlot slot = loader.load(glyph);
    if (slot == nullptr) return metrics;
    metrics.advance = static_cast<float>(advanceOf(loader, slot));
    metrics.bounds = slot->format == FT_GLYPH_FORMAT_BITMAP ? bitmapBounds(loader, slot)
                                                            : outlineBounds(slot->outline, loader.strike().pathScale);
    return finite(metrics) ? metrics : GlyphMetrics();
}

}  // namespace portable
