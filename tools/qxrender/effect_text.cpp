#include <algorithm>
#include <cmath>
#include <sstream>

#include "color.h"
#include "effect_table.h"
#include "failure.h"
#include "numbers.h"

namespace qxrender {

namespace {

std::string rangeOf(const Parameter& parameter) {
    return formatNumber(parameter.minimum) + ".." + formatNumber(parameter.maximum);
}

std::string choicesOf(const Parameter& parameter) {
    std::string names;
    for (const Choice& choice : parameter.choices) names += (names.empty() ? "" : "|") + std::string(choice.name);
    return names;
}

double parseRanged(const Parameter& parameter, const std::string& text, const std::string& where) {
    const double value = parseNumber(text, where);
    if (parameter.kind == ParameterKind::Integer && value != std::floor(value))
        throw Failure(where + ": '" + text + "' is not a whole number");
    if (value < parameter.minimum || value > parameter.maximum)
        throw Failure(where + ": " + text + " is out of range " + rangeOf(parameter));
    return value;
}

int parseChoice(const Parameter& parameter, const std::string& text, const std::string& where) {
    for (const Choice& choice : parameter.choices)
        if (text == choice.name) return choice.number;
    throw Failure(where + ": '" + text + "' is none of " + choicesOf(parameter));
}

std::vector<Stop> parseStops(const Parameter& parameter, const std::string& text, const std::string& where) {
    std::vector<Stop> stops;
    std::istringstream list(text);
    for (std::string item; std::getline(list, item, ',');) {
        const size_t at = item.find('@');
        if (at == std::string::npos) throw Failure(where + ": '" + item + "' is not colour@position");
        const double position = parseNumber(item.substr(at + 1), where);
        if (position < 0 || position > 1)
            throw Failure(where + ": position " + item.substr(at + 1) + " is out of range 0..1");
        stops.push_back({parseColor(item.substr(0, at), where), static_cast<float>(position)});
    }
    if (stops.size() > kMostStops) throw Failure(where + ": more than " + std::to_string(kMostStops) + " stops");
    if (stops.size() < stopsNeeded(parameter)) throw Failure(where + ": needs at least one colour@position");
    return stops;
}

}  // namespace

Value parseValue(const Parameter& parameter, const std::string& text, const std::string& where) {
    Value value;
    switch (parameter.kind) {
        case ParameterKind::Number:
        case ParameterKind::Integer:
            value.number = parseRanged(parameter, text, where);
            break;
        case ParameterKind::Choice:
            value.number = parseChoice(parameter, text, where);
            break;
        case ParameterKind::Color:
            value.color = parseColor(text, where);
            break;
        case ParameterKind::Stops:
            value.stops = parseStops(parameter, text, where);
            break;
        case ParameterKind::File:
            value.file = text;
            break;
    }
    return value;
}

EffectSetting defaultSetting(const EffectKind& kind) {
    EffectSetting setting;
    setting.kind = &kind;
    for (const Parameter& parameter : kind.parameters)
        setting.values.push_back(parameter.preset == nullptr ? Value()
                                                             : parseValue(parameter, parameter.preset, parameter.name));
    return setting;
}

EffectSetting parseEffect(const std::string& text) {
    std::istringstream words(text);
    std::string name;
    words >> name;
    const EffectKind* kind = findEffect(name);
    if (kind == nullptr) throw Failure("unknown effect '" + name + "' (see --list-effects)");

    EffectSetting setting = defaultSetting(*kind);
    std::vector<bool> given(kind->parameters.size());
    for (std::string word; words >> word;) {
        const size_t equals = word.find('=');
        const std::string key = word.substr(0, equals);
        const int index = findParameter(*kind, key);
        if (index < 0) throw Failure(name + ": unknown parameter '" + key + "' (see --list-effects)");
        if (equals == std::string::npos) throw Failure(name + ": '" + key + "' has no value; write " + key + "=...");
        if (given[index]) throw Failure(name + ": '" + key + "' is given twice");
        given[index] = true;
        setting.values[index] = parseValue(kind->parameters[index], word.substr(equals + 1), name + " " + key);
    }
    for (size_t i = 0; i < given.size(); ++i)
        if (!given[i] && kind->parameters[i].preset == nullptr)
            throw Failure(name + ": '" + kind->parameters[i].name + "' has to be given");
    return setting;
}

}  // namespace qxrender
