#include "effect_table.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "effect_adders.h"

namespace qxrender {

namespace {

using Kind = ParameterKind;

Parameter number(const char* name, const char* unit, double low, double high, const char* preset, const char* meaning) {
    return {name, Kind::Number, unit, low, high, preset, {}, meaning};
}

Parameter integer(const char* name, const char* unit, double low, double high, const char* preset,
                  const char* meaning) {
    return {name, Kind::Integer, unit, low, high, preset, {}, meaning};
}

Parameter choice(const char* name, std::vector<Choice> choices, const char* preset, const char* meaning) {
    return {name, Kind::Choice, "", 0, 0, preset, std::move(choices), meaning};
}

Parameter color(const char* name, const char* preset, const char* meaning) {
    return {name, Kind::Color, "", 0, 0, preset, {}, meaning};
}

Parameter stops(const char* preset, const char* meaning) {
    return {"stops", Kind::Stops, "", 0, 1, preset, {}, meaning};
}

Parameter opacity(const char* name = "opacity") {
    return number(name, "", 0, 1, "1", "multiplies the alpha of the colours");
}

std::vector<Parameter> shadowParameters(const char* preset) {
    return {number("angle", "degrees", -360, 360, "135",
                   "where the light is: 0 right, 90 above; the shadow falls opposite"),
            number("distance", "px", 0, 100, "4", "how far the shadow is shifted, whole pixels"),
            number("size", "px", 0, 100, "4", "blur radius, whole pixels"), color("color", preset, "colour"),
            opacity()};
}

std::vector<Parameter> glowParameters(const char* sizeMeaning, const char* stopsMeaning) {
    return {number("size", "px", 0, 100, "8", sizeMeaning),
            color("color", "#ffd040", "colour, when there are no stops"), opacity(), stops("", stopsMeaning)};
}

std::vector<Parameter> reliefParameters(bool bevel) {
    std::vector<Parameter> parameters = {
        number("size", "px", 0, 100, "6", bevel ? "width of the band" : "width of the band, half on either side"),
        number("depth", "", 0, 10, "3", "steepness"),
        // 0 turns the light round, which is what lifts the letters towards a light at the given angle.
        choice("direction", {{"up", 0}, {"down", 1}}, "up", "raised or sunken"),
        choice("technique", {{"smooth", 0}, {"chisel", 1}}, "smooth", "rounded or hard edge"),
        integer("soften", "px", 0, 16, "0", "radius of a final blur"),
        number("angle", "degrees", -360, 360, "135", "azimuth of the light: 0 right, 90 above, whole degrees"),
        number("altitude", "degrees", 0, 89, "30", "elevation of the light, whole degrees"),
        color("highlight", "#ffffff", "colour of lit slopes"), opacity("highlight-opacity"),
        color("shadow", "#000000", "colour of shaded slopes"), opacity("shadow-opacity")};
    if (bevel)
        parameters.insert(parameters.begin(), choice("style", {{"inner", 1}, {"outer", 0}}, "inner",
                                                     "band inside the letters or around them"));
    return parameters;
}

std::vector<EffectKind> makeTable() {
    using namespace QxFontEffect;
    const auto gradientScale = number("scale", "", 0.1, 2, "1", "length of the gradient, 1 spans the text");
    return {
        {"outer-shadow", "soft shadow behind the letters", QXE_OUTER_SHADOW, shadowParameters("#000000"),
         addOuterShadow, noReach, never},
        {"inner-shadow", "shadow on the letters, as if they were cut out", QXE_INNER_SHADOW,
         shadowParameters("#000000"), addInnerShadow, noReach, never},
        {"outer-glow", "halo around the letters", QXE_OUTER_GLOW,
         glowParameters("how far the glow reaches, whole pixels",
                        "colours from the outline (0) outward (1), instead of color; positions in hundredths"),
         addOuterGlow, glowReach, never},
        {"inner-glow", "light in the middle of the letters that fades towards the outline", QXE_INNER_GLOW,
         glowParameters("how far from the outline it fades, whole pixels",
                        "colours from the middle (0) to the outline (1), instead of color; positions in hundredths"),
         addInnerGlow, glowReach, always},
        {"bevel", "letters raised with a lit band", QXE_BEVEL, reliefParameters(true), addBevel, bevelReach,
         bevelNeedsLayer},
        {"emboss", "relief that straddles the outline", QXE_EMBOSS, reliefParameters(false), addEmboss, noReach, never},
        {"linear-gradient",
         "colours along a direction",
         QXE_LINEAR_GRADIENT,
         {number("angle", "degrees", -360, 360, "90", "direction, 0 left to right, 90 upward, whole degrees"),
          gradientScale, opacity(), stops("#ff8a00@0,#e52e71@1", "at least one colour@position, in hundredths")},
         addLinearGradient,
         noReach,
         never},
        {"radial-gradient",
         "colours outward from the middle",
         QXE_RADIAL_GRADIENT,
         {gradientScale, opacity(), stops("#fff7c2@0,#ff6a00@1", "at least one colour@position, in hundredths")},
         addRadialGradient,
         noReach,
         never},
        {"stroke",
         "band along the outline",
         QXE_STROKE,
         {number("width", "px", 0, 100, "4", "width of the band, whole pixels"), color("color", "#000000", "colour"),
          opacity(),
          choice("position", {{"center", 0}, {"outside", 1}, {"inside", 2}}, "outside", "side of the outline")},
         addStroke,
         noReach,
         strokeNeedsLayer},
        {"pattern",
         "tiled picture",
         QXE_PATTERN,
         {{"file", Kind::File, "", 0, 0, nullptr, {}, "PNG file of the tile"},
          number("scale", "", 0.1, 10, "1", "size of the tile"),
          opacity()},
         addPattern,
         noReach,
         never},
    };
}

}  // namespace

const std::vector<EffectKind>& effectTable() {
    static const std::vector<EffectKind> table = makeTable();
    return table;
}

const EffectKind* findEffect(const std::string& name) {
    for (const EffectKind& kind : effectTable())
        if (name == kind.name) return &kind;
    return nullptr;
}

size_t stopsNeeded(const Parameter& parameter) {
    return parameter.preset == nullptr || *parameter.preset != '\0' ? 1 : 0;
}

int findParameter(const EffectKind& kind, const std::string& name) {
    for (size_t i = 0; i < kind.parameters.size(); ++i)
        if (name == kind.parameters[i].name) return static_cast<int>(i);
    return -1;
}

const Value& EffectSetting::operator[](const char* parameter) const {
    return values.at(static_cast<size_t>(findParameter(*kind, parameter)));
}

}  // namespace qxrender
