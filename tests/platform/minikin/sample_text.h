#pragma once

#include <SkBitmap.h>
#include <SkCanvas.h>
#include <SkImageInfo.h>
#include <SkStream.h>
#include <SkTextBlob.h>
#include <hwui/MinikinUtils.h>
#include <minikin/LocaleList.h>

#include <cstdint>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

#include "support/fonts.h"

/// Texts laid out and drawn in packaged fonts, in the families of a device.
namespace sample {

using minikin::FamilyVariant;
using minikin::FontStyle;
using Families = std::vector<std::shared_ptr<minikin::FontFamily>>;

/// A font made of bytes in place.
inline std::shared_ptr<android::MinikinFontSkia> fontOf(const sk_sp<SkTypeface>& typeface,
                                                        const std::vector<char>& bytes, const std::string& name,
                                                        int index = 0) {
    return std::make_shared<android::MinikinFontSkia>(typeface, bytes.data(), bytes.size(), name, index,
                                                      std::vector<minikin::FontVariation>());
}
inline sk_sp<SkTypeface> openBytes(const std::vector<char>& bytes, int index = 0) {
    return SkTypeface::MakeFromStream(std::make_unique<SkMemoryStream>(bytes.data(), bytes.size()), index);
}

/// An installed font; the same object every time, so that its caches are shared like on a device.
inline std::shared_ptr<minikin::MinikinFont> installedFont(const std::string& fileName, int index = 0) {
    static auto* known = new std::vector<std::shared_ptr<android::MinikinFontSkia>>;
    for (const auto& font : *known) {
        if (font->getFilePath() == fileName && font->GetFontIndex() == index) return font;
    }
    const std::vector<char>& bytes = testsupport::fontBytes(fileName);
    const sk_sp<SkTypeface> typeface = openBytes(bytes, index);
    if (!typeface) {
        ADD_FAILURE() << fileName << " cannot be opened";
        return nullptr;
    }
    known->push_back(fontOf(typeface, bytes, fileName, index));
    return known->back();
}

inline minikin::Font upright(const std::shared_ptr<minikin::MinikinFont>& font, int weight = 400) {
    return minikin::Font::Builder(font)
        .setWeight(static_cast<uint16_t>(weight))
        .setSlant(FontStyle::Slant::UPRIGHT)
        .build();
}

/// A family of one upright font.
inline std::shared_ptr<minikin::FontFamily> familyOf(const std::shared_ptr<minikin::MinikinFont>& font) {
    std::vector<minikin::Font> fonts;
    fonts.push_back(upright(font));
    return std::make_shared<minikin::FontFamily>(std::move(fonts));
}

inline std::shared_ptr<minikin::FontFamily> family(const std::string& fileName, const std::string& locales,
                                                   FamilyVariant variant = FamilyVariant::DEFAULT, int index = 0) {
    std::vector<minikin::Font> fonts;
    fonts.push_back(upright(installedFont(fileName, index)));
    return std::make_shared<minikin::FontFamily>(minikin::registerLocaleList(locales), variant, std::move(fonts),
                                                 false);
}

inline std::shared_ptr<minikin::FontFamily> roboto() {
    struct Weight {
        const char* file;
        int weight;
    };
    std::vector<minikin::Font> fonts;
    for (const Weight& each :
         {Weight{"Roboto-Thin.ttf", 100}, Weight{"Roboto-Light.ttf", 300}, Weight{"Roboto-Regular.ttf", 400},
          Weight{"Roboto-Medium.ttf", 500}, Weight{"Roboto-Black.ttf", 900}, Weight{"Roboto-Bold.ttf", 700}}) {
        fonts.push_back(upright(installedFont(each.file), each.weight));
    }
    return std::make_shared<minikin::FontFamily>(std::move(fonts));
}

/// The families of a device, in its order, as far as the samples need them.
inline Families deviceFamilies() {
    return {roboto(),
            family("NotoNaskhArabic-Regular.ttf", "und-Arab", FamilyVariant::ELEGANT),
            family("NotoSansArabic-Regular.ttf", "und-Arab", FamilyVariant::COMPACT),
            family("NotoSansHebrew-Regular.ttf", "und-Hebr"),
            family("NotoSansDevanagari-Regular.ttf", "und-Deva"),
            family(testsupport::kNotoCjk, "zh-Hans", FamilyVariant::DEFAULT, 2),
            family(testsupport::kNotoCjk, "zh-Hant,zh-Bopo", FamilyVariant::DEFAULT, 3),
            family(testsupport::kNotoCjk, "ja", FamilyVariant::DEFAULT, 0),
            family(testsupport::kNotoCjk, "ko", FamilyVariant::DEFAULT, 1),
            family(testsupport::kNotoEmoji, "und-Zsye")};
}

inline std::unique_ptr<android::Typeface> typefaceOf(Families families, int weight = 400, int italic = 0) {
    return std::unique_ptr<android::Typeface>(
        android::Typeface::createFromFamilies(std::move(families), weight, italic));
}

/// A text view's paint: antialiased, 48 px.
inline android::Paint devicePaint(float size = 48.0f) {
    android::Paint paint;
    paint.setJavaFlags(0x503);
    paint.getSkFont().setSize(size);
    return paint;
}

inline minikin::Layout layOut(const std::u16string& text, const android::Paint& paint,
                              const android::Typeface& typeface, minikin::Bidi bidi = minikin::Bidi::DEFAULT_LTR) {
    return android::MinikinUtils::doLayout(&paint, bidi, &typeface, reinterpret_cast<const uint16_t*>(text.data()),
                                           text.size(), 0, text.size(), 0, text.size(), nullptr);
}

inline minikin::MinikinRect boundsOf(const minikin::Layout& layout) {
    minikin::MinikinRect bounds;
    layout.getBounds(&bounds);
    return bounds;
}

/// Draws a layout as a line of text is drawn: one run of glyphs for each font, the ink box at the bitmap's corner,
/// the bitmap as wide as the advance and as high as the ink.
struct LineMask {
    LineMask(const minikin::Layout& layout, android::Paint paint) {
        const minikin::MinikinRect bounds = boundsOf(layout);
        width = static_cast<int>(layout.getAdvance());
        height = static_cast<int>(bounds.mBottom - bounds.mTop);
        pixels.assign(static_cast<size_t>(width * height), 0);

        SkBitmap bitmap;
        bitmap.installPixels(SkImageInfo::Make(width, height, kAlpha_8_SkColorType, kPremul_SkAlphaType), pixels.data(),
                             static_cast<size_t>(width));
        SkCanvas canvas(bitmap);
        auto drawRun = [&](size_t first, size_t end) {
            SkTextBlobBuilder builder;
            const SkTextBlobBuilder::RunBuffer& run =
                builder.allocRunPos(paint.getSkFont(), static_cast<int>(end - first));
            for (size_t i = first; i < end; ++i) {
                run.glyphs[i - first] = static_cast<SkGlyphID>(layout.getGlyphId(static_cast<int>(i)));
                run.points()[i - first] = {layout.getX(static_cast<int>(i)), layout.getY(static_cast<int>(i))};
            }
            canvas.drawTextBlob(builder.make(), -bounds.mLeft, -bounds.mTop, paint);
        };
        android::MinikinUtils::forFontRun(layout, &paint, drawRun);
    }

    int sum() const { return std::accumulate(pixels.begin(), pixels.end(), 0); }

    int width = 0;
    int height = 0;
    std::vector<uint8_t> pixels;
};

}  // namespace sample
