#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "color.h"
#include "effect_table.h"
#include "failure.h"
#include "numbers.h"

namespace qxrender {
namespace {

/// The message of the Failure that `call` ends in, "" when it does not.
template <typename Call>
std::string complaintOf(Call call) {
    try {
        call();
    } catch (const Failure& failure) {
        return failure.what();
    }
    return "";
}

TEST(Numbers, AreReadWholeAndFiniteOrNotAtAll) {
    const std::vector<std::pair<const char*, double>> good = {{"0", 0},      {"-0.5", -0.5}, {"+3", 3},
                                                              {".25", 0.25}, {"1e2", 100},   {"12.", 12}};
    for (const auto& [text, value] : good) EXPECT_EQ(parseNumber(text, "x"), value) << text;
    for (const char* text :
         {"", "+", "-", "abc", "1,5", "1 ", " 1", "0x10", "nan", "inf", "-inf", "1e999", "1px", "++1"})
        EXPECT_EQ(complaintOf([&] { parseNumber(text, "x"); }), std::string("x: '") + text + "' is not a number");
}

TEST(Numbers, AreWrittenSoThatTheyReadBack) {
    for (const double value : {0.0, 0.1, 100000.0, -7.25, 1e-9, 3.0e12, 1.0 / 3.0})
        EXPECT_EQ(parseNumber(formatNumber(value), "x"), value);
    EXPECT_EQ(formatNumber(100000), "100000");
}

TEST(Colors, TakeFourForms) {
    EXPECT_EQ(parseColor("#1aF", "c"), 0xFF11AAFFu);
    EXPECT_EQ(parseColor("#1aF8", "c"), 0x8811AAFFu);
    EXPECT_EQ(parseColor("#123456", "c"), 0xFF123456u);
    EXPECT_EQ(parseColor("#80123456", "c"), 0x80123456u);
    EXPECT_EQ(parseColor(formatColor(0x00ABCDEFu), "c"), 0x00ABCDEFu);
    for (const char* text : {"", "#", "#12", "#12345", "#1234567", "#123456789", "123456", "#12g", "red", "#-12"})
        EXPECT_NE(complaintOf([&] { parseColor(text, "c"); }).find("is no colour"), std::string::npos) << text;
}

TEST(Effects, AreParsedWithTheirDefaults) {
    const EffectSetting setting = parseEffect("  outer-shadow  angle=20\tcolor=#80ff0000 ");
    EXPECT_STREQ(setting.kind->name, "outer-shadow");
    EXPECT_EQ(setting["angle"].number, 20);
    EXPECT_EQ(setting["color"].color, 0x80FF0000u);
    EXPECT_EQ(setting["size"].number, parseNumber(setting.kind->parameters[2].preset, "size"));

    const EffectSetting glow = parseEffect("outer-glow stops=#f00@0,#00f8@0.5,#000@1");
    ASSERT_EQ(glow["stops"].stops.size(), 3u);
    EXPECT_EQ(glow["stops"].stops[1].color, 0x880000FFu);
    EXPECT_EQ(glow["stops"].stops[1].position, 0.5f);
}

TEST(Effects, EveryDefaultOfTheTableIsWithinItsRange) {
    for (const EffectKind& kind : effectTable()) {
        EXPECT_EQ(findEffect(kind.name), &kind);
        EXPECT_EQ(complaintOf([&] { defaultSetting(kind); }), "") << kind.name;
    }
}

TEST(Effects, ComplainAboutWhatIsWrong) {
    const std::vector<std::pair<const char*, const char*>> cases = {
        {"", "unknown effect '' (see --list-effects)"},
        {"shadow", "unknown effect 'shadow' (see --list-effects)"},
        {"stroke thickness=3", "stroke: unknown parameter 'thickness' (see --list-effects)"},
        {"stroke width", "stroke: 'width' has no value; write width=..."},
        {"stroke =3", "stroke: unknown parameter '' (see --list-effects)"},
        {"stroke width=3 width=4", "stroke: 'width' is given twice"},
        {"stroke width=wide", "stroke width: 'wide' is not a number"},
        {"stroke width=-1", "stroke width: -1 is out of range 0..100"},
        {"stroke width=100.5", "stroke width: 100.5 is out of range 0..100"},
        {"stroke position=under", "stroke position: 'under' is none of center|outside|inside"},
        {"stroke color=blue", "stroke color: 'blue' is no colour (#RGB, #RGBA, #RRGGBB or #AARRGGBB)"},
        {"bevel soften=1.5", "bevel soften: '1.5' is not a whole number"},
        {"pattern scale=2", "pattern: 'file' has to be given"},
        {"linear-gradient stops=", "linear-gradient stops: needs at least one colour@position"},
        {"linear-gradient stops=#fff", "linear-gradient stops: '#fff' is not colour@position"},
        {"linear-gradient stops=#fff@1.5", "linear-gradient stops: position 1.5 is out of range 0..1"},
        {"linear-gradient stops=#fff@0,,", "linear-gradient stops: '' is not colour@position"},
    };
    for (const auto& c : cases) EXPECT_EQ(complaintOf([&] { parseEffect(c.first); }), c.second) << c.first;

    std::string many = "outer-glow stops=";
    for (int i = 0; i < 257; ++i) many += "#fff@0,";
    EXPECT_EQ(complaintOf([&] { parseEffect(many); }), "outer-glow stops: more than 256 stops");
}

}  // namespace
}  // namespace qxrender
