// Runs the program itself: what it prints, how it ends, and what it leaves on the disk.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "effect_table.h"
#include "png_file.h"
#include "style_file.h"
#include "support/temporary_folder.h"

#if defined(__SANITIZE_ADDRESS__)
#define QX_ADDRESS_SANITIZED
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QX_ADDRESS_SANITIZED
#endif
#endif

namespace qxrender {
namespace {

struct Outcome {
    int status = -1;
    std::string out;
    std::string error;
};

class CommandLine : public ::testing::Test {
protected:
    // What is printed goes beside the folder that the program works in.
    CommandLine() { std::filesystem::create_directory(mFolder.path("work")); }

    std::string path(const std::string& name) const { return mFolder.path("work/" + name); }
    std::string write(const std::string& name, const std::string& bytes) const {
        return mFolder.write("work/" + name, bytes);
    }
    std::string read(const std::string& name) const { return mFolder.read("work/" + name); }

    /// Runs qxrender in the folder. `memory` limits its address space, in bytes.
    Outcome run(const std::vector<std::string>& arguments, rlim_t memory = RLIM_INFINITY,
                const char* out = "../out.txt") const {
        const pid_t child = fork();
        if (child == 0) {
            std::vector<char*> words = {const_cast<char*>("qxrender")};
            for (const std::string& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
            words.push_back(nullptr);
            const rlimit limit = {memory, memory};
            if (memory != RLIM_INFINITY) setrlimit(RLIMIT_AS, &limit);
            if (chdir(path("").c_str()) != 0 || std::freopen(out, "w", stdout) == nullptr ||
                std::freopen("../error.txt", "w", stderr) == nullptr)
                _exit(99);
            execv(QX_QXRENDER, words.data());
            _exit(98);
        }
        Outcome outcome;
        int status = 0;
        waitpid(child, &status, 0);
        outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
        outcome.out = mFolder.read("out.txt");
        outcome.error = mFolder.read("error.txt");
        return outcome;
    }

    std::vector<std::string> filesLeft() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(path("")))
            names.push_back(entry.path().filename());
        return names;
    }

