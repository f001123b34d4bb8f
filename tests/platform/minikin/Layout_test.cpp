#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numeric>
#include <random>
#include <thread>

#include "TextPieces.h"
#include "sample_text.h"

namespace {

using minikin::Bidi;
using minikin::Layout;
using namespace sample;

constexpr size_t kAll = std::numeric_limits<size_t>::max();

const android::Typeface& device() {
    static const android::Typeface* const typeface = typefaceOf(deviceFamilies()).release();
    return *typeface;
}

Layout layOutRange(const std::u16string& text, size_t start, size_t count, size_t contextStart, size_t contextCount,
                   const android::Paint& paint = devicePaint(), Bidi bidi = Bidi::DEFAULT_LTR) {
    return android::MinikinUtils::doLayout(&paint, bidi, &device(), reinterpret_cast<const uint16_t*>(text.data()),
                                           text.size(), start, count, contextStart, contextCount, nullptr);
}

std::vector<unsigned> glyphsOf(const Layout& layout) {
    std::vector<unsigned> glyphs;
    for (int i = 0; i < static_cast<int>(layout.nGlyphs()); ++i) glyphs.push_back(layout.getGlyphId(i));
    return glyphs;
}

std::vector<unsigned> glyphsOf(const std::u16string& text, Bidi bidi = Bidi::DEFAULT_LTR,
                               const android::Paint& paint = devicePaint()) {
    return glyphsOf(layOut(text, paint, device(), bidi));
}

std::vector<unsigned> joined(std::vector<unsigned> a, const std::vector<unsigned>& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

TEST(Layout, RunsStandInVisualOrder) {
    const std::vector<unsigned> latin = glyphsOf(u"Ag");
    const std::vector<unsigned> arabic = glyphsOf(u"سلام");
    const std::vector<unsigned> blank = glyphsOf(u" ");
    const std::u16string latinFirst = u"Ag سلام";
    const std::u16string arabicFirst = u"سلام Ag";
    const std::vector<unsigned> latinLeft = joined(joined(latin, blank), arabic);
    const std::vector<unsigned> arabicLeft = joined(joined(arabic, blank), latin);
    EXPECT_EQ(glyphsOf(latinFirst, Bidi::LTR), latinLeft);
    EXPECT_EQ(glyphsOf(latinFirst, Bidi::RTL), arabicLeft);
    EXPECT_EQ(glyphsOf(latinFirst, Bidi::DEFAULT_RTL), latinLeft);  // the first strong letter decides
    EXPECT_EQ(glyphsOf(arabicFirst, Bidi::DEFAULT_LTR), latinLeft);
    EXPECT_EQ(glyphsOf(u"סלם", Bidi::FORCE_LTR), joined(joined(glyphsOf(u"ס"), glyphsOf(u"ל")), glyphsOf(u"ם")));
    EXPECT_EQ(glyphsOf(u"AB", Bidi::FORCE_RTL), glyphsOf(u"BA"));
    // Two fonts within one word.
    EXPECT_EQ(glyphsOf(u"אس"), joined(glyphsOf(u"س"), glyphsOf(u"א")));
}

TEST(Layout, ParagraphDecidesTheDirectionOfALine) {
    // The line is "12 34": digits keep their order, but the paragraph puts the second number left of the first.
    const std::u16string text = u"שלום 12 34";
    EXPECT_EQ(glyphsOf(layOutRange(text, 5, 5, 0, kAll)), glyphsOf(u"34 12"));
    EXPECT_EQ(glyphsOf(layOutRange(text, 5, 5, 5, kAll)), glyphsOf(u"12 34"));
}

TEST(Layout, LettersJoinAcrossTheEndOfALine) {
    const std::u16string word = u"ببب";
    const std::vector<unsigned> all = glyphsOf(word);  // final, medial, initial from left to right
    ASSERT_EQ(all.size() % 3, 0u);
    const size_t each = all.size() / 3;
    const std::vector<unsigned> medial(all.begin() + static_cast<ptrdiff_t>(each),
                                       all.begin() + static_cast<ptrdiff_t>(2 * each));
    EXPECT_EQ(glyphsOf(layOutRange(word, 1, 1, 0, kAll)), medial);
    EXPECT_NE(glyphsOf(layOutRange(word, 1, 1, 1, 1)), medial);
    EXPECT_NE(glyphsOf(layOutRange(u"ب ب", 2, 1, 0, kAll)), medial);
}

TEST(Layout, PiecesDoNotKernWithEachOther) {
    const auto advance = [](const std::u16string& text) { return layOut(text, devicePaint(), device()).getAdvance(); };
    EXPECT_LT(advance(u"VA"), advance(u"V") + advance(u"A"));
    EXPECT_EQ(advance(u"V A"), advance(u"V") + advance(u" ") + advance(u"A"));
}

TEST(Layout, KerningIsStretchedWithTheText) {
    const auto kerning = [](float scaleX) {
        android::Paint paint = devicePaint();
        paint.getSkFont().setScaleX(scaleX);
        return layOut(u"VA", paint, device()).getX(1) - layOut(u"V", paint, device()).getAdvance();
    };
    EXPECT_NEAR(kerning(2.0f), 2 * kerning(1.0f), 1.0f / 128);
}

TEST(Layout, VariantOfThePaintChoosesTheFamily) {
    android::Paint paint = devicePaint();
    const minikin::MinikinFont* compact = layOut(u"س", paint, device()).getFont(0);
    paint.setFamilyVariant(FamilyVariant::ELEGANT);
    const minikin::MinikinFont* elegant = layOut(u"س", paint, device()).getFont(0);
    EXPECT_EQ(compact, installedFont("NotoSansArabic-Regular.ttf").get());
    EXPECT_EQ(elegant, installedFont(testsupport::kNotoNaskh).get());
}

TEST(TextPieces, AreWordsBlanksControlsAndIdeographsOnwards) {
    struct Case {
        std::u16string text;
        std::vector<size_t> ends;
    };
    const Case cases[] = {
        {u"ab  cd", {2, 3, 4, 6}},
        {u"a\u2003b\u3000c", {1, 2, 3, 4, 5}},
        {u"a\u200Bb\u00A0c\nd", {7}},
        {u"漢字かな漢a", {1, 4, 6}},
        {u"\u33FF\u3400\u9FFF\uA000", {1, 2, 4}},
        {u"a\u200Eb\u200Fc\u061Cd\u202Ae\u2069", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}},
    };
    for (const Case& each : cases) {
        std::vector<size_t> ends;
        const auto* text = reinterpret_cast<const uint16_t*>(each.text.data());
        for (const minikin::TextPiece& piece : minikin::textPieces(text, each.text.size(), {0, each.text.size()})) {
            EXPECT_EQ(piece.range.start, ends.empty() ? 0 : ends.back());
            ends.push_back(piece.range.end);
        }
        EXPECT_EQ(ends, each.ends) << "case " << &each - cases;
    }
}

TEST(Layout, AdvancesOfUnitsBelongToTheFirstOfTheirCluster) {
    const Layout ligature = layOut(u"fix", devicePaint(), device());
    ASSERT_EQ(ligature.nGlyphs(), 2u);
    EXPECT_EQ(ligature.getAdvances(),
              (std::vector<float>{ligature.getX(1), 0.0f, ligature.getAdvance() - ligature.getX(1)}));
    EXPECT_EQ(layOut(u"😀", devicePaint(), device()).getAdvances(), (std::vector<float>{59.765625f, 0.0f}));
    // Two words from right to left: the second stands left but keeps its place in the list.
    const std::vector<float> words = layOut(u"אב מ", devicePaint(), device()).getAdvances();
    EXPECT_EQ(words[3], layOut(u"מ", devicePaint(), device()).getAdvance());
}

TEST(Layout, LetterSpacingKeepsOffJoiningScriptsAndOpensLigatures) {
    android::Paint spaced = devicePaint();
    spaced.setLetterSpacing(0.1f);
    EXPECT_EQ(layOut(u"سلام", spaced, device()).getAdvance(), 90.0f);
    EXPECT_EQ(layOut(u"नम", spaced, device()).getAdvance(), layOut(u"नम", devicePaint(), device()).getAdvance());

    EXPECT_EQ(layOut(u"fi", spaced, device()).nGlyphs(), 2u);
    spaced.setLetterSpacing(0.03f);
    EXPECT_EQ(layOut(u"fi", spaced, device()).nGlyphs(), 1u);
    // A base and its mark are one cluster.
    EXPECT_FLOAT_EQ(layOut(u"x\u0301", spaced, device()).getAdvance(),
                    layOut(u"x\u0301", devicePaint(), device()).getAdvance() + 0.03f * 48);
    // In proportion to the stretch.
    spaced.getSkFont().setScaleX(2.0f);
    android::Paint stretched = devicePaint();
    stretched.getSkFont().setScaleX(2.0f);
    EXPECT_FLOAT_EQ(layOut(u"A", spaced, device()).getAdvance(),
                    layOut(u"A", stretched, device()).getAdvance() + 0.03f * 96);
}

TEST(Layout, FeaturesForAllCharactersAreApplied) {
    android::Paint paint = devicePaint();
    const auto glyphCount = [&paint](const char* features) {
        paint.setFontFeatureSettings(features);
        return layOut(u"fi", paint, device()).nGlyphs();
    };
    EXPECT_EQ(glyphCount(""), 1u);
    EXPECT_EQ(glyphCount("\"liga\" 0"), 2u);
    EXPECT_EQ(glyphCount("nonsense!, , -liga"), 2u);
    EXPECT_EQ(glyphCount("-liga[0:2]"), 1u);
}

TEST(Layout, LanguageChoosesFormsWithinAFont) {
    const auto japaneseOnly = typefaceOf({family(testsupport::kNotoCjk, "ja")});
    android::Paint paint = devicePaint();
    const auto glyph = [&](const char* locales) {
        paint.setMinikinLocaleListId(minikin::registerLocaleList(locales));
        return layOut(u"骨", paint, *japaneseOnly).getGlyphId(0);
    };
    EXPECT_EQ(glyph(""), glyph("ja"));
    EXPECT_NE(glyph("zh-Hans"), glyph("ja"));
    EXPECT_EQ(glyph("en,zh-Hans,ja"), glyph("zh-Hans"));
}

TEST(Layout, WordSpacingWidensBlanks) {
    android::Paint paint = devicePaint();
    paint.setWordSpacing(5.0f);
    EXPECT_EQ(layOut(u"A A", paint, device()).getAdvance(), layOut(u"A A", devicePaint(), device()).getAdvance() + 5);
}

TEST(Layout, SkewMovesMarksWithTheirHeight) {
    android::Paint paint = devicePaint();
    const std::u16string text = u"\u0628\u0651\u064E";
    const Layout upright = layOut(text, paint, device());
    paint.getSkFont().setSkewX(-0.5f);
    const Layout leaning = layOut(text, paint, device());
    ASSERT_NE(leaning.getY(0), 0.0f);
    EXPECT_NEAR(leaning.getX(0) - upright.getX(0), leaning.getY(0) * -0.5f, 1.0f / 256);
}

TEST(Layout, NothingToSetIsAnEmptyLine) {
    const auto nobody = typefaceOf({});
    const Layout unset = layOut(u"abc", devicePaint(), *nobody);
    EXPECT_EQ(unset.nGlyphs(), 0u);
    EXPECT_EQ(unset.getAdvance(), 0.0f);
    EXPECT_EQ(unset.getAdvances(), std::vector<float>(3, 0.0f));
    EXPECT_EQ(boundsOf(unset), minikin::MinikinRect());

    EXPECT_EQ(layOut(u"", devicePaint(), device()).nGlyphs(), 0u);
    const android::Paint paint = devicePaint();
    const android::Typeface withoutCollection;
    for (const android::Typeface* typeface : {static_cast<const android::Typeface*>(nullptr), &withoutCollection}) {
        EXPECT_EQ(
            android::MinikinUtils::doLayout(&paint, Bidi::LTR, typeface, nullptr, 0, 0, 0, 0, 0, nullptr).nGlyphs(),
            0u);
    }
}

TEST(Layout, AnyRangeIsCutToTheBuffer) {
    std::mt19937 random(20240);
    const std::u16string parts[] = {u"Ag ", u"سلام",   u"漢字", u"😀",  u"\u0301", u"\xD83D", u"\xDE00", u"\u202E",
                                    u"\n",  u"\u200D", u"שלום", u"12", u"\uFFFF", u"\uFE0F", u"क्ष"};
    std::u16string text;
    for (int i = 0; i < 60; ++i) text += parts[random() % std::size(parts)];
    const auto anyNumber = [&] {
        const uint32_t kind = random() % 8;
        return kind == 0 ? kAll : kind == 1 ? kAll - 3 : static_cast<size_t>(random() % (text.size() + 8));
    };
    for (int i = 0; i < 400; ++i) {
        const size_t start = anyNumber(), count = anyNumber(), contextStart = anyNumber(), contextCount = anyNumber();
        const Bidi bidi = static_cast<Bidi>(random() % 6);
        SCOPED_TRACE(testing::Message() << start << " " << count << " " << contextStart << " " << contextCount);
        const Layout layout = layOutRange(text, start, count, contextStart, contextCount, devicePaint(), bidi);
        const size_t first = std::min(start, text.size());
        const std::vector<float>& advances = layout.getAdvances();
        ASSERT_EQ(advances.size(), std::min(count, text.size() - first));
        ASSERT_NEAR(std::accumulate(advances.begin(), advances.end(), 0.0f), layout.getAdvance(), 0.01f);
    }
}

TEST(Layout, NumbersOutOfRangeDrawNothingOrSomethingFinite) {
    const float infinite = std::numeric_limits<float>::infinity();
    const float notANumber = std::numeric_limits<float>::quiet_NaN();
    for (const float odd : {notANumber, infinite, -infinite, 0.0f, -48.0f, 1e9f, 1e30f, 1e-30f}) {
        SCOPED_TRACE(odd);
        android::Paint size = devicePaint(), scale = devicePaint(), skew = devicePaint(), spacing = devicePaint();
        size.getSkFont().setSize(odd);
        scale.getSkFont().setScaleX(odd);
        skew.getSkFont().setSkewX(odd);
        spacing.setLetterSpacing(odd);
        spacing.setWordSpacing(odd);
        for (const android::Paint* paint : {&size, &scale, &skew, &spacing}) {
            const Layout layout = layOut(u"Ag سّ 😀", *paint, device());
            EXPECT_TRUE(std::isfinite(layout.getAdvance()));
            EXPECT_TRUE(std::isfinite(boundsOf(layout).mLeft) && std::isfinite(boundsOf(layout).mBottom));
        }
    }
}

TEST(Layout, BrokenFontsAreRefusedOrLaidOut) {
    const std::vector<char>& good = testsupport::fontBytes(testsupport::kNotoNaskh);
    std::mt19937 random(7);
    int opened = 0;
    for (int i = 0; i < 60; ++i) {
        std::vector<char> bytes = good;
        if (i % 3 == 0) bytes.resize(random() % bytes.size());
        for (int flips = 0; flips < 200 && !bytes.empty(); ++flips) {
            // Half of the damage goes to the tables' directory and heads, where it does most.
            const size_t reach = flips % 2 == 0 ? bytes.size() : std::min<size_t>(bytes.size(), 4096);
            bytes[random() % reach] = static_cast<char>(random());
        }
        const sk_sp<SkTypeface> typeface = openBytes(i % 4 == 3 ? good : bytes);
        if (!typeface) continue;
        ++opened;
        std::vector<minikin::Font> fonts;
        fonts.push_back(minikin::Font::Builder(fontOf(typeface, bytes, "broken")).build());
        const auto collection = typefaceOf({std::make_shared<minikin::FontFamily>(std::move(fonts))});
        const Layout layout = layOut(u"سلام Ag", devicePaint(), *collection);
        EXPECT_GT(layout.nGlyphs(), 0u);
        EXPECT_TRUE(std::isfinite(layout.getAdvance()));
    }
    EXPECT_GE(opened, 15);
}

TEST(Layout, ThreadsShareFontsAndFamilies) {
    // Fresh objects, so that faces, coverage and metrics are all opened while others ask for them.
    const std::vector<char>& bytes = testsupport::fontBytes(testsupport::kNotoNaskh);
    Families families = {roboto(), familyOf(fontOf(openBytes(bytes), bytes, "fresh"))};
    const auto shared = typefaceOf(families);

    std::vector<float> advances(4, 0.0f);
    std::vector<std::thread> threads;
    for (size_t i = 0; i < advances.size(); ++i) {
        threads.emplace_back([&, i] {
            for (int round = 0; round < 20; ++round) {
                android::Paint paint = devicePaint(static_cast<float>(20 + round));
                paint.setMinikinLocaleListId(minikin::registerLocaleList("ar,en-" + std::to_string(100 + round)));
                advances[i] += layOut(u"Ag سلام office", paint, *typefaceOf(families)).getAdvance();
                advances[i] += layOut(u"سلام", paint, *shared).getAdvance();
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_GT(advances[0], 0.0f);
    EXPECT_EQ(advances, std::vector<float>(4, advances[0]));
}

}  // namespace
