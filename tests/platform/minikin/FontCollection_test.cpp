#include <gtest/gtest.h>

#include "sample_text.h"

namespace {

using minikin::FontCollection;
using minikin::FontWish;
using namespace sample;

/// "file:index[start,end)" for each run.
std::string runsOf(const FontCollection& collection, const std::u16string& text, const char* locales = "",
                   FamilyVariant variant = FamilyVariant::DEFAULT) {
    FontWish wish;
    wish.localeListId = minikin::registerLocaleList(locales);
    wish.variant = variant;
    std::string result;
    for (const FontCollection::Run& run :
         collection.itemize(reinterpret_cast<const uint16_t*>(text.data()), text.size(), wish)) {
        const auto* font = static_cast<const android::MinikinFontSkia*>(run.fakedFont.font->typeface().get());
        std::string name = font->getFilePath();
        name.resize(name.find_first_of("-."));
        if (font->GetFontIndex() > 0) name += ":" + std::to_string(font->GetFontIndex());
        result += name + "[" + std::to_string(run.start) + "," + std::to_string(run.end) + ")";
    }
    return result;
}

struct Case {
    const char* name;
    std::u16string text;
    const char* locales;
    const char* runs;
};

void expectRuns(const FontCollection& collection, const std::vector<Case>& cases) {
    for (const Case& each : cases) {
        EXPECT_EQ(runsOf(collection, each.text, each.locales), each.runs) << each.name;
    }
}

TEST(FontCollection, LanguagesOfTheTextDecideBetweenFamiliesThatShareCharacters) {
    expectRuns(FontCollection(deviceFamilies()),
               {{"no wish: the earlier family", u"漢", "", "NotoSansCJK:2[0,1)"},
                {"Japanese", u"漢", "ja", "NotoSansCJK[0,1)"},
                {"Korean", u"漢", "ko-KR", "NotoSansCJK:1[0,1)"},
                {"Taiwan", u"漢", "zh-TW", "NotoSansCJK:3[0,1)"},
                {"Singapore", u"漢", "zh-SG", "NotoSansCJK:2[0,1)"},
                {"second language", u"漢", "en-US,ko", "NotoSansCJK:1[0,1)"},
                {"first of two", u"漢", "ja,zh-Hant", "NotoSansCJK[0,1)"},
                {"script alone", u"漢", "und-Hani", "NotoSansCJK:2[0,1)"},
                {"first family wins over language", u"H", "ja", "Roboto[0,1)"},
                {"listed variant of an ideograph", u"葛\U000E0100", "", "NotoSansCJK[0,3)"}});
}

TEST(FontCollection, VariantDecidesBetweenCompactAndElegant) {
    const FontCollection collection(deviceFamilies());
    EXPECT_EQ(runsOf(collection, u"س", "", FamilyVariant::DEFAULT), "NotoSansArabic[0,1)");
    EXPECT_EQ(runsOf(collection, u"س", "", FamilyVariant::COMPACT), "NotoSansArabic[0,1)");
    EXPECT_EQ(runsOf(collection, u"س", "", FamilyVariant::ELEGANT), "NotoNaskhArabic[0,1)");
}

TEST(FontCollection, LanguageRanksAboveVariant) {
    const FontCollection collection({roboto(), family(testsupport::kNotoCjk, "", FamilyVariant::DEFAULT, 0),
                                     family(testsupport::kNotoCjk, "ja", FamilyVariant::ELEGANT, 1)});
    EXPECT_EQ(runsOf(collection, u"漢", "und-Hani"), "NotoSansCJK:1[0,1)");
    EXPECT_EQ(runsOf(collection, u"漢", ""), "NotoSansCJK[0,1)");
}

TEST(FontCollection, EmojiStyleDecidesBetweenPictureAndText) {
    const std::u16string phone = u"\u260E";
    expectRuns(FontCollection(deviceFamilies()),
               {{"telephone", phone, "", "NotoSansCJK:2[0,1)"},
                {"wanted as picture", phone + u'\uFE0F', "", "NotoColorEmoji[0,2)"},
                {"language of pictures", phone, "en-u-em-emoji", "NotoColorEmoji[0,1)"},
                {"selector wins over language", phone + u'\uFE0E', "en-u-em-emoji", "NotoSansCJK:2[0,2)"},
                {"first family without a selector", u"©", "en-u-em-emoji", "Roboto[0,1)"},
                {"first family has no picture", u"©\uFE0F", "", "NotoColorEmoji[0,2)"},
                {"keycap", u"1\uFE0F\u20E3", "", "NotoColorEmoji[0,3)"},
                {"digit", u"1", "", "Roboto[0,1)"},
                {"heart exists as picture only", u"❤\uFE0E", "", "NotoColorEmoji[0,2)"}});

    const FontCollection emojiEarly(
        {roboto(), family(testsupport::kNotoEmoji, "und-Zsye"), family(testsupport::kNotoCjk, "ja")});
    expectRuns(emojiEarly, {{"earlier family", phone, "", "NotoColorEmoji[0,1)"},
                            {"wanted as text", phone + u'\uFE0E', "", "NotoSansCJK[0,2)"},
                            {"language of text", phone, "und-Zsym", "NotoSansCJK[0,1)"}});
}

TEST(FontCollection, WhatBelongsTogetherStaysInOneFont) {
    expectRuns(FontCollection(deviceFamilies()),
               {{"comma within Han", u"漢,漢", "", "NotoSansCJK:2[0,3)"},
                {"letter after Han", u"漢a", "", "NotoSansCJK:2[0,1)Roboto[1,2)"},
                {"font without the punctuation", u"א.", "", "NotoSansHebrew[0,1)Roboto[1,2)"},
                {"joined emoji", u"👩\u200D⚕\uFE0F", "", "NotoColorEmoji[0,5)"},
                {"sign that ends a joined emoji", u"🏃\u200D♀\uFE0F", "", "NotoColorEmoji[0,5)"},
                {"skin tone", u"👍🏽", "", "NotoColorEmoji[0,4)"},
                {"flag", u"🇩🇪", "", "NotoColorEmoji[0,4)"},
                {"mark in the base's font", u"a\u0301", "", "Roboto[0,2)"},
                {"mark takes its base along", u"ba\u20DD", "", "Roboto[0,1)NotoSansCJK:2[1,3)"},
                {"mark takes all there is", u"a\u20DD", "", "NotoSansCJK:2[0,2)"},
                {"mark cannot take a base its font lacks", u"क\u0301", "", "NotoSansDevanagari[0,1)Roboto[1,2)"},
                {"leading joiner", u"\u200D漢", "", "NotoSansCJK:2[0,2)"},
                {"controls alone", u"\u200E\u200F", "", "Roboto[0,2)"}});
}

TEST(FontCollection, CharactersNobodyHasGoToTheBaseOrTheFirstFamily) {
    const FontCollection collection({family("NotoSansHebrew-Regular.ttf", "und-Hebr"), roboto()});
    expectRuns(collection, {{"not less than: less than", u"\u226E", "", "Roboto[0,1)"},
                            {"private", u"\uE000", "", "NotoSansHebrew[0,1)"},
                            {"lone surrogate reads as U+FFFD", std::u16string(1, u'\xD800'), "", "Roboto[0,1)"},
                            {"surrogates the wrong way round", {u'\xDC00', u'\xD83D'}, "", "Roboto[0,2)"}});
}

TEST(FontCollection, CustomFallbackWinsForAllItHas) {
    std::vector<minikin::Font> fonts;
    fonts.push_back(upright(installedFont(testsupport::kNotoCjk, 1)));
    Families families = deviceFamilies();
    families.push_back(std::make_shared<minikin::FontFamily>(0, FamilyVariant::ELEGANT, std::move(fonts), true));
    EXPECT_EQ(runsOf(FontCollection(families), u"漢a", "ja"), "NotoSansCJK:1[0,1)Roboto[1,2)");
}

TEST(FontCollection, EmptyCollectionsOfferNothing) {
    EXPECT_EQ(runsOf(FontCollection(Families()), u"abc"), "");
    EXPECT_EQ(
        runsOf(FontCollection({nullptr, std::make_shared<minikin::FontFamily>(std::vector<minikin::Font>())}), u"abc"),
        "");
    EXPECT_EQ(runsOf(FontCollection({roboto()}), u""), "");
}

}  // namespace
