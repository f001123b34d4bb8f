#include "scene/masks.h"

#include <algorithm>
#include <stdexcept>

#include <SkBitmap.h>
#include <SkCanvas.h>
#include <SkTextBlob.h>
#include <hwui/MinikinSkia.h>
#include <hwui/MinikinUtils.h>
#include <minikin/Layout.h>

#include "scene/fonts.h"

namespace qxbench {
namespace {

void drawLine(SkCanvas& canvas, const std::string& line, android::Paint& paint, int width, float baseline) {
    const std::vector<uint16_t> units(line.begin(), line.end());
    const minikin::Layout layout =
        android::MinikinUtils::doLayout(&paint, minikin::Bidi::FORCE_LTR, &benchTypeface(), units.data(), units.size(),
                                        0, units.size(), 0, units.size(), nullptr);
    const float left = (static_cast<float>(width) - layout.getAdvance()) * 0.5f;
    if (left < 0.0f) throw std::runtime_error("the line '" + line + "' is wider than its mask");
    for (size_t i = 0; i < layout.nGlyphs(); ++i) {
        const int glyph = static_cast<int>(i);
        android::MinikinFontSkia::populateSkFont(&paint.getSkFont(), layout.getFont(glyph), layout.getFakery(glyph));
        SkTextBlobBuilder builder;
        const SkTextBlobBuilder::RunBuffer& run = builder.allocRunPos(paint.getSkFont(), 1);
        run.glyphs[0] = static_cast<SkGlyphID>(layout.getGlyphId(glyph));
        run.pos[0] = layout.getX(glyph);
        run.pos[1] = layout.getY(glyph);
        canvas.drawTextBlob(builder.make(), left, baseline, paint);
    }
}

void measureInk(Mask& mask) {
    int64_t inked = 0;
    mask.inkLeft = mask.width;
    mask.inkTop = mask.height;
    mask.inkRight = mask.inkBottom = 0;
    for (int y = 0; y < mask.height; ++y)
        for (int x = 0; x < mask.width; ++x) {
            if (mask.plane().row(y)[x] == 0) continue;
            ++inked;
            mask.inkLeft = std::min(mask.inkLeft, x);
            mask.inkRight = std::max(mask.inkRight, x + 1);
            mask.inkTop = std::min(mask.inkTop, y);
            mask.inkBottom = std::max(mask.inkBottom, y + 1);
        }
    mask.inkShare = static_cast<double>(inked) / static_cast<double>(mask.pixels());
}

Mask makeMask(const char* name, int width, int height, float size, const std::vector<std::string>& lines) {
    Mask mask{name, width, height, std::vector<uint8_t>(static_cast<size_t>(width) * static_cast<size_t>(height)), 0, 0,
              0,    0,     0.0};
    SkBitmap bitmap;
    bitmap.installPixels(SkImageInfo::Make(width, height, kAlpha_8_SkColorType, kPremul_SkAlphaType),
                         mask.coverage.data(), static_cast<size_t>(width));
    SkCanvas canvas(bitmap);
    android::Paint paint = benchPaint(size);
    const float spacing = static_cast<float>(height) / static_cast<float>(lines.size());
    // A capital is 0.7 of the size high and a descender 0.2 deep: half their difference below the middle of a line
    // centres both.
    for (size_t i = 0; i < lines.size(); ++i)
        drawLine(canvas, lines[i], paint, width, spacing * (static_cast<float>(i) + 0.5f) + 0.25f * size);
    measureInk(mask);
    return mask;
}

}  // namespace

std::vector<Mask> makeMasks() {
    return {
        makeMask("S", 400, 120, 64, {"Bright Nights"}), makeMask("M", 1080, 360, 160, {"Bright Nights", "& warm days"}),
        makeMask("L", 2160, 1440, 230,
                 {"Sphinx of black", "quartz, judge my", "vow: Jackdaws love", "big pink fjords &", "waltz by night"})};
}

std::vector<Mask> makeTinyMask() {
    return {makeMask("T", 120, 40, 24, {"Bright jag"})};
}

}  // namespace qxbench
