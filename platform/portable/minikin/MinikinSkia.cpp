#include <hwui/MinikinSkia.h>

#include <SkRect.h>

#include <utility>

#include "GlyphMetricsCache.h"

namespace android {

namespace {

// What the fake italic adds to the skew of a font: a lean of 14 degrees.
constexpr float kFakeItalicSkew = -0.25f;

/// Positions of a font's switches in a number.
enum FlagShift : uint32_t {
    kEdgingShift = 0,   // two bits
    kHintingShift = 2,  // two bits
    kEmboldenShift = 4,
    kSubpixelShift,
    kLinearMetricsShift,
    kEmbeddedBitmapsShift,
    kAutoHintingShift,
    kBaselineSnapShift,
};

}  // namespace

MinikinFontSkia::MinikinFontSkia(sk_sp<SkTypeface> typeface, const void* fontData, size_t fontSize,
                                 std::string_view filePath, int ttcIndex,
                                 const std::vector<minikin::FontVariation>& axes)
    : MinikinFont(static_cast<int32_t>(typeface->uniqueID())),
      mTypeface(std::move(typeface)),
      mFontData(fontData),
      mFontSize(fontSize),
      mTtcIndex(ttcIndex),
      mFilePath(filePath),
      mAxes(axes),
      mMetrics(std::make_unique<GlyphMetricsCache>()) {}

MinikinFontSkia::~MinikinFontSkia() = default;

void MinikinFontSkia::measureGlyphs(const minikin::RasterSettings& settings, minikin::FontFakery fakery,
                                    const uint16_t* glyphs, int count, float* advances,
                                    minikin::MinikinRect* boxes) const {
    const auto measure = [&](const std::vector<uint16_t>& missing, std::vector<GlyphMetrics>* metrics) {
        SkFont font;
        font.setSize(settings.size);
        font.setScaleX(settings.scaleX);
        font.setSkewX(settings.skewX);
        unpackFontFlags(&font, settings.fontFlags);
        populateSkFont(&font, this, fakery);

        std::vector<SkScalar> widths(missing.size());
        std::vector<SkRect> bounds(missing.size());
        font.getWidthsBounds(missing.data(), static_cast<int>(missing.size()), widths.data(), bounds.data(), nullptr);
        for (size_t i = 0; i < missing.size(); ++i) {
            const SkRect& box = bounds[i];
            (*metrics)[i] = {widths[i], minikin::MinikinRect(box.fLeft, box.fTop, box.fRight, box.fBottom)};
        }
    };
    const std::vector<GlyphMetrics> metrics = mMetrics->get(settings, fakery, glyphs, count, measure);
    for (size_t i = 0; i < metrics.size(); ++i) {
        if (advances != nullptr) advances[i] = metrics[i].advance;
        if (boxes != nullptr) boxes[i] = metrics[i].box;
    }
}

uint32_t MinikinFontSkia::packFontFlags(const SkFont& font) {
    const auto bit = [](bool on, FlagShift shift) { return (on ? 1u : 0u) << shift; };
    return static_cast<uint32_t>(font.getEdging()) << kEdgingShift |
           static_cast<uint32_t>(font.getHinting()) << kHintingShift | bit(font.isEmbolden(), kEmboldenShift) |
           bit(font.isSubpixel(), kSubpixelShift) | bit(font.isLinearMetrics(), kLinearMetricsShift) |
           bit(font.isEmbeddedBitmaps(), kEmbeddedBitmapsShift) | bit(font.isForceAutoHinting(), kAutoHintingShift) |
           bit(font.isBaselineSnap(), kBaselineSnapShift);
}

void MinikinFontSkia::unpackFontFlags(SkFont* font, uint32_t fontFlags) {
    const auto bit = [fontFlags](FlagShift shift) { return (fontFlags >> shift & 1) != 0; };
    font->setEdging(static_cast<SkFont::Edging>(fontFlags >> kEdgingShift & 3));
    font->setHinting(static_cast<SkFontHinting>(fontFlags >> kHintingShift & 3));
    font->setEmbolden(bit(kEmboldenShift));
    font->setSubpixel(bit(kSubpixelShift));
    font->setLinearMetrics(bit(kLinearMetricsShift));
    font->setEmbeddedBitmaps(bit(kEmbeddedBitmapsShift));
    font->setForceAutoHinting(bit(kAutoHintingShift));
    font->setBaselineSnap(bit(kBaselineSnapShift));
}

void MinikinFontSkia::populateSkFont(SkFont* skFont, const minikin::MinikinFont* font, minikin::FontFakery fakery) {
    skFont->setTypeface(static_cast<const MinikinFontSkia*>(font)->RefSkTypeface());
    skFont->setEmbolden(skFont->isEmbolden() || fakery.isFakeBold());
    if (fakery.isFakeItalic()) skFont->setSkewX(skFont->getSkewX() + kFakeItalicSkew);
}

}  // namespace android
