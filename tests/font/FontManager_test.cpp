#include "font/FontManager.h"

#include <gtest/gtest.h>
#include <hwui/MinikinSkia.h>
#include <sys/stat.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include "base/Error.h"
#include "base/QxLog.h"
#include "base/QxString.h"
#include "font/QxFontManagerImpl.h"
#include "support/captured_log.h"
#include "support/font_families.h"
#include "support/fonts.h"
#include "support/temporary_folder.h"

namespace QxFontEffect {
namespace {

using test::CapturedLog;
using test::isDebugLine;
using test::isErrorLine;
using test::listOf;
using test::newFamily;
using ::testing::ElementsAre;
using ::testing::MatchesRegex;

constexpr char kTag[] = "QxFontManager";

const std::string& latinFile() {
    static const std::string path = testsupport::fontFile(testsupport::kRobotoRegular);
    return path;
}

class Text : public QxString {
public:
    explicit Text(const std::string& utf8) { Construct(utf8.c_str()); }
};

char* copyOf(const std::vector<char>& bytes) {
    char* const copy = new char[bytes.size()];
    std::copy(bytes.begin(), bytes.end(), copy);
    return copy;
}

unsigned int sizeOf(const std::vector<char>& bytes) {
    return static_cast<unsigned int>(bytes.size());
}

using Families = std::vector<std::shared_ptr<minikin::FontFamily>>;

TEST(FontManager, SaysWhyAFontCannotBeAdded) {
    const test::TemporaryFolder directory;
    const std::vector<char>& whole = testsupport::fontBytes(testsupport::kRobotoRegular);
    const std::string missing = directory.path("missing.ttf"), pipe = directory.path("pipe");
    const std::string empty = directory.write("empty.ttf", "");
    const std::string garbage = directory.write("garbage.ttf", std::string(5000, 'x'));
    const std::string cut = directory.write("cut.ttf", std::string(whole.data(), 60));
    ASSERT_EQ(0, mkfifo(pipe.c_str(), 0600));

    const auto noPath = isDebugLine(kTag, "AddMinikinFont() - path is NULL");
    const auto noFont = isErrorLine(kTag, "AddMinikinFont() - Fail to get font");
    const auto noTypeface = isErrorLine(kTag, "AddMinikinFont() - Fail to create typeface");
    const struct {
        const char* path;
        int ttcIndex;
        std::vector<::testing::Matcher<test::LogLine>> lines;
    } rows[] = {
        {nullptr, 0, {noPath}},
        {"", 0, {noPath}},
        {missing.c_str(), 0, {isDebugLine(kTag, kTag), noFont}},  // the first line reads only its tag
        {missing.c_str(), 0, {noFont}},                           // remembered, not opened again
        {directory.path().c_str(), 0, {noFont}},
        {empty.c_str(), 0, {noFont}},
        {pipe.c_str(), 0, {noFont}},
        {garbage.c_str(), 0, {noTypeface}},
        {cut.c_str(), 0, {noTypeface}},
        {latinFile().c_str(), 7, {noTypeface}},
        {latinFile().c_str(), -1, {noTypeface}},
    };
    FontManager manager;
    for (const auto& row : rows) {
        CapturedLog log;
        EXPECT_FALSE(manager.AddMinikinFont(row.path, nullptr, 99, row.ttcIndex, false)) << row.path;
        EXPECT_THAT(log.take(), ::testing::ElementsAreArray(row.lines)) << row.path;
        // The same with bytes that nobody keeps, on every path that refuses them.
        log.take();
        EXPECT_FALSE(manager.AddMinikinFont(row.path, new char[3]{'a', 'b', 'c'}, 3, row.ttcIndex, true)) << row.path;
        EXPECT_FALSE(manager.AddMinikinFont(row.path, new char[1], 0, row.ttcIndex, true)) << row.path;
    }
    // A file that appears later stays missing.
    directory.write("missing.ttf", std::string(whole.data(), whole.size()));
    EXPECT_FALSE(manager.AddMinikinFont(missing.c_str(), nullptr, 0, 0, false));

    CapturedLog log;
    EXPECT_FALSE(manager.IsExisting(nullptr, 0));
    EXPECT_FALSE(manager.IsExisting("", 0));
    EXPECT_THAT(log.take(), ElementsAre(isDebugLine(kTag, "IsExisting() - path is NULL"),
                                        isDebugLine(kTag, "IsExisting() - path is NULL")));
}

TEST(FontManager, TakesPathsAsStrings) {
    FontManager manager;
    CapturedLog log;
    QxString unconstructed;
    QxString negative;
    negative.Construct(L"\xFFFFFFFF\xFFFFFFFF");
    ASSERT_EQ(-1, negative.GetUTF8Size());
    std::shared_ptr<minikin::MinikinFont> font;
    for (QxString* path : {static_cast<QxString*>(nullptr), &unconstructed, &negative}) {
        EXPECT_FALSE(manager.AddMinikinFont(path, new char[2], 2, 0, true));
        EXPECT_FALSE(manager.GetMinikinFont(font, path, 0));
    }
    Text latin(latinFile());
    EXPECT_FALSE(manager.GetMinikinFont(font, &latin, 0));
    EXPECT_TRUE(manager.AddMinikinFont(&latin, nullptr, 0, 0, true));
    EXPECT_TRUE(manager.GetMinikinFont(font, &latin, 0));
    ASSERT_NE(nullptr, font);
    EXPECT_EQ(latinFile(), static_cast<android::MinikinFontSkia*>(font.get())->getFilePath());
    EXPECT_FALSE(manager.GetMinikinFont(font, &latin, 1));
}

TEST(FontManager, MapsACollectionOnceForAllItsFaces) {
    const std::string path = testsupport::fontFile(testsupport::kNotoCjk);
    struct stat status = {};
    ASSERT_EQ(0, stat(path.c_str(), &status));
    const float sizeMB = static_cast<float>(static_cast<double>(status.st_size) / 1024000.0);
    QxFontManagerImpl fonts;
    CapturedLog log;
    QxLog::DEBUG_ENABLE = 1;
    EXPECT_TRUE(fonts.addFont(path.c_str(), nullptr, 0, 1, true));
    QxLog::DEBUG_ENABLE = 0;
    char wanted[512];
    std::snprintf(wanted, sizeof(wanted), "BUFFER TOTAL SIZE(%.2fMB) <- %s(%.2fMB) ", sizeMB, path.c_str(), sizeMB);
    EXPECT_THAT(log.take(), ElementsAre(isDebugLine(kTag, std::string(wanted))));
    EXPECT_TRUE(fonts.isExisting(path.c_str(), 1));
    EXPECT_FALSE(fonts.isExisting(path.c_str(), 0));

    EXPECT_TRUE(fonts.addFont(path.c_str(), nullptr, 0, 0, true));
    EXPECT_EQ(sizeMB, fonts.totalBufferMB);
    EXPECT_EQ(1u, fonts.fontBuffers.count(path + '\0'));
    EXPECT_EQ(1u, fonts.fontBuffers.size());
    EXPECT_EQ(1u, fonts.fonts.count(path + '0' + '\0'));
    EXPECT_EQ(1u, fonts.fonts.count(path + '1' + '\0'));
    EXPECT_EQ(fonts.findFont(path, 0)->GetFontData(), fonts.findFont(path, 1)->GetFontData());

    fonts.ClearFontMaps();
    EXPECT_EQ(0, fonts.totalBufferMB);
    EXPECT_TRUE(fonts.fontBuffers.empty());
    EXPECT_FALSE(fonts.isExisting(path.c_str(), 0));
}

TEST(FontManager, TheFirstRegistrationOfANameWinsAndBytesLiveAsLongAsTheirFamilies) {
    const std::vector<char>& first = testsupport::fontBytes(testsupport::kRobotoRegular);
    const std::vector<char>& second = testsupport::fontBytes(testsupport::kRobotoBlack);
    Text name("memory");
    int weight = 400;
    Families families;
    {
        FontManager manager;
        EXPECT_TRUE(manager.AddMinikinFont("memory", copyOf(first), sizeOf(first), 0, false));
        EXPECT_TRUE(manager.AddMinikinFont("memory", copyOf(second), sizeOf(second), 0, false));
        EXPECT_TRUE(manager.AddMinikinFont("memory", copyOf(second), sizeOf(second), 0, true));
        EXPECT_TRUE(manager.GetMinikinFontFamilies(nullptr, families, &name, weight));
    }
    ASSERT_EQ(1u, families.size());
    const minikin::MinikinFont& font = *families[0]->getFont(0)->typeface();
    ASSERT_EQ(first.size(), font.GetFontSize());
    EXPECT_TRUE(std::equal(first.begin(), first.end(), static_cast<const char*>(font.GetFontData())));
}

TEST(FontManager, ReadsTheStyleOffTheNameOfTheUserFont) {
    const struct {
        const char* path;
        const char* family;
        int weight;
        bool italic;
    } rows[] = {
        {"/f/A-Italic.ttf", nullptr, 350, true},
        {"/f/A-Thin.ttf", nullptr, 100, false},
        {"/f/A-Light.ttf", nullptr, 300, false},
        {"/f/A-LightItalic.ttf", nullptr, 300, false},
        {"/f/A-Medium.ttf", nullptr, 500, false},
        {"/f/A-Medium.ttf", "zvc-roboto-ligh", 500, false},
        {"/f/A-Medium.ttf", "zvc-roboto-light", 700, false},
        {"/f/A-Black.ttf", "zvc-roboto-light", 900, false},
        {"/f/A-Bold.ttf", nullptr, 700, false},
        {"/f/A-BoldItalic.ttf", nullptr, 350, false},
        {"/f/A-Bold-Italic.ttf", nullptr, 350, true},
        {"/f/A-Regular.ttf", nullptr, 350, false},
        {"/f/A-Bold", nullptr, 350, false},  // a mark at the very end is none
        {"-Thin.ttf", nullptr, 350, false},
        {"-Bold.ttf", nullptr, 350, false},  // nor one at the very beginning
        {"/f-Thin/A-Bold.ttf", nullptr, 100, false},
    };
    const std::vector<char>& bytes = testsupport::fontBytes(testsupport::kRobotoRegular);
    for (const auto& row : rows) {
        FontManager manager;
        ASSERT_TRUE(manager.AddMinikinFont(row.path, copyOf(bytes), sizeOf(bytes), 0, true));
        Text path(row.path);
        Text family(row.family == nullptr ? "" : row.family);
        Families families;
        int weight = 350;
        EXPECT_TRUE(manager.GetMinikinFontFamilies(row.family == nullptr ? nullptr : &family, families, &path, weight));
        EXPECT_EQ(row.weight, weight) << row.path;
        ASSERT_EQ(1u, families.size()) << row.path;
        const minikin::FontStyle style = families[0]->getFont(0)->style();
        EXPECT_EQ(row.weight, style.weight()) << row.path;
        EXPECT_EQ(row.italic, style.slant() == minikin::FontStyle::Slant::ITALIC) << row.path;
        EXPECT_EQ(minikin::FamilyVariant::DEFAULT, families[0]->variant());
    }
}

TEST(FontManager, LeavesSystemRobotoToTheSystemFamiliesButTakesItsWeight) {
    const std::vector<char>& bytes = testsupport::fontBytes(testsupport::kRobotoRegular);
    FontManager manager;
    const char* const system = "/system/fonts/Roboto-Bold.ttf";
    ASSERT_TRUE(manager.AddMinikinFont(system, copyOf(bytes), sizeOf(bytes), 0, true));
    Text path(system);
    Text unknown("/nowhere/A-Thin.ttf");
    Families families;
    int weight = 400;
    EXPECT_TRUE(manager.GetMinikinFontFamilies(nullptr, families, &path, weight));
    EXPECT_EQ(700, weight);
    EXPECT_TRUE(manager.GetMinikinFontFamilies(nullptr, families, &unknown, weight));
    EXPECT_EQ(100, weight);
    EXPECT_TRUE(families.empty());
}

TEST(FontManager, HandsOutLoadedSystemFamiliesInTheirOrder) {
    const std::string cjk = testsupport::fontFile(testsupport::kNotoCjk);
    QxFontFamily* const latin = newFamily(0, 0, {{latinFile(), 0, 400, false}, {latinFile(), 0, 300, true}});
    QxFontFamily* const never = newFamily(5, 0, {{cjk}});
    QxFontFamily* const han = newFamily(6, 0x102, {{cjk, 2, 500, false}});
    FontManager manager;
    EXPECT_FALSE(manager.IsSystemFontFamiliesAlreadySet());
    EXPECT_FALSE(manager.LoadMinikinFontFamily(6));
    EXPECT_FALSE(manager.BuildMinikinFamily(nullptr));
    QxFontFamily hollow;
    EXPECT_FALSE(manager.BuildMinikinFamily(&hollow));
    EXPECT_TRUE(manager.SetSystemFontFamilies(listOf({latin, never, nullptr, han})));
    EXPECT_TRUE(manager.IsSystemFontFamiliesAlreadySet());
    List second;  // not adopted: still this test's
    EXPECT_TRUE(manager.SetSystemFontFamilies(&second));

    EXPECT_TRUE(manager.BuildMinikinFamily(latin));
    latin->loaded = 1;
    Error::SetError(0);
    EXPECT_TRUE(manager.LoadMinikinFontFamily(6));
    EXPECT_FALSE(manager.LoadMinikinFontFamily(6));
    EXPECT_FALSE(manager.LoadMinikinFontFamily(7));

    Families families;
    int weight = 400;
    CapturedLog log;
    QxLog::DEBUG_ENABLE = 1;
    Text user("u"), name("n");
    EXPECT_TRUE(manager.GetMinikinFontFamilies(&name, families, &user, weight));
    QxLog::DEBUG_ENABLE = 0;
    EXPECT_THAT(log.take(), ElementsAre(isDebugLine(kTag, "GetMinikinFontFamilies >>> GetMinikinFontFamilies"),
                                        isDebugLine(kTag, "GetMinikinFontFamilies - userFont[u]"),
                                        isDebugLine(kTag, "GetMinikinFontFamilies - familyFont[n]"),
                                        isDebugLine(kTag, "GetMinikinFontFamilies <<< GetMinikinFontFamilies")));
    EXPECT_EQ(0, Error::GetError());
    ASSERT_EQ(2u, families.size());
    EXPECT_EQ(2u, families[0]->getNumFonts());
    EXPECT_EQ(300, families[0]->getFont(1)->style().weight());
    EXPECT_EQ(minikin::FontStyle::Slant::ITALIC, families[0]->getFont(1)->style().slant());
    EXPECT_EQ(6u, families[1]->localeListId());
    EXPECT_EQ(minikin::FamilyVariant::ELEGANT, families[1]->variant());
    EXPECT_FALSE(families[1]->isCustomFallback());
    EXPECT_EQ(2, families[1]->getFont(0)->typeface()->GetFontIndex());
    EXPECT_EQ(500, families[1]->getFont(0)->style().weight());
}

TEST(FontManager, AFamilyThatCannotBeBuiltIsTriedAgainAheadOfLaterOnes) {
    QxFontFamily* const broken = newFamily(9, 0, {{latinFile()}, {"/nowhere/x.ttf"}, {"/nowhere/y.ttf"}});
    QxFontFamily* const whole = newFamily(9, 0, {{latinFile()}});
    FontManager manager;
    manager.SetSystemFontFamilies(listOf({broken, whole}));
    for (int attempt = 0; attempt < 2; ++attempt) EXPECT_TRUE(manager.LoadMinikinFontFamily(9));
    EXPECT_EQ(0, broken->loaded);
    EXPECT_EQ(0, whole->loaded);
    EXPECT_TRUE(manager.IsExisting(latinFile().c_str(), 0));  // what came before the failure stays
}

TEST(FontManager, ReleasesEverythingOnceItEnds) {
    CapturedLog log;
    {
        FontManager manager;
        manager.SetSystemFontFamilies(listOf({newFamily(1, 0, {{latinFile()}})}));
    }
    EXPECT_THAT(log.take(),
                ElementsAre(isDebugLine(kTag, MatchesRegex(std::string("~FontManager\\(") + test::kPointer + "\\)"))));
    QxFontManagerImpl fonts;
    fonts.systemFamilies = listOf({newFamily(1, 0, {{latinFile()}})});
    fonts.systemFamiliesSet = true;
    for (int i = 0; i < 2; ++i) fonts.ClearFontFamilies();
    EXPECT_EQ(nullptr, fonts.systemFamilies);
    EXPECT_FALSE(fonts.systemFamiliesSet);
}

TEST(FontManagerDeathTest, AtExitTheManagerEndsButFontsInUseStayReadable) {
    static const unsigned char* bytes = nullptr;
    const auto exitAfterUse = [] {
        // Registered first, so it runs after the manager is taken down.
        std::atexit([] {
            const bool failed = !FontManager::GetInstance()->IsExisting("x", 0) && Error::GetError() == 8;
            std::fprintf(stderr, "late call %s, byte %d\n", failed ? "failed" : "succeeded", bytes[1]);
        });
        FontManager* const manager = FontManager::GetInstance();
        std::shared_ptr<minikin::MinikinFont> font;
        Text path(latinFile());
        manager->AddMinikinFont(&path, nullptr, 0, 0, true);
        manager->GetMinikinFont(font, &path, 0);
        bytes = static_cast<const unsigned char*>(font->GetFontData());
        font.reset();
        std::exit(0);
    };
    EXPECT_EXIT(exitAfterUse(), ::testing::ExitedWithCode(0),
                "~FontManager\\(0x[0-9a-f]+\\)(.|\n)*@ Native Error 8 : (.|\n)*late call failed, byte 1");
}

TEST(FontManager, ThreadsMayShareIt) {
    FontManager manager;
    const std::string cjk = testsupport::fontFile(testsupport::kNotoCjk);
    manager.SetSystemFontFamilies(listOf({newFamily(1, 0, {{latinFile()}}), newFamily(1, 0, {{cjk}})}));
    std::vector<std::thread> threads;
    std::atomic<int> wrong{0};
    for (int t = 0; t < 8; ++t) {
        threads.emplace_back([&, t] {
            Text path(latinFile());
            for (int round = 0; round < 20; ++round) {
                Families families;
                int weight = 400;
                manager.LoadMinikinFontFamily(1);
                if (!manager.AddMinikinFont(cjk.c_str(), nullptr, 0, t % 4, true)) ++wrong;
                if (!manager.GetMinikinFontFamilies(nullptr, families, &path, weight)) ++wrong;
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(0, wrong);
    Families families;
    int weight = 400;
    manager.GetMinikinFontFamilies(nullptr, families, nullptr, weight);
    EXPECT_EQ(2u, families.size());
}

}  // namespace
}  // namespace QxFontEffect
