#include "style_file.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "adjustments.h"
#include "effect_docs.h"
#include "failure.h"
#include "input_file.h"
#include "output_file.h"
#include "png_file.h"
#include "style_stack.h"
#include "support/temporary_folder.h"

namespace qxrender {
namespace {

class StyleFile : public ::testing::Test {
protected:
    std::string path(const std::string& name = "style.json") const { return mFolder.path(name); }

    Style read(const std::string& text) const { return readStyle(mFolder.write("style.json", text)); }

    /// What the reader complains about, behind the file's name; "" when it takes the document.
    std::string complaint(const std::string& text) const {
        try {
            read(text);
        } catch (const Failure& failure) {
            return std::string(failure.what()).substr(path().size() + 2);
        }
        return "";
    }

    void writeTile() const {
        Picture tile;
        tile.width = tile.height = 2;
        tile.pixels = {0xFFFF0000u, 0xFF00FF00u, 0xFF0000FFu, 0x00000000u};
        OutputFile("", path("tile.png"), encodePng(tile)).publish();
    }

    const QxFontEffect::test::TemporaryFolder mFolder;
};

std::string effect(const std::string& members) {
    return R"({"qxstyle": 1, "effects": [{"effect": "stroke"}, {)" + members + "}]}";
}

TEST_F(StyleFile, NamesThePlaceOfEachMistake) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"", "not JSON (near byte 1)"},
        {"{\"qxstyle\": 1,}", "not JSON (near byte 15)"},
        {"{\"qxstyle\": 1, \"name\": \"\xFF\"}", "not JSON (near byte 25)"},
        {"[]", "/: must be an object"},
        {"{}", "/: 'qxstyle' (the version) is missing"},
        {R"({"qxstyle": 2})", "/qxstyle: this program reads version 1"},
        {R"({"qxstyle": 1.5})", "/qxstyle: must be a whole number"},
        {R"({"qxstyle": 1, "colour": "#fff"})", "/colour: unknown member"},
        {R"({"qxstyle": 1, "color": "white"})", "/color: 'white' is no colour (#RGB, #RGBA, #RRGGBB or #AARRGGBB)"},
        {R"({"qxstyle": 1, "color": 7})", "/color: must be a string"},
        {R"({"qxstyle": 1, "opacity": 1.01})", "/opacity: must be within 0..1"},
        {R"({"qxstyle": 1, "opacity": null})", "/opacity: must be a number"},
        {R"({"qxstyle": 1, "mode": "both"})", "/mode: 'both' is none of auto, plain, layer"},
        {R"({"qxstyle": 1, "effects": {}})", "/effects: must be an array"},
        {R"({"qxstyle": 1, "effects": ["stroke"]})", "/effects/0: must be an object"},
        {effect(""), "/effects/1: 'effect' is missing"},
        {effect(R"("effect": 1)"), "/effects/1/effect: must be a string"},
        {effect(R"("effect": "blur")"), "/effects/1/effect: unknown effect 'blur'"},
        {effect(R"("effect": "stroke")"), "/effects/1: a second stroke; a text has one of a kind"},
        {effect(R"("effect": "bevel", "width": 3)"), "/effects/1/width: bevel has no such parameter"},
        {effect(R"("effect": "bevel", "size": "3")"), "/effects/1/size: must be a number"},
        {effect(R"("effect": "bevel", "size": 1e10)"), "/effects/1/size: must be within -1000000000..1000000000"},
        {effect(R"("effect": "bevel", "size": 1e999)"), "holds a number that is too large"},
        {effect(R"("effect": "bevel", "soften": 0.5)"), "/effects/1/soften: must be a whole number"},
        {effect(R"("effect": "bevel", "technique": 1)"), "/effects/1/technique: must be a string"},
        {effect(R"("effect": "bevel", "technique": "x")"), "/effects/1/technique: 'x' is none of smooth, chisel"},
        {effect(R"("effect": "pattern")"), "/effects/1: 'file' is missing"},
        {effect(R"("effect": "pattern", "file": "a\u0000b")"), "/effects/1/file: must not hold a NUL"},
        {effect(R"("effect": "linear-gradient", "stops": [])"), "/effects/1/stops: needs at least one stop"},
        {effect(R"("effect": "outer-glow", "stops": [{"color": "#fff"}])"),
         "/effects/1/stops/0: 'position' is missing"},
        {effect(R"("effect": "outer-glow", "stops": [{"color": "#fff", "position": 0, "alpha": 1}])"),
         "/effects/1/stops/0/alpha: unknown member"},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(complaint(text), expected) << text;
    EXPECT_EQ(complaint(std::string(100000, '[')), "nested too deeply");
    // Brackets in a text nest nothing.
    EXPECT_EQ(complaint(R"({"qxstyle": 1, "name": ")" + std::string(200, '[') + R"("})"), "");
    EXPECT_EQ(complaint(effect(R"("effect": "pattern", "file": "gone.png")")).substr(0, 40),
              "/effects/1/file: cannot read picture '" + path("").substr(0, 2));
}

TEST_F(StyleFile, ReadsBackWhatItWrites) {
    writeTile();
    const Style style = read(R"({"qxstyle": 1, "name": "N \"q\" é", "description": "D", "color": "#80102030",
        "opacity": 0.3, "mode": "layer", "effects": [
        {"effect": "emboss", "size": 6.7, "angle": -45.25, "direction": "down", "soften": 3},
        {"effect": "pattern", "file": "tile.png", "scale": 0.1},
        {"effect": "outer-glow", "stops": [{"color": "#f008", "position": 0.1}, {"color": "#fff", "position": 1}]},
        {"effect": "stroke", "position": "inside", "opacity": 0.7}]})");
    const std::string written = formatStyle(style);
    const Style again = read(written);
    EXPECT_EQ(formatStyle(again), written);

    EXPECT_EQ(again.name, "N \"q\" é");
    EXPECT_EQ(again.color, 0x80102030u);
    EXPECT_EQ(again.opacity, 0.3f);
    EXPECT_EQ(again.mode, LayerMode::Layer);
    ASSERT_EQ(again.effects.size(), 4u);
    EXPECT_EQ(static_cast<float>(again.effects[0]["size"].number), 6.7f);
    EXPECT_EQ(again.effects[0]["angle"].number, -45.25);
    EXPECT_EQ(again.effects[0]["direction"].number, style.effects[0]["direction"].number);
    EXPECT_EQ(again.effects[2]["stops"].stops[0].color, 0x88FF0000u);
    EXPECT_EQ(again.effects[3]["position"].number, 2);
    // Saved elsewhere, a style must still find its pattern.
    EXPECT_TRUE(std::filesystem::path(again.effects[1]["file"].file).is_absolute());
}

TEST_F(StyleFile, ReportsWhatTheLibraryLimitsOrRounds) {
    const Style style = read(R"({"qxstyle": 1, "effects": [
        {"effect": "outer-shadow", "angle": -45.5, "distance": 7.9, "size": 1000, "opacity": 3},
        {"effect": "inner-shadow", "angle": -90},
        {"effect": "bevel", "size": 5000, "depth": 99, "soften": 40, "altitude": 200, "highlight-opacity": -1},
        {"effect": "linear-gradient", "scale": 9, "stops": [{"color": "#fff", "position": 0.123},
                                                            {"color": "#fff", "position": 7}]}]})");
    QxFontEffect::QxEffect stack;
    addStyle(stack, style);
    std::string found;
    for (const Adjustment& a : findAdjustments(stack, style.effects)) {
        char line[100];
        std::snprintf(line, sizeof line, "%s %s %g->%g\n", a.effect.c_str(), a.parameter.c_str(), a.asked, a.used);
        found += line;
    }
    EXPECT_EQ(found,
              "outer-shadow angle -45.5->315\nouter-shadow distance 7.9->7\nouter-shadow size 1000->100\n"
              "outer-shadow opacity 3->1\n"
              "bevel size 5000->100\nbevel depth 99->10\nbevel soften 40->16\nbevel altitude 200->20\n"
              "bevel highlight-opacity -1->0\n"
              "linear-gradient scale 9->2\nlinear-gradient stops[0] 0.123->0.12\nlinear-gradient stops[1] 7->1\n");
}

