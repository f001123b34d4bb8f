#include "style_file.h"

#include <cmath>
#include <filesystem>

#include <nlohmann/json.hpp>

#include "color.h"
#include "failure.h"
#include "input_file.h"
#include "png_file.h"

namespace qxrender {

namespace {

using Json = nlohmann::ordered_json;

constexpr int kVersion = 1;
constexpr size_t kLargestFile = 1 << 20;
constexpr double kLargestNumber = 1e9;  // fits an int and a float

/// A value of the document with the path that leads to it.
class Node {
public:
    Node(const Json& json, std::string file, std::string path)
        : mJson(json), mFile(std::move(file)), mPath(std::move(path)) {}

    [[noreturn]] void fail(const std::string& what) const {
        throw Failure(mFile + ": " + (mPath.empty() ? "/" : mPath) + ": " + what);
    }

    std::string where() const { return mFile + ": " + mPath; }
    const Json& json() const { return mJson; }

    bool has(const char* name) const { return mJson.contains(name); }
    Node member(const std::string& name) const { return Node(mJson.at(name), mFile, mPath + "/" + name); }

    const Json& object() const {
        if (!mJson.is_object()) fail("must be an object");
        return mJson;
    }

    std::vector<Node> items() const {
        if (!mJson.is_array()) fail("must be an array");
        std::vector<Node> nodes;
        for (size_t i = 0; i < mJson.size(); ++i) nodes.emplace_back(mJson[i], mFile, mPath + "/" + std::to_string(i));
        return nodes;
    }

    std::string text() const {
        if (!mJson.is_string()) fail("must be a string");
        std::string text = mJson.get<std::string>();
        if (text.find('\0') != std::string::npos) fail("must not hold a NUL");
        return text;
    }

    double number() const {
        if (!mJson.is_number()) fail("must be a number");
        const double value = mJson.get<double>();
        if (!(std::abs(value) <= kLargestNumber)) fail("must be within -1000000000..1000000000");
        return value;
    }

    int whole() const {
        const double value = number();
        if (value != std::floor(value)) fail("must be a whole number");
        return static_cast<int>(value);
    }

