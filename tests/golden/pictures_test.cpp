#include "golden/pictures.h"

#include <android/log.h>
#include <gtest/gtest.h>
#include <portable/log_sink.h>

#include <filesystem>
#include <set>

#include "failure.h"
#include "output_file.h"
#include "png_file.h"

namespace {

using QxFontEffect::test::drawPictures;
using QxFontEffect::test::NamedPicture;
using qxrender::Picture;

const std::filesystem::path kKept = QX_SOURCE_DIR "/tests/golden/pictures";
const std::filesystem::path kFailed = QX_BINARY_DIR "/failed-pictures";

void save(const Picture& picture, const std::string& name) {
    qxrender::OutputFile("", (kFailed / name).string(), qxrender::encodePng(picture)).publish();
}

/// White where the two differ.
Picture differenceOf(const Picture& a, const Picture& b) {
    Picture difference = a;
    for (size_t i = 0; i < a.pixels.size(); ++i)
        difference.pixels[i] = i < b.pixels.size() && a.pixels[i] == b.pixels[i] ? 0xFF000000u : 0xFFFFFFFFu;
    return difference;
}

void keepForTheEye(const NamedPicture& got, const Picture& wanted) {
    std::filesystem::create_directories(kFailed);
    save(got.picture, got.name + "-got.png");
    save(wanted, got.name + "-wanted.png");
    save(differenceOf(got.picture, wanted), got.name + "-difference.png");
}

TEST(Pictures, OfTheDocumentsAndTheStylesKeepEveryPixel) {
    portable::setStderrLogPriority(ANDROID_LOG_SILENT);
    std::set<std::string> drawn;
    for (const NamedPicture& got : drawPictures(QX_SOURCE_DIR)) {
        drawn.insert(got.name + ".png");
        const std::filesystem::path file = kKept / (got.name + ".png");
        if (!std::filesystem::exists(file)) {
            ADD_FAILURE() << got.name << " is new; run tests/golden/refresh_pictures.sh";
            continue;
        }
        const Picture wanted = qxrender::readPng(file.string());
        if (wanted.width == got.picture.width && wanted.pixels == got.picture.pixels) continue;
        keepForTheEye(got, wanted);
        ADD_FAILURE() << got.name << " has changed; see " << kFailed;
    }
    for (const auto& entry : std::filesystem::directory_iterator(kKept))
        EXPECT_TRUE(drawn.count(entry.path().filename().string())) << entry.path() << " is not drawn any more";
}

}  // namespace