    const QxFontEffect::test::TemporaryFolder mFolder;
};

TEST_F(CommandLine, EndsEveryMistakeWithOneLineCodeTwoAndNoFile) {
    struct Case {
        std::vector<std::string> arguments;
        std::string complaint;  ///< how the line goes on behind "qxrender: "
    };
    const std::vector<Case> cases = {
        {{}, "no output: give -o FILE.png"},
        {{"-o", "x.png"}, "no text: give it as an argument or with --text-file"},
        {{"x", "y", "-o", "x.png"}, "The following argument was not expected: y"},
        {{"x", "--shiny", "-o", "x.png"}, "The following argument was not expected: --shiny"},
        {{"x", "-o"}, "--output: 1 required FILE missing"},
        {{"x", "--text-file", "t", "-o", "x.png"}, "both a text and --text-file are given"},
        {{"x", "--font", "f", "--family", "g", "-o", "x.png"}, "both --font and --family are given"},
        {{"x", "-o", "x.png", "--save-style", "x.png"}, "-o and --save-style name the same file"},
        {{"x", "-o", "x.png", "--size", "big"}, "--size: 'big' is not a number"},
        {{"x", "-o", "x.png", "--size", "0.5"}, "--size: 0.5 is out of range 1..4000"},
        {{"x", "-o", "x.png", "--weight", "400.5"}, "--weight: '400.5' is not a whole number"},
        {{"x", "-o", "x.png", "--width", "1e6"}, "--width: 1e6 is out of range 1..100000"},
        {{"x", "-o", "x.png", "--padding", "1,2"}, "--padding: '1,2' is neither one number nor four"},
        {{"x", "-o", "x.png", "--padding", "-1"}, "--padding: -1 is out of range 0..10000"},
        {{"x", "-o", "x.png", "--align", "up"}, "--align: 'up' is none of start, left, center, centre, right, end"},
        {{"x", "-o", "x.png", "--gravity", "up"}, "--gravity: 'up' is none of top, center, centre, bottom, fill"},
        {{"x", "-o", "x.png", "--mode", "up"}, "--mode: 'up' is none of auto, plain, layer"},
        {{"x", "-o", "x.png", "--opacity", "2"}, "--opacity: 2 is out of range 0..1"},
        {{"x", "-o", "x.png", "--color", "red"}, "--color: 'red' is no colour (#RGB, #RGBA, #RRGGBB or #AARRGGBB)"},
        {{"x", "-o", "x.png", "--background", "#12"},
         "--background: '#12' is no colour (#RGB, #RGBA, #RRGGBB or #AARRGGBB)"},
        {{"x", "-o", "x.png", "--effect", "wobble"}, "unknown effect 'wobble' (see --list-effects)"},
        {{"x", "-o", "x.png", "--effect", "stroke", "--effect", "stroke"},
         "'stroke' is given twice; a text has one of a kind"},
        {{"x", "-o", "x.png", "--effect", "pattern file=gone.png"},
         "cannot read picture 'gone.png': No such file or directory"},
        {{"x", "-o", "x.png", "--effect", "pattern file=/etc/passwd"},
         "cannot read picture '/etc/passwd': Not a PNG file"},
        {{"x", "-o", "x.png", "--family", "No Such Family"}, "no font family 'No Such Family' is installed"},
        {{"x", "-o", "x.png", "--font", "gone.ttf"}, "cannot read font 'gone.ttf': No such file or directory"},
        {{"x", "-o", "x.png", "--font", "/etc/passwd"}, "'/etc/passwd' is not a usable font"},
        {{"x", "-o", "x.png", "--font", "/"}, "'/' is not a usable font"},
        {{"a\xFF", "-o", "x.png"}, "the text is not UTF-8"},
        {{"--text-file", "/", "-o", "x.png"}, "cannot read text '/': Is a directory"},
        {{"--text-file", "gone.txt", "-o", "x.png"}, "cannot read text 'gone.txt': No such file or directory"},
        {{"x", "-o", "x.png", "--style", "gone.json"}, "cannot read style 'gone.json': No such file or directory"},
        {{"x", "-o", "x.png", "--style", "/"}, "cannot read style '/': Is a directory"},
        {{"x", "-o", "gone/x.png"}, "cannot write 'gone/x.png': No such file or directory"},
        {{"x", "-o", "/"}, "cannot write '/': Is a directory"},
        {{"x", "-o", "x.png", "--save-style", "gone/s.json"},
         "cannot write style 'gone/s.json': No such file or directory"},
        {{"x", "-o", "gone/x.png", "--save-style", "s.json"}, "cannot write 'gone/x.png': No such file or directory"},
        {{"x", "-o", "/dev/full"}, "cannot write '/dev/full': No space left on device"},
        {{"x", "-o", "x.png", "--size", "4000", "--width", "100000", "--height", "100000", "--padding", "10000"},
         "a picture of 120002 x 100002 is larger than memory allows"},
        {{std::string(5000, 'W'), "-o", "x.png"},
         "a line is larger than 65535 pixels, the most that can be drawn; give --width to wrap it"},
    };
    for (const Case& c : cases) {
        const Outcome outcome = run(c.arguments);
        EXPECT_EQ(outcome.status, 2) << c.complaint;
        EXPECT_EQ(outcome.error, "qxrender: " + c.complaint + "\n");
        EXPECT_EQ(outcome.out, "");
        EXPECT_TRUE(filesLeft().empty()) << c.complaint;
    }
}

TEST_F(CommandLine, RefusesBrokenFilesOfEveryKind) {
    write("cut.ttf", QxFontEffect::test::TemporaryFolder::bytesOf(QX_ROBOTO).substr(0, 5000));
    write("cut.png", std::string("\x89PNG\r\n\x1a\n") + "trash");
    write("bad.txt", "fine until h\xC3re");
    write("bad.json", std::string("\x00\x01{", 3));
    const size_t before = filesLeft().size();
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"x", "--font", "cut.ttf"},
                                               {"x", "--effect", "pattern file=cut.png"},
                                               {"--text-file", "bad.txt"},
                                               {"x", "--style", "bad.json"}}) {
        std::vector<std::string> all = arguments;
        all.insert(all.end(), {"-o", "x.png"});
        const Outcome outcome = run(all);
        EXPECT_EQ(outcome.status, 2) << arguments[1];
        EXPECT_EQ(std::count(outcome.error.begin(), outcome.error.end(), '\n'), 1) << outcome.error;
        EXPECT_EQ(filesLeft().size(), before) << arguments[1];
    }
}

TEST_F(CommandLine, LeavesAnOlderFileWhenItFails) {
    write("x.png", "old");
    EXPECT_EQ(run({"x", "-o", "x.png", "--save-style", "gone/s.json"}).status, 2);
    EXPECT_EQ(read("x.png"), "old");
    EXPECT_EQ(run({"x", "-o", "x.png", "--report"}, RLIM_INFINITY, "/dev/full").status, 2);
    EXPECT_EQ(run({"x", "-o", "x.png"}).status, 0);
    EXPECT_EQ(read("x.png").substr(1, 3), "PNG");
    EXPECT_EQ(filesLeft().size(), 1u);
}

