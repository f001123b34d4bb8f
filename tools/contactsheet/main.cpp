// Puts PNG pictures into rows on one sheet.
//
//   contactsheet -o SHEET.png [--columns N] [--cell WxH] [--gap N] [--background COLOR] PICTURE.png...
#include <CLI/CLI.hpp>

#include <charconv>
#include <cstdio>
#include <exception>
#include <string>
#include <system_error>
#include <vector>

#include "color.h"
#include "failure.h"
#include "output_file.h"
#include "png_file.h"
#include "sheet.h"

namespace {

using qxrender::Failure;

constexpr int kLargestCell = 16384;  // pixels; no larger picture is read

/// Reads "480x160".
bool parseCell(const std::string& text, contactsheet::Layout* layout) {
    const char* const end = text.data() + text.size();
    const auto width = std::from_chars(text.data(), end, layout->cellWidth);
    if (width.ec != std::errc() || width.ptr == end || *width.ptr != 'x') return false;
    const auto height = std::from_chars(width.ptr + 1, end, layout->cellHeight);
    const auto fits = [](int side) { return side >= 1 && side <= kLargestCell; };
    return height.ec == std::errc() && height.ptr == end && fits(layout->cellWidth) && fits(layout->cellHeight);
}

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
    if (!cell.empty() && !parseCell(cell, &layout)) throw Failure("--cell: '" + cell + "' is no size such as 480x160");
    layout.background = qxrender::parseColor(background, "--background");

    std::vector<qxrender::Picture> pictures;
    pictures.reserve(files.size());
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
