#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "effect/QxEffect.h"

namespace qxrender {

/// What a parameter's value is.
enum class ParameterKind {
    Number,   ///< a float within minimum..maximum
    Integer,  ///< a whole number within minimum..maximum
    Choice,   ///< one of `choices`, handed to the library as its number
    Color,    ///< see parseColor
    Stops,    ///< colour@position, ...
    File,     ///< a PNG file
};

struct Choice {
    const char* name;
    int number;
};

struct Parameter {
    const char* name;
    ParameterKind kind;
    const char* unit;
    double minimum;
    double maximum;
    const char* preset;  ///< the default, written as a user would; null: has to be given
    std::vector<Choice> choices;
    const char* meaning;
};

struct Stop {
    uint32_t color;
    float position;
};

/// One parameter's value; which member counts follows from the parameter's kind.
struct Value {
    double number = 0;
    uint32_t color = 0;
    std::vector<Stop> stops;
    std::string file;
};

struct EffectKind;

/// An effect with all its values, in the order of its parameters.
struct EffectSetting {
    const EffectKind* kind = nullptr;
    std::vector<Value> values;

    /// The value of a parameter that the kind has.
    const Value& operator[](const char* parameter) const;
};

/// One row of the table that parses, documents and applies the effects.
struct EffectKind {
    const char* name;
    const char* meaning;
    int type;  ///< the library's effect type number
    std::vector<Parameter> parameters;
    /// Adds the effect to the stack.
    void (*add)(QxFontEffect::QxEffect&, const EffectSetting&);
    /// How far in pixels the effect may paint beyond the text's box, whatever margin the library reports.
    int (*reach)(const EffectSetting&);
    /// Whether it paints the box around the letters too unless the layer composition confines it.
    bool (*needsLayer)(const EffectSetting&);
};

const std::vector<EffectKind>& effectTable();

/// Null when there is no effect of that name.
const EffectKind* findEffect(const std::string& name);

/// How many stops a list must have: one, unless the parameter's default is none.
size_t stopsNeeded(const Parameter& parameter);

/// The library reads no more.
constexpr size_t kMostStops = 256;

/// Index of the parameter, -1 when the effect has none of that name.
int findParameter(const EffectKind& kind, const std::string& name);

/// Parses one value, checking kind and range; `where` opens the message of the Failure.
Value parseValue(const Parameter& parameter, const std::string& text, const std::string& where);

/// Every parameter at its default; parameters without one are left empty.
EffectSetting defaultSetting(const EffectKind& kind);

/// Parses "name parameter=value ...". Throws Failure.
EffectSetting parseEffect(const std::string& text);

}  // namespace qxrender
