#include "render.h"

#include <android/log.h>
#include <gtest/gtest.h>
#include <portable/log_sink.h>

#include <string>
#include <vector>

#include "failure.h"
#include "picture.h"

namespace qxrender {
namespace {

Job makeJob(const std::string& text) {
    Job job;
    job.text = text;
    job.font.family = "Roboto";
    job.size = 48;
    return job;
}

Rendering draw(const Job& job) {
    portable::setStderrLogPriority(ANDROID_LOG_SILENT);
    return render(job);
}

Job decorated(const std::string& effect, LayerMode mode = LayerMode::Auto) {
    Job job = makeJob("Rg");
    job.style.effects = {parseEffect(effect)};
    job.style.mode = mode;
    return job;
}

Picture inkOf(const Rendering& rendering) {
    return cropped(rendering.picture, inkBox(rendering.picture));
}

::testing::AssertionResult sameInk(const Job& one, const Job& other) {
    const Picture a = inkOf(draw(one));
    const Picture b = inkOf(draw(other));
    if (a.width != b.width || a.height != b.height)
        return ::testing::AssertionFailure()
               << a.width << " x " << a.height << " pixels of ink against " << b.width << " x " << b.height;
    if (a.pixels != b.pixels) return ::testing::AssertionFailure() << "other pixels";
    return ::testing::AssertionSuccess();
}

/// Padding wider than an effect reaches shows what there is to see.
Job withRoom(Job job, int room = 150) {
    job.padding = {room, room, room, room};
    return job;
}

TEST(Rendering, CutsNothingOfADecorationOff) {
    const std::vector<std::pair<std::string, std::vector<int>>> effects = {
        {"outer-shadow distance=0 size=", {0, 1, 7, 60}},
        {"outer-shadow angle=200 distance=37 size=", {0, 5, 30}},
        {"outer-glow size=", {0, 1, 8, 33, 70}},
        {"inner-glow size=", {1, 8, 33}},
        {"stroke width=", {1, 2, 9, 50}},
        {"stroke position=center width=", {1, 2, 9, 51}},
        {"stroke position=inside width=", {3, 20}},
        {"bevel style=outer size=", {0, 1, 5, 14, 40}},
        {"bevel style=outer soften=16 size=", {0, 9}},
        {"bevel style=outer technique=chisel soften=5 size=", {0, 6, 20}},
        {"emboss size=", {1, 5, 12, 60}},
        {"emboss technique=chisel soften=9 size=", {1, 10}},
    };
    for (const auto& [effect, sizes] : effects)
        for (const int size : sizes)
            for (const LayerMode mode : {LayerMode::Auto, LayerMode::Plain}) {
                const Job job = decorated(effect + std::to_string(size), mode);
                EXPECT_TRUE(sameInk(job, withRoom(job, 60 + 2 * size)))
                    << effect << size << " mode " << static_cast<int>(mode);
            }
}

TEST(Rendering, KeepsAccentsThatStandAboveTheLine) {
    const Job job = makeJob("Z\u0301\u0302\u0303\u0304\u0302\u0303");
    const Rendering rendering = draw(job);
    EXPECT_GT(rendering.textY, 0);
    EXPECT_TRUE(sameInk(job, withRoom(job)));
}

TEST(Rendering, KeepsLettersThatLeanOutOfTheirLine) {
    // The same letters with blanks behind them are drawn into a box that is wide enough by itself.
    struct Case {
        const char* what;
        void (*change)(Job&);
    };
    const Case cases[] = {
        {"skewed", [](Job& job) { job.skewX = -0.6f; }},
        {"italic", [](Job& job) { job.font.italic = true; }},
        {"scaled", [](Job& job) { job.skewX = -0.3f, job.scaleX = 1.7f; }},
    };
    for (const Case& c : cases) {
        Job job = makeJob("Staff\u00A0f");
        c.change(job);
        Job roomy = job;
        roomy.text += std::string("\u00A0\u00A0\u00A0\u00A0\u00A0\u00A0");
        EXPECT_TRUE(sameInk(job, roomy)) << c.what;
    }
    Job tight = makeJob("Too");
    tight.letterSpacing = -0.2f;
    const int cut = inkOf(draw(makeJob("To"))).width;
    EXPECT_GT(inkOf(draw(tight)).width, cut) << "the last letter is there";
}

TEST(Rendering, MakesAPictureOfAnEmptyText) {
    for (const char* text : {"", "   ", "\n", "\u200B"}) {
        const Rendering rendering = draw(makeJob(text));
        EXPECT_GE(rendering.picture.width, 1);
        EXPECT_GT(rendering.picture.height, 1);
        EXPECT_TRUE(inkBox(rendering.picture).isEmpty());
    }
}

/// Left and right edge of the ink of each line.
std::vector<std::pair<int, int>> lineEdges(const Rendering& rendering) {
    std::vector<std::pair<int, int>> edges;
    const Picture& picture = rendering.picture;
    for (int i = 0; i < rendering.lines; ++i) {
        const int top = picture.height * i / rendering.lines;
        const int bottom = picture.height * (i + 1) / rendering.lines;
        const Box ink = inkBox(cropped(picture, {0, top, picture.width, bottom}));
        edges.emplace_back(ink.left, ink.right);
    }
    return edges;
}

TEST(Rendering, AlignsLines) {
    Job job = makeJob("HHHHHH\nHH");
    const auto edges = [&](qxhost::Alignment alignment) {
        job.paragraph.alignment = alignment;
        return lineEdges(draw(job));
    };
    const auto left = edges(qxhost::Alignment::Left);
    const auto right = edges(qxhost::Alignment::Right);
    const auto center = edges(qxhost::Alignment::Center);
    EXPECT_EQ(left[0].first, left[1].first);
    EXPECT_NEAR(right[0].second, right[1].second, 1);
    EXPECT_NEAR(center[1].first - left[1].first, right[1].first - center[1].first, 1);
    EXPECT_GT(center[1].first, left[1].first + 10);

    job.text = "שלום שלום\nשלום";
    const auto start = edges(qxhost::Alignment::Start);
    EXPECT_GT(start[1].first, start[0].first + 10) << "a right-to-left line starts at the right";
}

TEST(Rendering, WrapsAndLimitsLines) {
    Job job = makeJob("one two three four five six seven");
    job.paragraph.width = 150;
    const Rendering all = draw(job);
    EXPECT_GT(all.lines, 3);
    EXPECT_LE(all.picture.width, 150);
    job.maxLines = 2;
    const Rendering two = draw(job);
    EXPECT_EQ(two.lines, 2);
    EXPECT_EQ(two.viewHeight * all.lines, all.viewHeight * 2);

    job.text = "漢字仮名交じり文の長い行漢字仮名交じり文の長い行";
    job.maxLines = 0;
    EXPECT_GT(draw(job).lines, 3);
}

TEST(Rendering, PlacesTheTextInItsHeight) {
    Job job = makeJob("H");
    job.height = 400;
    job.padding = {5, 20, 7, 40};
    const auto inkTop = [&](int gravity) {
        job.gravity = gravity;
        const Rendering rendering = draw(job);
        EXPECT_EQ(rendering.viewHeight, 400);
        EXPECT_EQ(rendering.textX, 0);
        return inkBox(rendering.picture).top;
    };
    const int top = inkTop(0x33);
    const int center = inkTop(0x13);
    const int bottom = inkTop(0x53);
    job.height = 0;
    job.gravity = 0x33;
    const int lineHeight = draw(job).viewHeight - 60;
    EXPECT_EQ(center - top, (400 - 60 - lineHeight) / 2);
    EXPECT_EQ(bottom - top, 400 - 60 - lineHeight);
}

TEST(Rendering, PaintsGroundsBehindTheLinesOnly) {
    Job job = makeJob("HH\nHHHH");
    job.hasLineBackground = true;
    job.lineBackground = 0xFF336699u;
    job.padding = {30, 30, 30, 30};
    const Picture picture = draw(job).picture;
    EXPECT_EQ(picture.at(2, 2), 0u);
    EXPECT_EQ(picture.at(31, 32), 0xFF336699u);
    EXPECT_EQ(picture.at(picture.width - 34, 40), 0u) << "behind the short line";
    EXPECT_EQ(picture.at(picture.width - 34, picture.height - 34), 0xFF336699u);
}

TEST(Rendering, FadesTheWholePicture) {
    Job job = makeJob("Rg");
    job.style.effects = {parseEffect("stroke width=6 color=#ff0000")};
    job.style.mode = LayerMode::Layer;
    const Picture whole = draw(job).picture;
    job.style.opacity = 0.5f;
    const Picture faint = draw(job).picture;
    ASSERT_EQ(whole.pixels.size(), faint.pixels.size());
    for (size_t i = 0; i < whole.pixels.size(); ++i)
        ASSERT_NEAR(static_cast<int>(faint.pixels[i] >> 24), static_cast<int>(whole.pixels[i] >> 24) / 2, 2) << i;
}

TEST(Rendering, RefusesLinesThatTheLibraryCannotHold) {
    Job job = makeJob(std::string(3000, 'W'));
    EXPECT_THROW(draw(job), Failure);
    job.paragraph.width = 1000;
    EXPECT_GT(draw(job).lines, 100);
}

TEST(Pictures, AreLaidOverAColour) {
    Picture picture;
    picture.width = 3;
    picture.height = 1;
    picture.pixels = {0x00000000u, 0x80FF0000u, 0xFF00FF00u};
    Picture opaque = picture;
    flattenOnto(opaque, 0xFF0000FFu);
    EXPECT_EQ(opaque.pixels, (std::vector<uint32_t>{0xFF0000FFu, 0xFF80007Fu, 0xFF00FF00u}));
    Picture half = picture;
    flattenOnto(half, 0x800000FFu);
    EXPECT_EQ(half.pixels[0], 0x800000FFu);
    EXPECT_EQ(half.pixels[1] >> 24, 0xC0u);
    flattenOnto(picture, 0);
    EXPECT_EQ(picture.pixels[1], 0x80FF0000u);
}

}  // namespace
}  // namespace qxrender