    uint32_t color() const { return parseColor(text(), where()); }

private:
    const Json& mJson;
    std::string mFile;
    std::string mPath;
};

std::vector<Stop> readStops(const Parameter& parameter, const Node& node) {
    std::vector<Stop> stops;
    if (node.items().size() > kMostStops) node.fail("more than " + std::to_string(kMostStops) + " stops");
    if (node.items().size() < stopsNeeded(parameter)) node.fail("needs at least one stop");
    for (const Node& item : node.items()) {
        for (const auto& [name, value] : item.object().items())
            if (name != "color" && name != "position") item.member(name).fail("unknown member");
        if (!item.has("color")) item.fail("'color' is missing");
        if (!item.has("position")) item.fail("'position' is missing");
        stops.push_back({item.member("color").color(), static_cast<float>(item.member("position").number())});
    }
    return stops;
}

int readChoice(const Parameter& parameter, const Node& node) {
    const std::string text = node.text();
    std::string known;
    for (const Choice& choice : parameter.choices) {
        if (text == choice.name) return choice.number;
        known += std::string(known.empty() ? "" : ", ") + choice.name;
    }
    node.fail("'" + text + "' is none of " + known);
}

/// A picture that can be read, so that the complaint names the place in the document.
std::string readFileName(const Node& node, const std::filesystem::path& folder) {
    std::string file = (folder / node.text()).string();
    try {
        readPng(file);
    } catch (const Failure& failure) {
        node.fail(failure.what());
    }
    return file;
}

Value readValue(const Parameter& parameter, const Node& node, const std::filesystem::path& folder) {
    Value value;
    switch (parameter.kind) {
        case ParameterKind::Number:
            value.number = node.number();
            break;
        case ParameterKind::Integer:
            value.number = node.whole();
            break;
        case ParameterKind::Choice:
            value.number = readChoice(parameter, node);
            break;
        case ParameterKind::Color:
            value.color = node.color();
            break;
        case ParameterKind::Stops:
            value.stops = readStops(parameter, node);
            break;
        case ParameterKind::File:
            value.file = readFileName(node, folder);
            break;
    }
    return value;
}

EffectSetting readEffect(const Node& node, const std::filesystem::path& folder) {
    node.object();
    if (!node.has("effect")) node.fail("'effect' is missing");
    const std::string name = node.member("effect").text();
    const EffectKind* kind = findEffect(name);
    if (kind == nullptr) node.member("effect").fail("unknown effect '" + name + "'");

    EffectSetting setting = defaultSetting(*kind);
    for (const auto& [key, json] : node.json().items()) {
        if (key == "effect") continue;
        const Node member = node.member(key);
        const int index = findParameter(*kind, key);
        if (index < 0) member.fail(std::string(kind->name) + " has no such parameter");
        const auto at = static_cast<size_t>(index);
        setting.values[at] = readValue(kind->parameters[at], member, folder);
    }
    for (size_t i = 0; i < kind->parameters.size(); ++i)
        if (kind->parameters[i].preset == nullptr && !node.has(kind->parameters[i].name))
            node.fail(std::string("'") + kind->parameters[i].name + "' is missing");
    return setting;
}

LayerMode readMode(const Node& node) {
    const std::string text = node.text();
    if (text == "auto") return LayerMode::Auto;
    if (text == "plain") return LayerMode::Plain;
    if (text == "layer") return LayerMode::Layer;
    node.fail("'" + text + "' is none of auto, plain, layer");
}

void readEffects(const Node& node, const std::filesystem::path& folder, Style& style) {
    for (const Node& item : node.items()) {
        EffectSetting setting = readEffect(item, folder);
        for (const EffectSetting& earlier : style.effects)
            if (earlier.kind == setting.kind)
                item.fail(std::string("a second ") + setting.kind->name + "; a text has one of a kind");
        style.effects.push_back(std::move(setting));
    }
}

Style readDocument(const Node& root, const std::filesystem::path& folder) {
    root.object();
    if (!root.has("qxstyle")) root.fail("'qxstyle' (the version) is missing");
    if (root.member("qxstyle").whole() != kVersion)
        root.member("qxstyle").fail("this program reads version " + std::to_string(kVersion));
    Style style;
    for (const auto& [name, json] : root.json().items()) {
        const Node node = root.member(name);
        if (name == "qxstyle" || name == "$schema") continue;
        if (name == "name") {
            style.name = node.text();
        } else if (name == "description") {
            style.description = node.text();
        } else if (name == "color") {
            style.color = node.color();
        } else if (name == "opacity") {
            style.opacity = static_cast<float>(node.number());
            if (!(style.opacity >= 0 && style.opacity <= 1)) node.fail("must be within 0..1");
        } else if (name == "mode") {
            style.mode = readMode(node);
        } else if (name == "effects") {
            readEffects(node, folder, style);
        } else {
            node.fail("unknown member");
        }
    }
    return style;
}

/// The shortest decimal that gives the same single-precision value.
Json shortNumber(float value) {
    char text[32];
    for (int digits = 1; digits <= 9; ++digits) {
        std::snprintf(text, sizeof text, "%.*g", digits, static_cast<double>(value));
        if (std::stof(text) == value) break;
    }
    return Json::parse(text);
}

Json formatValue(const Parameter& parameter, const Value& value) {
    switch (parameter.kind) {
        case ParameterKind::Number:
            return shortNumber(static_cast<float>(value.number));
        case ParameterKind::Integer:
            return static_cast<int>(value.number);
        case ParameterKind::Color:
            return formatColor(value.color);
        case ParameterKind::File:
            return std::filesystem::absolute(value.file).string();
        case ParameterKind::Choice:
            for (const Choice& choice : parameter.choices)
                if (choice.number == static_cast<int>(value.number)) return choice.name;
            return nullptr;
        case ParameterKind::Stops:
            break;
    }
    Json stops = Json::array();
    for (const Stop& stop : value.stops)
        stops.push_back({{"color", formatColor(stop.color)}, {"position", shortNumber(stop.position)}});
    return stops;
}

const char* formatMode(LayerMode mode) {
    return mode == LayerMode::Auto ? "auto" : mode == LayerMode::Plain ? "plain" : "layer";
}

}  // namespace

Style readStyle(const std::string& path) {
    const std::string text = readInputFile("style", path, kLargestFile);
    const auto limitDepth = [&](int depth, Json::parse_event_t, const Json&) {
        if (depth > 64) throw Failure(path + ": nested too deeply");
        return true;
    };
    Json json;
    try {
        json = Json::parse(text, limitDepth);
    } catch (const Json::parse_error& error) {
        throw Failure(path + ": not JSON (near byte " + std::to_string(error.byte) + ")");
    } catch (const Json::exception&) {
        throw Failure(path + ": holds a number that is too large");
    }
    return readDocument(Node(json, path, ""), std::filesystem::path(path).parent_path());
}

std::string formatStyle(const Style& style) {
    Json document = {{"qxstyle", kVersion}};
    if (!style.name.empty()) document["name"] = style.name;
    if (!style.description.empty()) document["description"] = style.description;
    document["color"] = formatColor(style.color);
    document["opacity"] = shortNumber(style.opacity);
    document["mode"] = formatMode(style.mode);
    document["effects"] = Json::array();
    for (const EffectSetting& setting : style.effects) {
        Json effect = {{"effect", setting.kind->name}};
        for (size_t i = 0; i < setting.values.size(); ++i)
            effect[setting.kind->parameters[i].name] = formatValue(setting.kind->parameters[i], setting.values[i]);
        document["effects"].push_back(std::move(effect));
    }
    return document.dump(2) + "\n";
}

}  // namespace qxrender
