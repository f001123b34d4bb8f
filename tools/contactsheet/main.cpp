// Puts PNG pictures into rows on one sheet.
//
//   contactsheet -o SHEET.png [--columns N] [--cell WxH] [--gap N] [--background COLOR] PICTURE.png...
#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "color.h"
#include "failure.h"
#include "output_file.h"
#include "png_file.h"
#include "sheet.h"

namespace {

using qxrender::Failure;

void run(int argc, char** argv) {
    CLI::App app("Puts PNG pictures into rows on one sheet.", "contactsheet");
    contactsheet::Layout layout;
    std::string output, cell, background = "#ffffff";
    std::vector<std::string> files;
    app.add_option("-o,--output", output, "PNG file to write")->required();
    app.add_option("--columns", layout.columns, "pictures in a row")->check(CLI::Range(1, 100));
    app.add_option("--cell", cell, "largest size of a picture, WxH, default 480x160");
    app.add_option("--gap", layout.gap, "pixels between the pictures")->check(CLI::Range(0, 1000));
    app.add_option("--background", background, "colour of the sheet");
    app.add_option("pictures", files, "PNG files")->required();
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        std::fputs(app.help().c_str(), stdout);
        return;
    } catch (const CLI::ParseError& error) {
        throw Failure(error.what());
    }
    char rest = 0;
    if (!cell.empty() && (std::sscanf(cell.c_str(), "%5dx%5d%c", &layout.cellWidth, &layout.cellHeight, &rest) != 2 ||
                          layout.cellWidth < 1 || layout.cellHeight < 1))
        throw Failure("--cell: '" + cell + "' is no size such as 480x160");
    layout.background = qxrender::parseColor(background, "--background");

    std::vector<qxrender::Picture> pictures;
    for (const std::string& file : files) pictures.push_back(qxrender::readPng(file));
    qxrender::OutputFile("", output, qxrender::encodePng(makeSheet(pictures, layout))).publish();
}

}  // namespace

int main(int argc, char** argv) {
    try {
        run(argc, argv);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "contactsheet: %s\n", error.what());
        return 2;
    }
}
