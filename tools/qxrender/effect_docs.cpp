#include "effect_docs.h"

#include <nlohmann/json.hpp>

#include "numbers.h"

namespace qxrender {

namespace {

using Json = nlohmann::ordered_json;

std::string rangeOf(const Parameter& parameter) {
    return formatNumber(parameter.minimum) + ".." + formatNumber(parameter.maximum);
}

std::string choicesOf(const Parameter& parameter, const char* between) {
    std::string names;
    for (const Choice& choice : parameter.choices) names += (names.empty() ? "" : between) + std::string(choice.name);
    return names;
}

/// What may stand behind the equals sign; `choiceMark` goes between choices.
std::string valuesOf(const Parameter& parameter, const char* choiceMark) {
    switch (parameter.kind) {
        case ParameterKind::Number:
            return rangeOf(parameter);
        case ParameterKind::Integer:
            return rangeOf(parameter) + " whole";
        case ParameterKind::Choice:
            return choicesOf(parameter, choiceMark);
        case ParameterKind::Color:
            return "colour";
        case ParameterKind::Stops:
            return "colour@0..1,...";
        case ParameterKind::File:
            return "PNG file";
    }
    return "";
}

std::string presetOf(const Parameter& parameter) {
    if (parameter.preset == nullptr) return "required";
    return *parameter.preset != '\0' ? parameter.preset : "none";
}

std::string padded(std::string text, size_t width) {
    if (text.size() < width) text.resize(width, ' ');
    return text + " ";
}

std::string describe(const Parameter& parameter) {
    const std::string unit = *parameter.unit != '\0' ? std::string(" ") + parameter.unit : "";
    const std::string preset = presetOf(parameter);
    return "    " + padded(parameter.name, 18) + padded(valuesOf(parameter, "|") + unit, 26) + parameter.meaning +
           (preset == "required" ? "; required\n" : "; default " + preset + "\n");
}

Json schemaOf(const Parameter& parameter) {
    switch (parameter.kind) {
        case ParameterKind::Number:
            return {{"type", "number"}, {"minimum", parameter.minimum}, {"maximum", parameter.maximum}};
        case ParameterKind::Integer:
            return {{"type", "integer"}, {"minimum", parameter.minimum}, {"maximum", parameter.maximum}};
        case ParameterKind::Choice: {
            Json names = Json::array();
            for (const Choice& choice : parameter.choices) names.push_back(choice.name);
            return {{"enum", names}};
        }
        case ParameterKind::Color:
            return {{"$ref", "#/$defs/color"}};
        case ParameterKind::Stops:
            return {{"$ref", "#/$defs/stops"}, {"minItems", stopsNeeded(parameter)}};
        case ParameterKind::File:
            break;
    }
    return {{"type", "string"}, {"minLength", 1}};
}

Json schemaOf(const EffectKind& kind) {
    Json properties = {{"effect", {{"const", kind.name}}}};
    Json required = Json::array({"effect"});
    for (const Parameter& parameter : kind.parameters) {
        Json schema = schemaOf(parameter);
        schema["description"] =
            std::string(parameter.meaning) + (*parameter.unit != '\0' ? std::string(", ") + parameter.unit : "");
        if (parameter.preset == nullptr)
            required.push_back(parameter.name);
        else if (parameter.kind == ParameterKind::Number || parameter.kind == ParameterKind::Integer)
            schema["default"] = Json::parse(parameter.preset);
        else if (parameter.kind != ParameterKind::Stops)
            schema["default"] = parameter.preset;
        properties[parameter.name] = std::move(schema);
    }
    return {{"type", "object"},
            {"description", kind.meaning},
            {"properties", properties},
            {"required", required},
            {"additionalProperties", false}};
}

Json definitions() {
    const Json stop = {
        {"type", "object"},
        {"properties",
         {{"color", {{"$ref", "#/$defs/color"}}}, {"position", {{"type", "number"}, {"minimum", 0}, {"maximum", 1}}}}},
        {"required", Json::array({"color", "position"})},
        {"additionalProperties", false}};
    Json defs = {{"color",
                  {{"type", "string"},
                   {"description", "#RGB, #RGBA, #RRGGBB or #AARRGGBB"},
                   {"pattern", "^#([0-9a-fA-F]{3}|[0-9a-fA-F]{4}|[0-9a-fA-F]{6}|[0-9a-fA-F]{8})$"}}},
                 {"stops", {{"type", "array"}, {"maxItems", kMostStops}, {"items", stop}}}};
    for (const EffectKind& kind : effectTable()) defs[kind.name] = schemaOf(kind);
    return defs;
}

Json effectsSchema() {
    Json kinds = Json::array();
    Json atMostOne = Json::array();
    for (const EffectKind& kind : effectTable()) {
        kinds.push_back({{"$ref", std::string("#/$defs/") + kind.name}});
        atMostOne.push_back(
            {{"contains",
              {{"properties", {{"effect", {{"const", kind.name}}}}}, {"required", Json::array({"effect"})}}},
             {"minContains", 0},
             {"maxContains", 1}});
    }
    return {{"description", "at most one of a kind; the library decides the order in which they are painted"},
            {"type", "array"},
            {"items", {{"oneOf", kinds}}},
            {"allOf", atMostOne}};
}

}  // namespace

std::string describeEffects() {
    std::string text;
    for (const EffectKind& kind : effectTable()) {
        text += "  " + std::string(kind.name) + ": " + kind.meaning + "\n";
        for (const Parameter& parameter : kind.parameters) text += describe(parameter);
    }
    return text;
}

std::string parameterTable(const EffectKind& kind) {
    std::string table = "| parameter | values | unit | default | meaning |\n|---|---|---|---|---|\n";
    for (const Parameter& parameter : kind.parameters)
        table += "| `" + std::string(parameter.name) + "` | " + valuesOf(parameter, ", ") + " | " + parameter.unit +
                 " | " + presetOf(parameter) + " | " + parameter.meaning + " |\n";
    return table;
}

std::string parameterTables() {
    std::string text;
    for (const EffectKind& kind : effectTable()) text += std::string(kind.name) + "\n" + parameterTable(kind) + "\n";
    return text;
}

std::string styleSchema() {
    const Json schema = {
        {"$schema", "https://json-schema.org/draft/2020-12/schema"},
        {"title", "QxEffect text style"},
        {"description", "How a text is decorated: colour, opacity and effects."},
        {"type", "object"},
        {"properties",
         {{"$schema", {{"type", "string"}}},
          {"qxstyle", {{"const", 1}, {"description", "version of the format"}}},
          {"name", {{"type", "string"}}},
          {"description", {{"type", "string"}}},
          {"color", {{"$ref", "#/$defs/color"}, {"default", "#ff000000"}}},
          {"opacity",
           {{"type", "number"},
            {"minimum", 0},
            {"maximum", 1},
            {"default", 1},
            {"description", "of the whole picture"}}},
          {"mode",
           {{"enum", Json::array({"auto", "plain", "layer"})},
            {"default", "auto"},
            {"description", "how the effects are put together; auto takes the layer where an effect needs it"}}},
          {"effects", effectsSchema()}}},
        {"required", Json::array({"qxstyle"})},
        {"additionalProperties", false},
        {"$defs", definitions()}};
    return schema.dump(2) + "\n";
}

}  // namespace qxrender
