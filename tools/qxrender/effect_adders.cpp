#include "effect_adders.h"

#include <algorithm>
#include <memory>

#include "picture.h"
#include "png_file.h"

namespace qxrender {

using QxFontEffect::QxBitmap;
using QxFontEffect::QxEffect;
using QxFontEffect::QxGradient;

namespace {

float number(const EffectSetting& setting, const char* name) {
    return static_cast<float>(setting[name].number);
}
int whole(const EffectSetting& setting, const char* name) {
    return static_cast<int>(setting[name].number);
}

/// Kept within the table's range where the library takes any value, or would limit only its product with an alpha.
float limited(const EffectSetting& setting, const char* name) {
    const Parameter& parameter = setting.kind->parameters[static_cast<size_t>(findParameter(*setting.kind, name))];
    return static_cast<float>(std::clamp(setting[name].number, parameter.minimum, parameter.maximum));
}

/// The library replaces a colour's alpha byte by the opacity it is handed, so a colour that carries alpha of its own
/// has it folded in here.
float opacityOf(const EffectSetting& setting, const char* color = "color", const char* opacity = "opacity") {
    return limited(setting, opacity) * static_cast<float>(setting[color].color >> 24) / 255.0f;
}

/// A stop's own alpha byte is likewise replaced, by the product of the effect's opacity and the stop's alpha.
std::vector<QxGradient> gradientOf(const EffectSetting& setting) {
    std::vector<QxGradient> gradient;
    for (const Stop& stop : setting["stops"].stops)
        gradient.push_back({stop.color, static_cast<float>(stop.color >> 24) / 255.0f, stop.position});
    return gradient;
}

int countOf(const std::vector<QxGradient>& gradient) {
    return static_cast<int>(gradient.size());
}

using AddShadow = int (QxEffect::*)(float, float, float, unsigned, float);

void addShadow(QxEffect& stack, const EffectSetting& setting, AddShadow add) {
    (stack.*add)(number(setting, "angle"), number(setting, "distance"), number(setting, "size"), setting["color"].color,
                 opacityOf(setting));
}

using AddGlow = int (QxEffect::*)(float, unsigned, float, int, QxGradient*);

void addGlow(QxEffect& stack, const EffectSetting& setting, AddGlow add) {
    std::vector<QxGradient> gradient = gradientOf(setting);
    // Stops bring their own alpha; the opacity of a plain glow is that of its colour.
    const float opacity = gradient.empty() ? opacityOf(setting) : limited(setting, "opacity");
    (stack.*add)(number(setting, "size"), setting["color"].color, opacity, countOf(gradient), gradient.data());
}

using AddRelief = int (QxEffect::*)(int, float, float, int, int, int, float, float, float, unsigned, float, unsigned,
                                    float);

void addRelief(QxEffect& stack, const EffectSetting& setting, int style, AddRelief add) {
    (stack.*add)(style, limited(setting, "size"), number(setting, "depth"), whole(setting, "direction"),
                 whole(setting, "technique"), whole(setting, "soften"), 1.0f, number(setting, "angle"),
                 number(setting, "altitude"), setting["highlight"].color,
                 opacityOf(setting, "highlight", "highlight-opacity"), setting["shadow"].color,
                 opacityOf(setting, "shadow", "shadow-opacity"));
}

}  // namespace

void addOuterShadow(QxEffect& stack, const EffectSetting& setting) {
    addShadow(stack, setting, &QxEffect::addOuterShadowText);
}

void addInnerShadow(QxEffect& stack, const EffectSetting& setting) {
    addShadow(stack, setting, &QxEffect::addInnerShadowText);
}

void addOuterGlow(QxEffect& stack, const EffectSetting& setting) {
    addGlow(stack, setting, &QxEffect::addOuterGlowText);
}

void addInnerGlow(QxEffect& stack, const EffectSetting& setting) {
    addGlow(stack, setting, &QxEffect::addInnerGlowText);
}

void addBevel(QxEffect& stack, const EffectSetting& setting) {
    addRelief(stack, setting, whole(setting, "style"), &QxEffect::addBevelText);
}

void addEmboss(QxEffect& stack, const EffectSetting& setting) {
    addRelief(stack, setting, 0, &QxEffect::addEmbossText);
}

void addLinearGradient(QxEffect& stack, const EffectSetting& setting) {
    std::vector<QxGradient> gradient = gradientOf(setting);
    stack.addLinearGradientText(number(setting, "angle"), number(setting, "scale"), number(setting, "opacity"),
                                countOf(gradient), gradient.data());
}

void addRadialGradient(QxEffect& stack, const EffectSetting& setting) {
    std::vector<QxGradient> gradient = gradientOf(setting);
    stack.addRadialGradientText(number(setting, "scale"), number(setting, "opacity"), countOf(gradient),
                                gradient.data());
}

void addStroke(QxEffect& stack, const EffectSetting& setting) {
    stack.addStrokeText(number(setting, "width"), setting["color"].color, opacityOf(setting), 0,
                        whole(setting, "position"));
}

void addPattern(QxEffect& stack, const EffectSetting& setting) {
    const Picture tile = readPng(setting["file"].file);
    std::vector<unsigned char> bytes;
    bytes.reserve(tile.pixels.size() * 4);
    for (const uint32_t pixel : tile.pixels)  // the library reads a tile as A, R, G, B in memory
        for (const int shift : {24, 16, 8, 0}) bytes.push_back(static_cast<unsigned char>(pixel >> shift));
    QxBitmap bitmap(static_cast<unsigned>(tile.width), static_cast<unsigned>(tile.height), bytes.data(), 4);
    stack.addPatternText(&bitmap, number(setting, "scale"), number(setting, "opacity"));
}

int noReach(const EffectSetting&) {
    return 0;
}

int glowReach(const EffectSetting& setting) {
    // The area that a glow works on.
    return 2 * (static_cast<int>(limited(setting, "size")) + 1);
}

int bevelReach(const EffectSetting& setting) {
    // The area that the bevel works on: the band, and twice the larger of its blur (as wide as the band, when it is
    // smooth) and the softening.
    const int size = static_cast<int>(limited(setting, "size"));
    const int soften = static_cast<int>(limited(setting, "soften"));
    const bool smooth = whole(setting, "technique") == 0;
    const int band = smooth ? (2 * size + 2) / 3 + 1 : size + 2;
    return band + 2 * std::max(soften, smooth ? band : 0);
}

bool never(const EffectSetting&) {
    return false;
}
bool always(const EffectSetting&) {
    return true;
}
bool bevelNeedsLayer(const EffectSetting& setting) {
    return setting["style"].number == 1;
}
bool strokeNeedsLayer(const EffectSetting& setting) {
    return setting["position"].number == 2;
}

}  // namespace qxrender
