#include "options.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <iostream>
#include <sstream>

#include "color.h"
#include "effect_docs.h"
#include "failure.h"
#include "numbers.h"
#include "style_file.h"
#include "text_input.h"

namespace qxrender {

namespace {

/// The words of the command line before they are given a meaning.
struct Words {
    std::string text;
    std::string textFile;
    std::string style;
    std::string color;
    std::string lineBackground;
    std::string background;
    std::string trim;
    std::string opacity;
    std::string mode;
    std::string padding;
    std::string gravity;
    std::string align = "start";
    std::vector<std::string> effects;
    bool listEffects = false;
    bool effectTables = false;
    bool styleSchema = false;
};

/// A number option: read whatever the locale is, and checked.
template <typename Number>
void addNumber(CLI::App& app, const char* name, Number& target, double low, double high, const std::string& help) {
    const std::string range = formatNumber(low) + ".." + formatNumber(high);
    app.add_option_function<std::string>(
           name,
           [name, &target, low, high, range](const std::string& text) {
               const double value = parseNumber(text, name);
               if (value < low || value > high)
                   throw Failure(std::string(name) + ": " + text + " is out of range " + range);
               if (std::is_integral<Number>::value && value != static_cast<double>(static_cast<long long>(value)))
                   throw Failure(std::string(name) + ": '" + text + "' is not a whole number");
               target = static_cast<Number>(value);
           },
           help + " (" + range + ")")
        ->type_name("N");
}

void describeText(CLI::App& app, Words& words, Options& options) {
    Job& job = options.job;
    app.add_option("text,--text", words.text, "what to draw; \\n starts a new line")->type_name("TEXT");
    app.add_option("--text-file", words.textFile, "UTF-8 file with the text, - for standard input")->type_name("FILE");
    app.add_option("--font", job.font.file, "font file")->type_name("FILE");
    app.add_option("--family", job.font.family, "installed font family")->type_name("NAME");
    addNumber(app, "--weight", job.font.weight, 1, 1000, "font weight, 400 regular, 700 bold");
    app.add_flag("--italic", job.font.italic, "italic face, or a slanted one where there is none");
    app.add_option("--lang", job.font.languages, "languages of the text, such as ja or zh-Hant,en")->type_name("TAGS");
    addNumber(app, "--size", job.size, 1, 4000, "font size in pixels, default 64");
    addNumber(app, "--letter-spacing", job.letterSpacing, -1, 10, "letter spacing in em");
    addNumber(app, "--scale-x", job.scaleX, 0.1, 10, "horizontal scale of the letters");
    addNumber(app, "--skew-x", job.skewX, -2, 2, "slant of the letters, -0.25 leans right");
    app.add_option("--features", job.features, "OpenType features, such as smcp,liga=0")->type_name("LIST");
}

void describeLayout(CLI::App& app, Words& words, Options& options) {
    Job& job = options.job;
    addNumber(app, "--width", job.paragraph.width, 1, 100000, "wrap the text at this many pixels");
    addNumber(app, "--height", job.height, 1, 100000, "height of the view, default that of the text");
    app.add_option("--align", words.align, "start, left, center, right or end")->type_name("SIDE");
    app.add_option("--gravity", words.gravity, "top, center, bottom or fill: where the text stands in the height")
        ->type_name("SIDE");
    app.add_option("--padding", words.padding, "pixels around the text: one number, or left,top,right,bottom")
        ->type_name("N");
    addNumber(app, "--max-lines", job.maxLines, 1, 1000000, "draw no more lines");
    addNumber(app, "--line-spacing", job.paragraph.lineSpacing, 0.1, 10, "factor on the line height");
    app.add_option("--line-background", words.lineBackground, "colour behind each line")->type_name("COLOR");
}

void describeStyle(CLI::App& app, Words& words, Options& options) {
    app.add_option("--style", words.style, "style file to start from")->type_name("FILE");
    app.add_option("--color", words.color, "text colour, default black")->type_name("COLOR");
    app.add_option("--opacity", words.opacity, "opacity of the whole picture (0..1)")->type_name("N");
    app.add_option("--effect", words.effects, "effect with parameters, see below; may be given several times")
        ->type_name("\"NAME KEY=VALUE ...\"")
        ->take_all()
        ->expected(1);
    app.add_option("--mode", words.mode, "auto, plain or layer: how the effects are put together")->type_name("MODE");
    app.add_option("--save-style", options.saveStyle, "write colour, opacity and effects to this style file")
        ->type_name("FILE");
}

void describeOutput(CLI::App& app, Words& words, Options& options) {
    app.add_option("-o,--output", options.output, "PNG file to write")->type_name("FILE");
    app.add_option("--trim", words.trim, "cut empty margins away but for this many pixels (0..10000)")->type_name("N");
    app.add_option("--background", words.background, "put the picture on this colour")->type_name("COLOR");
    app.add_flag("--report", options.report, "print sizes, positions, adjusted values and times as JSON");
    app.add_flag("--verbose", options.verbose, "show the library's log on stderr");
    app.add_flag("--list-effects", words.listEffects, "print the effects with their parameters");
    app.add_flag("--effect-tables", words.effectTables, "print the same as Markdown tables");
    app.add_flag("--style-schema", words.styleSchema, "print the JSON schema of style files");
}

/// Backslash n of a command line, and a doubled backslash.
std::string unescaped(const std::string& text) {
    std::string result;
    for (size_t i = 0; i < text.size(); ++i) {
        const bool escape = text[i] == '\\' && i + 1 < text.size() && (text[i + 1] == 'n' || text[i + 1] == '\\');
        if (escape) ++i;
        result += escape && text[i] == 'n' ? '\n' : text[i];
    }
    return result;
}

template <typename Meaning, size_t Count>
Meaning oneOf(const std::string& option, const std::string& word,
              const std::array<std::pair<const char*, Meaning>, Count>& meanings) {
    std::string known;
    for (const auto& [name, meaning] : meanings) {
        if (word == name) return meaning;
        known += std::string(known.empty() ? "" : ", ") + name;
    }
    throw Failure(option + ": '" + word + "' is none of " + known);
}

qxhost::Alignment parseAlignment(const std::string& word) {
    using qxhost::Alignment;
    return oneOf("--align", word,
                 std::array<std::pair<const char*, Alignment>, 6>{{{"start", Alignment::Start},
                                                                   {"left", Alignment::Left},
                                                                   {"center", Alignment::Center},
                                                                   {"centre", Alignment::Center},
                                                                   {"right", Alignment::Right},
                                                                   {"end", Alignment::End}}});
}

/// The platform's numbers for top, centre, bottom and fill in the vertical bits, left in the horizontal ones.
int parseGravity(const std::string& word) {
    return oneOf("--gravity", word,
                 std::array<std::pair<const char*, int>, 5>{
                     {{"top", 0x33}, {"center", 0x13}, {"centre", 0x13}, {"bottom", 0x53}, {"fill", 0x73}}});
}

LayerMode parseMode(const std::string& word) {
    return oneOf("--mode", word,
                 std::array<std::pair<const char*, LayerMode>, 3>{
                     {{"auto", LayerMode::Auto}, {"plain", LayerMode::Plain}, {"layer", LayerMode::Layer}}});
}

int parsePixels(const char* option, const std::string& text) {
    const double value = parseNumber(text, option);
    if (value < 0 || value > 10000) throw Failure(std::string(option) + ": " + text + " is out of range 0..10000");
    if (value != std::floor(value)) throw Failure(std::string(option) + ": '" + text + "' is not a whole number");
    return static_cast<int>(value);
}

Padding parsePadding(const std::string& text) {
    std::vector<int> sides;
    std::istringstream list(text);
    for (std::string item; std::getline(list, item, ',');) sides.push_back(parsePixels("--padding", item));
    if (sides.size() == 1) sides.resize(4, sides[0]);
    if (sides.size() != 4) throw Failure("--padding: '" + text + "' is neither one number nor four");
    return {sides[0], sides[1], sides[2], sides[3]};
}

float parseOpacity(const std::string& text) {
    const double value = parseNumber(text, "--opacity");
    if (value < 0 || value > 1) throw Failure("--opacity: " + text + " is out of range 0..1");
    return static_cast<float>(value);
}

/// Effects of the command line replace those of the style that are of the same kind, and follow the others.
void addEffects(const std::vector<std::string>& words, Style& style) {
    std::vector<const EffectKind*> given;
    for (const std::string& word : words) {
        EffectSetting setting = parseEffect(word);
        if (std::find(given.begin(), given.end(), setting.kind) != given.end())
            throw Failure(std::string("'") + setting.kind->name + "' is given twice; a text has one of a kind");
        given.push_back(setting.kind);
        const auto same = std::find_if(style.effects.begin(), style.effects.end(),
                                       [&](const EffectSetting& e) { return e.kind == setting.kind; });
        if (same != style.effects.end())
            *same = std::move(setting);
        else
            style.effects.push_back(std::move(setting));
    }
}

void interpret(const CLI::App& app, const Words& words, Options& options) {
    Job& job = options.job;
    if (app.count("text") && app.count("--text-file")) throw Failure("both a text and --text-file are given");
    if (app.count("--font") && app.count("--family")) throw Failure("both --font and --family are given");
    if (options.output.empty() && options.saveStyle.empty()) throw Failure("no output: give -o FILE.png");
    if (!options.output.empty() && !app.count("text") && !app.count("--text-file"))
        throw Failure("no text: give it as an argument or with --text-file");
    if (!options.output.empty() && options.output == options.saveStyle)
        throw Failure("-o and --save-style name the same file");
    job.text = app.count("--text-file") ? readTextFile(words.textFile) : unescaped(words.text);

    if (!words.style.empty()) job.style = readStyle(words.style);
    if (!words.color.empty()) job.style.color = parseColor(words.color, "--color");
    if (!words.opacity.empty()) job.style.opacity = parseOpacity(words.opacity);
    if (!words.mode.empty()) job.style.mode = parseMode(words.mode);
    addEffects(words.effects, job.style);

    job.paragraph.alignment = parseAlignment(words.align);
    if (!words.gravity.empty()) job.gravity = parseGravity(words.gravity);
    if (!words.padding.empty()) job.padding = parsePadding(words.padding);
    job.hasLineBackground = !words.lineBackground.empty();
    if (job.hasLineBackground) job.lineBackground = parseColor(words.lineBackground, "--line-background");
    if (!words.trim.empty()) options.trim = parsePixels("--trim", words.trim);
    if (!words.background.empty()) options.background = parseColor(words.background, "--background");
}

}  // namespace

std::optional<Options> parseOptions(int argc, char** argv) {
    CLI::App app("Draws text with effects into a PNG file.", "qxrender");
    app.footer(
        "Colours are #RGB, #RGBA, #RRGGBB or #AARRGGBB.\n\n"
        "Effects (--effect \"outer-shadow angle=135 distance=8 size=12 color=#80000000 opacity=0.6\"):\n" +
        describeEffects());
    Words words;
    Options options;
    describeText(app, words, options);
    describeLayout(app, words, options);
    describeStyle(app, words, options);
    describeOutput(app, words, options);
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        std::cout << app.help();
        return std::nullopt;
    } catch (const CLI::ParseError& error) {
        throw Failure(error.what());
    }
    if (words.listEffects || words.effectTables || words.styleSchema) {
        std::cout << (words.listEffects ? describeEffects() : words.effectTables ? parameterTables() : styleSchema());
        return std::nullopt;
    }
    interpret(app, words, options);
    return options;
}

}  // namespace qxrender