TEST_F(StyleFile, TakesTheLayerWhereAnEffectNeedsIt) {
    const std::vector<std::pair<const char*, bool>> cases = {
        {R"({"qxstyle": 1})", false},
        {R"({"qxstyle": 1, "opacity": 0.5})", true},
        {R"({"qxstyle": 1, "effects": [{"effect": "stroke"}]})", false},
        {R"({"qxstyle": 1, "effects": [{"effect": "stroke", "position": "inside"}]})", true},
        {R"({"qxstyle": 1, "effects": [{"effect": "inner-glow"}]})", true},
        {R"({"qxstyle": 1, "effects": [{"effect": "inner-glow"}], "mode": "plain"})", false},
        {R"({"qxstyle": 1, "effects": [{"effect": "bevel"}]})", true},
        {R"({"qxstyle": 1, "effects": [{"effect": "bevel", "style": "outer"}]})", false},
        {R"({"qxstyle": 1, "mode": "layer"})", true},
    };
    for (const auto& [text, layer] : cases) EXPECT_EQ(wantsLayer(read(text)), layer) << text;
    const Style faint = read(R"({"qxstyle": 1, "color": "#c0102030", "opacity": 0.5})");
    EXPECT_EQ(textColorOf(faint), 0x60102030u);
}

TEST(StyleDocuments, EveryStyleOfTheProjectIsReadAndNamed) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(QX_SOURCE_DIR "/styles")) {
        if (entry.path().extension() != ".json") continue;
        ++count;
        const Style style = readStyle(entry.path().string());
        EXPECT_FALSE(style.name.empty() || style.description.empty() || style.effects.empty()) << entry.path();
        QxFontEffect::QxEffect stack;
        addStyle(stack, style);
        EXPECT_TRUE(findAdjustments(stack, style.effects).empty()) << entry.path() << " asks for what is not used";
    }
    EXPECT_GE(count, 12);
}

TEST(StyleDocuments, SchemaAndTablesOfTheDocumentsAreThoseOfTheTool) {
    const auto document = [](const char* name) {
        return readInputFile("document", QX_SOURCE_DIR + std::string("/docs/") + name, 1 << 20);
    };
    EXPECT_EQ(document("style.schema.json"), styleSchema()) << "run scripts/docs_pictures.sh";
    const std::string effects = document("effects.md");
    for (const EffectKind& kind : effectTable())
        EXPECT_NE(effects.find("<!-- parameters: " + std::string(kind.name) + " -->\n" + parameterTable(kind) +
                               "<!-- end of parameters -->"),
                  std::string::npos)
            << kind.name << ": run scripts/docs_pictures.sh";
}

}  // namespace
}  // namespace qxrender
