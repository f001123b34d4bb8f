#include "golden/pictures.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "color.h"
#include "effect/QxEffect.h"
#include "failure.h"
#include "golden/coverage_file.h"
#include "pixel/QxBitmap.h"
#include "pixel/QxGlyph.h"
#include "style_file.h"
#include "style_stack.h"

namespace QxFontEffect::test {

namespace {

using qxrender::Picture;
using qxrender::Style;

/// Room around the letters. The widest effects are cut by the bitmap's edge, as they may be in an app.
constexpr int kMargin = 20;

Picture draw(const Style& style, Coverage coverage) {
    const int width = coverage.width + 2 * kMargin;
    const int height = coverage.height + 2 * kMargin;
    QxEffect stack;
    addStyle(stack, style);
    stack.addText(textColorOf(style));
    QxBitmap output(static_cast<unsigned>(width), static_cast<unsigned>(height), 4u);
    stack.initEffect(width, height);
    stack.setDstBitmap(&output);
    QxGlyph glyph{coverage.pixels.data(), static_cast<uint16_t>(coverage.width), static_cast<uint16_t>(coverage.height),
                  0, 0};
    stack.renderEffectLayer(kMargin, kMargin, &glyph);
    stack.doEffectPostProcessing();
    stack.compositeLayers(&output);

    Picture picture;
    picture.width = width;
    picture.height = height;
    for (size_t i = 0; i < static_cast<size_t>(width) * static_cast<size_t>(height); ++i) {
        const unsigned char* p = output.pixels + 4 * i;
        // The stack works on red, green, blue, alpha in memory.
        picture.pixels.push_back(static_cast<uint32_t>(p[3]) << 24 | static_cast<uint32_t>(p[0]) << 16 |
                                 static_cast<uint32_t>(p[1]) << 8 | p[2]);
    }
    return picture;
}

std::string trimmed(const std::string& text) {
    const size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::vector<std::string> split(const std::string& text, char mark) {
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, mark);) parts.push_back(trimmed(part));
    return parts;
}

/// picture | text colour | ground | mode | effect; effect ...
Style parseVariant(const std::vector<std::string>& columns) {
    if (columns.size() != 5) throw qxrender::Failure("pictures.txt: a line without five columns");
    Style style;
    style.color = qxrender::parseColor(columns[1], "colour");
    style.mode = columns[3] == "plain"   ? qxrender::LayerMode::Plain
                 : columns[3] == "layer" ? qxrender::LayerMode::Layer
                                         : qxrender::LayerMode::Auto;
    for (const std::string& effect : split(columns[4], ';')) style.effects.push_back(qxrender::parseEffect(effect));
    return style;
}

void appendBelow(const Picture& picture, Picture& sheet) {
    sheet.width = picture.width;
    sheet.height += picture.height;
    sheet.pixels.insert(sheet.pixels.end(), picture.pixels.begin(), picture.pixels.end());
}

void drawDocumented(const std::string& root, const Coverage& coverage, std::vector<NamedPicture>& pictures) {
    std::ifstream file(root + "/docs/gallery/pictures.txt");
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line[0] == '#') continue;
        const std::vector<std::string> columns = split(line, '|');
        if (pictures.empty() || pictures.back().name != columns[0]) pictures.push_back({columns[0], {}});
        appendBelow(draw(parseVariant(columns), coverage), pictures.back().picture);
    }
}

void drawStyles(const std::string& root, const Coverage& coverage, std::vector<NamedPicture>& pictures) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(root + "/styles"))
        if (entry.path().extension() == ".json") files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    for (const auto& file : files)
        pictures.push_back({"style-" + file.stem().string(), draw(qxrender::readStyle(file.string()), coverage)});
}

}  // namespace

std::vector<NamedPicture> drawPictures(const std::string& root) {
    const Coverage coverage = readCoverage(root + "/tests/data/coverage/rag.pgm");
    if (coverage.pixels.empty()) throw qxrender::Failure("the stored coverage cannot be read");
    // Pattern files of the documented pictures are named from here.
    std::filesystem::current_path(root);
    std::vector<NamedPicture> pictures;
    drawDocumented(root, coverage, pictures);
    drawStyles(root, coverage, pictures);
    return pictures;
}

}  // namespace QxFontEffect::test
