#include <gtest/gtest.h>

#include "FontFace.h"
#include "sample_text.h"

namespace {

using minikin::Font;
using minikin::FontFamily;
using namespace sample;
using Slant = minikin::FontStyle::Slant;

std::vector<Font> styled(const std::vector<FontStyle>& styles) {
    std::vector<Font> fonts;
    for (const FontStyle& style : styles) {
        fonts.push_back(Font::Builder(installedFont(testsupport::kRobotoRegular)).setStyle(style).build());
    }
    return fonts;
}

TEST(Font, StyleLeftUnsetIsReadFromTheFont) {
    struct Case {
        const char* file;
        FontStyle style;
    };
    for (const Case& each : {Case{"Roboto-Regular.ttf", FontStyle(400, Slant::UPRIGHT)},
                             Case{"Roboto-BlackItalic.ttf", FontStyle(900, Slant::ITALIC)}}) {
        EXPECT_EQ(Font::Builder(installedFont(each.file)).build().style(), each.style) << each.file;
    }
    const Font half = Font::Builder(installedFont("Roboto-BlackItalic.ttf")).setWeight(300).build();
    EXPECT_EQ(half.style(), FontStyle(300, Slant::ITALIC));
}

TEST(Font, BuilderMakesOneFont) {
    Font::Builder builder(installedFont(testsupport::kRobotoRegular));
    EXPECT_NE(builder.build().typeface(), nullptr);
    std::vector<Font> second;
    second.push_back(builder.build());
    EXPECT_EQ(FontFamily(std::move(second)).getClosestMatch(FontStyle()).font, nullptr);
}

TEST(FontFamily, ClosestMatchCountsHundredsAndTwoForTheSlant) {
    const FontStyle::Slant up = Slant::UPRIGHT;
    const FontStyle::Slant it = Slant::ITALIC;
    struct Case {
        std::vector<FontStyle> fonts;
        FontStyle wanted;
        size_t chosen;
        bool fakeBold;
        bool fakeItalic;
    };
    const std::vector<FontStyle> stock = {{100, up}, {300, up}, {400, up}, {500, up}, {900, up}, {700, up}};
    const Case cases[] = {
        {stock, {600, up}, 3, false, false},                   // 500 stands before 700
        {stock, {800, up}, 4, false, false},                   // 900 stands before 700
        {stock, {200, up}, 0, false, false},                   //
        {stock, {700, it}, 5, false, true},                    //
        {stock, {1000, up}, 4, false, false},                  //
        {{{400, up}}, {600, up}, 0, true, false},              //
        {{{400, up}}, {599, up}, 0, false, false},             // below 600
        {{{401, up}}, {600, up}, 0, false, false},             // one short of 200 steps
        {{{400, it}}, {700, up}, 0, true, false},              // slant cannot be taken away
        {{{400, up}, {700, it}}, {700, up}, 1, false, false},  // 2 for the slant, 3 for the weight
        {{{500, up}, {700, it}}, {700, up}, 0, true, false},   // 2 against 2: the first
        {{{450, up}, {400, up}}, {400, up}, 0, false, false},  // the same hundred is no distance
        {{{400, up}, {400, it}}, {400, it}, 1, false, false},
    };
    for (const Case& each : cases) {
        const FontFamily family(styled(each.fonts));
        minikin::FakedFont match = family.getClosestMatch(each.wanted);
        SCOPED_TRACE(testing::Message() << "weight " << each.wanted.weight() << ", case " << &each - cases);
        EXPECT_EQ(match.font, family.getFont(each.chosen));
        EXPECT_EQ(match.fakery.isFakeBold(), each.fakeBold);
        EXPECT_EQ(match.fakery.isFakeItalic(), each.fakeItalic);
    }
}

TEST(FontFamily, CoverageIsThatOfTheFontNearestToRegular) {
    const auto emoji = [] { return installedFont(testsupport::kNotoEmoji); };
    const auto latin = [] { return installedFont(testsupport::kRobotoRegular); };
    std::vector<Font> fonts;
    fonts.push_back(upright(emoji(), 700));
    fonts.push_back(upright(latin(), 400));
    const FontFamily family(std::move(fonts));
    EXPECT_TRUE(family.hasGlyph('H', 0));
    EXPECT_FALSE(family.hasGlyph(0x1F600, 0));
}

TEST(FontFamily, SequencesNeedTheirOwnEntry) {
    const auto latin = roboto();
    EXPECT_TRUE(latin->hasGlyph(0xA9, 0));
    EXPECT_FALSE(latin->hasGlyph(0xA9, 0xFE0F));
    const auto emoji = family(testsupport::kNotoEmoji, "und-Zsye");
    EXPECT_TRUE(emoji->hasGlyph(0xA9, 0xFE0F));
    EXPECT_FALSE(emoji->hasGlyph(0x110000, 0));
    EXPECT_FALSE(emoji->hasGlyph(UINT32_MAX, 0));
}

TEST(FontFamily, LanguagesDecideWhatIsAnEmojiFamily) {
    EXPECT_TRUE(family(testsupport::kRobotoRegular, "und-Zsye")->isColorEmojiFamily());
    EXPECT_TRUE(family(testsupport::kRobotoRegular, "en-u-em-emoji")->isColorEmojiFamily());
    EXPECT_FALSE(family(testsupport::kNotoEmoji, "")->isColorEmojiFamily());
    EXPECT_FALSE(family(testsupport::kNotoEmoji, "und-Zsym")->isColorEmojiFamily());
}

TEST(FontFace, KnowsNothingOfBytesThatAreNoFont) {
    const std::vector<char> noise(4096, '\x55');
    const std::vector<char>& bytes = testsupport::fontBytes(testsupport::kRobotoRegular);
    struct Case {
        const char* name;
        const void* data;
        size_t size;
        int index;
    };
    for (const Case& each : {Case{"null", nullptr, 100, 0}, Case{"empty", noise.data(), 0, 0},
                             Case{"noise", noise.data(), noise.size(), 0}, Case{"cut", bytes.data(), 300, 0},
                             Case{"negative index", bytes.data(), bytes.size(), -1}}) {
        const minikin::FontFace face(each.data, each.size, each.index, {});
        EXPECT_FALSE(face.hasGlyph('H')) << each.name;
        EXPECT_EQ(face.style(), FontStyle()) << each.name;
    }
}

TEST(FontFace, CoverageIsTheCharacterMapOfTheFont) {
    const std::vector<char>& bytes = testsupport::fontBytes(testsupport::kNotoNaskh);
    const minikin::FontFace face(bytes.data(), bytes.size(), 0, {});
    for (uint32_t c = 0; c < 0x12000; ++c) {
        hb_codepoint_t glyph = 0;
        const bool mapped = hb_font_get_nominal_glyph(face.hbFont(), c, &glyph) && glyph != 0;
        ASSERT_EQ(face.hasGlyph(c), mapped) << std::hex << c;
    }
}

TEST(Typeface, StyleIsClampedOrTakenFromTheFirstFont) {
    struct Case {
        int weight;
        int italic;
        FontStyle style;
    };
    for (const Case& each : {Case{-1, -1, FontStyle(900, Slant::ITALIC)}, Case{0, 0, FontStyle(1, Slant::UPRIGHT)},
                             Case{2000, 1, FontStyle(1000, Slant::ITALIC)}, Case{-7, 0, FontStyle(400, Slant::UPRIGHT)},
                             Case{350, -1, FontStyle(350, Slant::ITALIC)}}) {
        const auto typeface = typefaceOf({family("Roboto-BlackItalic.ttf", "")}, each.weight, each.italic);
        EXPECT_EQ(typeface->fStyle, each.style) << each.weight << ", " << each.italic;
    }
}

TEST(Typeface, FamiliesStayWithTheCaller) {
    Families families = {roboto()};
    const std::unique_ptr<android::Typeface> typeface(
        android::Typeface::createFromFamilies(std::move(families), 400, 0));
    EXPECT_EQ(families.size(), 1u);
}

}  // namespace
