#include "adjustments.h"

#include <algorithm>
#include <cmath>

#include "effect/QxBevelProperty.h"
#include "effect/QxEmbossProperty.h"
#include "effect/QxInnerGlowProperty.h"
#include "effect/QxInnerShadowProperty.h"
#include "effect/QxLinearGradientProperty.h"
#include "effect/QxOuterGlowProperty.h"
#include "effect/QxOuterShadowProperty.h"
#include "effect/QxPatternProperty.h"
#include "effect/QxRadialGradientProperty.h"
#include "effect/QxStrokeProperty.h"

namespace qxrender {

namespace {

using namespace QxFontEffect;

using Stored = std::vector<std::pair<std::string, double>>;

template <typename Property>
bool storedShadow(const QxProperty* record, Stored& stored) {
    const auto* shadow = dynamic_cast<const Property*>(record);
    if (shadow != nullptr) stored = {{"angle", shadow->angle}, {"distance", shadow->distance}, {"size", shadow->size}};
    return shadow != nullptr;
}

void storeStops(int count, const QxGradient* gradient, Stored& stored) {
    for (int i = 0; i < count && gradient != nullptr; ++i)
        stored.emplace_back("stops[" + std::to_string(i) + "]", gradient[i].position);
}

template <typename Property>
bool storedGlow(const QxProperty* record, Stored& stored) {
    const auto* glow = dynamic_cast<const Property*>(record);
    if (glow == nullptr) return false;
    stored = {{"size", glow->size}};
    storeStops(glow->count, glow->gradient, stored);
    return true;
}

template <typename Property>
bool storedGradient(const QxProperty* record, Stored& stored) {
    const auto* gradient = dynamic_cast<const Property*>(record);
    if (gradient == nullptr) return false;
    stored = {{"angle", gradient->angle}, {"scale", gradient->scale}};
    storeStops(gradient->count, gradient->gradient, stored);
    return true;
}

template <typename Property>
bool storedRelief(const QxProperty* record, Stored& stored) {
    const auto* relief = dynamic_cast<const Property*>(record);
    if (relief != nullptr)
        stored = {{"size", relief->size},
                  {"depth", relief->depth},
                  {"soften", relief->soften},
                  {"angle", relief->angle},
                  {"altitude", relief->altitude}};
    return relief != nullptr;
}

Stored storedValues(const QxProperty* record) {
    Stored stored;
    if (storedShadow<QxOuterShadowProperty>(record, stored) || storedShadow<QxInnerShadowProperty>(record, stored) ||
        storedGlow<QxOuterGlowProperty>(record, stored) || storedGlow<QxInnerGlowProperty>(record, stored) ||
        storedGradient<QxLinearGradientProperty>(record, stored) ||
        storedGradient<QxRadialGradientProperty>(record, stored) || storedRelief<QxBevelProperty>(record, stored) ||
        storedRelief<QxEmbossProperty>(record, stored))
        return stored;
    if (const auto* stroke = dynamic_cast<const QxStrokeProperty*>(record)) return {{"width", stroke->size}};
    if (const auto* pattern = dynamic_cast<const QxPatternProperty*>(record)) return {{"scale", pattern->scale}};
    return {};
}

/// What the setting asks for under the name of a stored value; false when the effect has no such parameter.
bool askedValue(const EffectSetting& setting, const std::string& name, double& asked) {
    const size_t bracket = name.find('[');
    if (bracket != std::string::npos) {
        asked = setting["stops"].stops.at(std::stoul(name.substr(bracket + 1))).position;
        return true;
    }
    const int index = findParameter(*setting.kind, name);
    if (index >= 0) asked = setting.values[static_cast<size_t>(index)].number;
    return index >= 0;
}

bool isSame(const std::string& name, double asked, double used) {
    const float given = static_cast<float>(asked);
    const float kept = static_cast<float>(used);
    // The library turns angles into 0..359; whole turns are no change.
    if (name == "angle") return std::fmod(given - kept, 360.0f) == 0.0f;
    return given == kept;
}

bool isOpacity(const Parameter& parameter) {
    const std::string name = parameter.name;
    return name == "opacity" || (name.size() > 8 && name.compare(name.size() - 8, 8, "-opacity") == 0);
}

/// Opacities are limited before a colour's alpha goes into them, so no record holds them as such.
void findOpacities(const EffectSetting& setting, std::vector<Adjustment>& adjustments) {
    for (size_t i = 0; i < setting.values.size(); ++i) {
        const double asked = setting.values[i].number;
        const double used = std::clamp(asked, 0.0, 1.0);
        const Parameter& parameter = setting.kind->parameters[i];
        if (isOpacity(parameter) && asked != used)
            adjustments.push_back({setting.kind->name, parameter.name, asked, used});
    }
}

}  // namespace

std::vector<Adjustment> findAdjustments(QxEffect& stack, const std::vector<EffectSetting>& effects) {
    std::vector<Adjustment> adjustments;
    for (const EffectSetting& setting : effects) {
        QxECoreBase* core = stack.getEffect(setting.kind->type);
        if (core == nullptr) continue;
        for (const auto& [name, used] : storedValues(core->getProperty())) {
            double asked = 0;
            if (askedValue(setting, name, asked) && !isSame(name, asked, used))
                adjustments.push_back({setting.kind->name, name, asked, used});
        }
        findOpacities(setting, adjustments);
    }
    return adjustments;
}

}  // namespace qxrender
