#include "Locale.h"

#include <gtest/gtest.h>
#include <minikin/LocaleList.h>

#include "LocaleRegistry.h"

namespace {

using minikin::EmojiStyle;
using minikin::Locale;
using minikin::LocaleList;
using minikin::registerLocaleList;

TEST(Locale, TagsAreCompletedUnlessTheLanguageIsUnknown) {
    struct Case {
        const char* tag;
        const char* completed;  ///< "" when the tag is of no use
    };
    for (const Case& each :
         {Case{"ja", "ja-Jpan-JP"}, Case{"ja-JP", "ja-Jpan-JP"}, Case{"zh-TW", "zh-Hant-TW"},
          Case{"zh_TW", "zh-Hant-TW"}, Case{"iw", "he-Hebr-IL"}, Case{"und", "und"}, Case{"und-Arab", "und-Arab"},
          Case{"und-Zsye", "und-Zsye"}, Case{" ko ", "ko-Kore-KR"}, Case{"en-u-em-emoji", "en-Latn-US-u-em-emoji"},
          Case{"", ""}, Case{"english", ""}, Case{"-", ""}, Case{"12", ""}, Case{"\xC3\xA4", ""}}) {
        EXPECT_EQ(Locale(each.tag).tag(), each.completed) << each.tag;
    }
    EXPECT_FALSE(Locale(std::string(1000, 'a')).usable());
    std::string endless = "en-x";
    for (int i = 0; i < 60; ++i) endless += "-private";
    EXPECT_FALSE(Locale(endless).usable());
}

TEST(Locale, MixturesSupportTheirParts) {
    EXPECT_TRUE(Locale("ja").supportsScript(HB_SCRIPT_KATAKANA));
    EXPECT_TRUE(Locale("ko").supportsScript(HB_SCRIPT_HAN));
    EXPECT_FALSE(Locale("ko").supportsScript(HB_SCRIPT_KATAKANA));
    EXPECT_TRUE(Locale("de").supportsScript(HB_SCRIPT_LATIN));
}

TEST(LocaleList, DigitsRankLanguageAboveStyleAboveScript) {
    struct Case {
        const char* family;
        const char* wanted;
        uint32_t score;
    };
    for (const Case& each : {
             Case{"ja", "ja", 3},
             Case{"ja", "ja-JP", 3},
             Case{"zh-Hans", "ja", 0},
             Case{"ja", "und-Hani", 1},
             Case{"zh-Hant,zh-Bopo", "zh-TW", 3},
             Case{"zh-Hant,zh-Bopo", "zh-Hanb-TW", 3},  // no single language of the family has both
             Case{"zh-Hans", "zh-TW", 0},
             Case{"ja", "und-Hrkt", 1},
             Case{"und-Zsye", "en-u-em-emoji", 2},
             Case{"en-u-em-emoji", "en-u-em-emoji", 4},
             Case{"und-Zsye", "en", 0},
             Case{"und-Arab", "ar", 1},
             Case{"ar", "fa,ar", 1 * 5 + 3},
             Case{"ja", "en,fr,ja", 3},
             Case{"ja", "ja,en,fr", 3 * 25},
             Case{"", "ja", 0},
         }) {
        EXPECT_EQ(LocaleList(each.family).matchScore(LocaleList(each.wanted)), each.score)
            << each.family << " for " << each.wanted;
    }
}

TEST(LocaleList, HoldsTwelveLanguagesWithoutDuplicates) {
    EXPECT_EQ(LocaleList("ja,ja-JP,ja-Jpan-JP").size(), 1u);
    EXPECT_EQ(LocaleList("ja,,english,ko").size(), 2u);
    EXPECT_EQ(LocaleList("en,fr,de,it,es,pt,nl,sv,da,fi,nb,is,pl,cs").size(), LocaleList::kMaxLocales);
    // Twelve digits are the most that fit beside coverage and variant.
    const LocaleList all("en,fr,de,it,es,pt,nl,sv,da,fi,nb,is");
    EXPECT_LT(all.matchScore(all), 1u << 28);
}

TEST(LocaleList, ShapesInTheFirstLanguageOfTheScript) {
    const LocaleList list("en,ja,zh-Hans");
    EXPECT_STREQ(hb_language_to_string(list.hbLanguageFor(HB_SCRIPT_HAN)), "ja-jpan-jp");
    EXPECT_STREQ(hb_language_to_string(list.hbLanguageFor(HB_SCRIPT_ARABIC)), "en-latn-us");
    EXPECT_EQ(LocaleList().hbLanguageFor(HB_SCRIPT_HAN), HB_LANGUAGE_INVALID);
}

TEST(LocaleRegistry, IdsFollowTheExactString) {
    EXPECT_EQ(registerLocaleList(""), 0u);
    EXPECT_EQ(registerLocaleList("english"), 0u);
    const uint32_t und = registerLocaleList("und");
    const uint32_t ja = registerLocaleList("ja");
    const uint32_t jaJp = registerLocaleList("ja-JP");
    const uint32_t hant = registerLocaleList("zh-Hant");
    const uint32_t hantBopo = registerLocaleList("zh-Hant,zh-Bopo");
    const uint32_t spaced = registerLocaleList("zh-Hant zh-Bopo");
    EXPECT_NE(und, 0u);
    EXPECT_NE(ja, jaJp);
    EXPECT_NE(hant, hantBopo);
    EXPECT_NE(hant, spaced);
    EXPECT_NE(hantBopo, spaced);
    EXPECT_EQ(registerLocaleList("ja"), ja);
    EXPECT_EQ(registerLocaleList("something new to this test, ja"),
              registerLocaleList("something new to this test, ja"));
}

TEST(LocaleRegistry, IdsNobodyWasGivenMeanTheEmptyList) {
    EXPECT_TRUE(minikin::localeListOf(0).empty());
    EXPECT_TRUE(minikin::localeListOf(UINT32_MAX).empty());
    EXPECT_EQ(minikin::localeListOf(registerLocaleList("und-Zsye")).emojiStyle(), EmojiStyle::EMOJI);
}

}  // namespace
