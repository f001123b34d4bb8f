// Draws the documented pictures and the styles over stored coverage into a folder; see refresh_pictures.sh.
//
//   qx_draw_pictures PROJECT FOLDER
#include <android/log.h>
#include <portable/log_sink.h>

#include <cstdio>
#include <exception>

#include "golden/pictures.h"
#include "output_file.h"
#include "png_file.h"

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: qx_draw_pictures PROJECT FOLDER\n");
        return 2;
    }
    portable::setStderrLogPriority(ANDROID_LOG_SILENT);
    try {
        const std::string folder = argv[2];
        for (const auto& [name, picture] : QxFontEffect::test::drawPictures(argv[1]))
            qxrender::OutputFile("", folder + "/" + name + ".png", qxrender::encodePng(picture)).publish();
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "qx_draw_pictures: %s\n", error.what());
        return 2;
    }
}