TEST_F(CommandLine, RefusesAPictureThatDoesNotFitTheMemory) {
#if defined(QX_ADDRESS_SANITIZED)
    GTEST_SKIP() << "the sanitizer reserves more address space than any limit allows";
#endif
    const Outcome outcome = run({"Wide", "--size", "2500", "-o", "x.png", "--effect", "emboss"}, 300 << 20);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_NE(outcome.error.find("larger than memory allows\n"), std::string::npos) << outcome.error;
    EXPECT_TRUE(filesLeft().empty());
}

TEST_F(CommandLine, HelpNamesEveryEffectWithItsParameters) {
    const Outcome help = run({"--help"});
    const Outcome list = run({"--list-effects"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(list.status, 0);
    EXPECT_NE(help.out.find(list.out), std::string::npos);
    for (const EffectKind& kind : effectTable()) {
        const size_t at = list.out.find("  " + std::string(kind.name) + ": ");
        ASSERT_NE(at, std::string::npos) << kind.name;
        for (const Parameter& parameter : kind.parameters)
            EXPECT_NE(list.out.find("    " + std::string(parameter.name) + " ", at), std::string::npos)
                << kind.name << " " << parameter.name;
    }
    EXPECT_NE(list.out.find("0..100 px"), std::string::npos);
}

TEST_F(CommandLine, DrawsAPictureAndReportsIt) {
    const Outcome outcome = run({"Hi\\nyou", "--family", "Roboto", "-o", "x.png", "--report", "--effect",
                                 "outer-shadow angle=90 distance=6 size=3"});
    ASSERT_EQ(outcome.status, 0) << outcome.error;
    EXPECT_EQ(outcome.error, "");
    const Picture picture = readPng(path("x.png"));
    const auto report = nlohmann::json::parse(outcome.out);
    EXPECT_EQ(report["picture"]["width"], picture.width);
    EXPECT_EQ(report["picture"]["height"], picture.height);
    EXPECT_EQ(report["lines"], 2);
    EXPECT_EQ(report["margins"]["left"], 3);
    EXPECT_EQ(report["margins"]["bottom"], 9);
    EXPECT_EQ(report["layerMode"], false);
    EXPECT_TRUE(report["milliseconds"].contains("render"));
    EXPECT_EQ(report["view"]["width"], picture.width - 6);
}

TEST_F(CommandLine, ReadsTheTextOfAFileLikeThatOfAnArgument) {
    write("t.txt", "\xEF\xBB\xBFZwei\nZeilen\n");
    ASSERT_EQ(run({"--text-file", "t.txt", "-o", "a.png"}).status, 0);
    ASSERT_EQ(run({"Zwei\\nZeilen", "-o", "b.png"}).status, 0);
    EXPECT_EQ(read("a.png"), read("b.png"));
}

TEST_F(CommandLine, SavesTheStyleThatItDraws) {
    const std::vector<std::string> effects = {
        "--color", "#336699", "--opacity", "0.75", "--effect", "stroke width=3 color=#f00", "--effect", "emboss"};
    std::vector<std::string> first = {"Style", "-o", "a.png", "--save-style", "s.json"};
    first.insert(first.end(), effects.begin(), effects.end());
    ASSERT_EQ(run(first).status, 0);
    ASSERT_EQ(run({"Style", "-o", "b.png", "--style", "s.json", "--save-style", "again.json"}).status, 0);
    EXPECT_EQ(read("a.png"), read("b.png"));
    EXPECT_EQ(read("s.json"), read("again.json"));

    // An option replaces the style's effect of its kind and leaves the others.
    ASSERT_EQ(run({"--style", "s.json", "--effect", "stroke width=9", "--save-style", "wide.json"}).status, 0);
    const Style wide = readStyle(path("wide.json"));
    ASSERT_EQ(wide.effects.size(), 2u);
    EXPECT_EQ(wide.effects[0]["width"].number, 9);
    EXPECT_STREQ(wide.effects[1].kind->name, "emboss");
}

TEST_F(CommandLine, PutsThePictureOnAColourAndTrimsIt) {
    ASSERT_EQ(run({"o", "-o", "x.png", "--background", "#204060", "--padding", "50", "--trim", "3"}).status, 0);
    const Picture picture = readPng(path("x.png"));
    EXPECT_LT(picture.width, 60);
    for (const uint32_t pixel : picture.pixels) ASSERT_EQ(pixel >> 24, 255u);
    EXPECT_EQ(picture.at(0, 0), 0xFF204060u);
    EXPECT_EQ(picture.at(2, picture.height / 2), 0xFF204060u);
    EXPECT_NE(picture.at(4, picture.height / 2), 0xFF204060u);
}

TEST_F(CommandLine, ShowsTheLibrarysLogOnlyWhenAsked) {
    EXPECT_EQ(run({"", "-o", "x.png"}).error, "");
    EXPECT_NE(run({"", "-o", "x.png", "--verbose"}).error.find("textLength is 0"), std::string::npos);
}

}  // namespace
}  // namespace qxrender
