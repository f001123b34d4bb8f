#include "scene/fonts.h"

#include <fontconfig/fontconfig.h>

#include <cstring>
#include <stdexcept>
#include <vector>

#include "base/List.h"
#include "base/QxString.h"
#include "font/FontManager.h"
#include "font/QxFontData.h"
#include "font/QxFontFamily.h"

namespace qxbench {

using namespace QxFontEffect;

namespace {

constexpr char kFamily[] = "Roboto";

std::string robotoPath() {
    FcPattern* wanted = FcNameParse(reinterpret_cast<const FcChar8*>("Roboto:style=Regular:variable=false"));
    FcConfigSubstitute(nullptr, wanted, FcMatchPattern);
    FcDefaultSubstitute(wanted);
    FcResult result = FcResultNoMatch;
    FcPattern* match = FcFontMatch(nullptr, wanted, &result);
    FcPatternDestroy(wanted);

    FcChar8* family = nullptr;
    FcChar8* file = nullptr;
    std::string path;
    if (match != nullptr && FcPatternGetString(match, FC_FAMILY, 0, &family) == FcResultMatch &&
        std::strcmp(reinterpret_cast<const char*>(family), kFamily) == 0 &&
        FcPatternGetString(match, FC_FILE, 0, &file) == FcResultMatch)
        path = reinterpret_cast<const char*>(file);
    if (match != nullptr) FcPatternDestroy(match);
    if (path.empty()) throw std::runtime_error("the font Roboto is not installed (package fonts-roboto-unhinted)");
    return path;
}

}  // namespace

void setUpFonts() {
    auto* const font = new QxFontData;
    font->path = new QxString;
    font->path->Construct(robotoPath().c_str());
    auto* const family = new QxFontFamily;
    family->fonts = new List;
    family->fonts->Construct();
    family->fonts->Add(static_cast<void*>(font));
    auto* const families = new List;
    families->Construct();
    families->Add(static_cast<void*>(family));
    family->loaded = FontManager::GetInstance()->BuildMinikinFamily(family) ? 1 : 0;
    FontManager::GetInstance()->SetSystemFontFamilies(families);
}

const android::Typeface& benchTypeface() {
    static const std::unique_ptr<android::Typeface> typeface = [] {
        std::vector<std::shared_ptr<minikin::FontFamily>> families;
        int weight = 400;
        FontManager::GetInstance()->GetMinikinFontFamilies(nullptr, families, nullptr, weight);
        return std::unique_ptr<android::Typeface>(
            android::Typeface::createFromFamilies(std::move(families), weight, false));
    }();
    return *typeface;
}

android::Paint benchPaint(float size) {
    android::Paint paint;
    paint.setAntiAlias(true);
    paint.getSkFont().setSize(size);
    return paint;
}

}  // namespace qxbench
