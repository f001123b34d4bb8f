// Font bytes through the font manager, shaping, measuring and rasterising. The first byte chooses face and paint.
#include <algorithm>
#include <memory>
#include <vector>

#include "base/QxString.h"
#include "base/no_throw.h"
#include "font/FontManager.h"
#include "fuzz/check.h"
#include "fuzz/input.h"
#include "fuzz/quiet_log.h"
#include "text/line_glyph.h"

#include <hwui/MinikinUtils.h>
#include <hwui/Paint.h>
#include <hwui/Typeface.h>

namespace {

using namespace QxFontEffect;

using Families = std::vector<std::shared_ptr<minikin::FontFamily>>;

constexpr uint16_t kText[] = {'A',    'g',    ' ',    'f',    'i',    0x0633, 0x0644,
                              0x0915, 0x093F, 0x6F22, 0xD83D, 0xDE00, 0xFE0F, 0x0301};
constexpr size_t kTextSize = sizeof(kText) / sizeof(kText[0]);

// Large enough to be drawn as an outline and not from a mask kept for its size.
constexpr float kOutlineSize = 300.0f;

/// The bits above those of the face.
android::Paint paintOf(int choice) {
    android::Paint paint;
    paint.setAntiAlias((choice & 1) == 0);
    SkFont& font = paint.getSkFont();
    font.setSize((choice & 2) != 0 ? kOutlineSize : 17.5f);
    font.setHinting((choice & 4) != 0 ? SkFontHinting::kNone : SkFontHinting::kNormal);
    font.setSubpixel((choice & 4) != 0);
    font.setEmbolden((choice & 8) != 0);
    font.setSkewX((choice & 16) != 0 ? -0.25f : 0.0f);
    return paint;
}

void draw(const android::Typeface& typeface, android::Paint paint) {
    const minikin::Layout layout = android::MinikinUtils::doLayout(&paint, minikin::Bidi::DEFAULT_LTR, &typeface, kText,
                                                                   kTextSize, 0, kTextSize, 0, kTextSize, nullptr);
    // A hostile font may well ask for more memory than there is.
    withoutThrowing([&] { deleteGlyph(drawLineGlyph(&layout, &paint)); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    test::quietLog();
    if (size < 2 || size > (1u << 20)) return 0;
    FontManager manager;
    auto bytes = std::make_unique<char[]>(size - 1);
    std::copy(data + 1, data + size, bytes.get());
    const int index = data[0] & 3;
    if (!manager.AddMinikinFont("fuzz", bytes.release(), static_cast<unsigned>(size - 1), index, true)) return 0;

    QxString name;
    name.Construct("fuzz");
    std::shared_ptr<minikin::MinikinFont> font;
    FUZZ_CHECK(manager.GetMinikinFont(font, &name, index));
    std::vector<minikin::Font> fonts;
    fonts.push_back(minikin::Font::Builder(font).build());
    Families families = {std::make_shared<minikin::FontFamily>(std::move(fonts))};
    const std::unique_ptr<android::Typeface> typeface(
        android::Typeface::createFromFamilies(std::move(families), -1, -1));
    draw(*typeface, paintOf(data[0] >> 2));
    return 0;
}
