#include <android/log.h>
#include <portable/log_sink.h>

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "harness/check.h"
#include "harness/machine.h"
#include "harness/measure.h"
#include "harness/options.h"
#include "harness/report.h"
#include "rows/rows.h"
#include "scene/fonts.h"
#include "scene/masks.h"
#include "text/text_path.h"

namespace qxbench {
namespace {

constexpr char kHeadline[] = "M";
constexpr char kTextPath[] = "text path";

/// A filter that ends with $ has to stand at the end of the name: "M 5$" is not "M 50".
bool isWanted(const std::string& name, const Options& options) {
    const std::string& filter = options.filter;
    if (filter.empty() || filter.back() != '$') return name.find(filter) != std::string::npos;
    const size_t length = filter.size() - 1;
    return name.size() >= length && name.compare(name.size() - length, length, filter, 0, length) == 0;
}

Rows rowsFor(const std::vector<Mask>& masks) {
    Rows rows;
    addKernelRows(masks, rows);
    addShadowRows(masks, rows);
    addGlowRows(masks, rows);
    addStrokeRows(masks, rows);
    addReliefRows(masks, rows);
    addFillRows(masks, rows);
    addBlendRows(masks, rows);
    addLayerRows(masks, rows);
    for (const Mask& mask : masks)
        if (masks.size() == 1 || mask.name == kHeadline) addPictureRows(mask, rows);
    return rows;
}

int check(const Options& options) {
    const std::vector<Mask> masks = makeTinyMask();
    Report report(false, false);
    int rows = 0, wrong = 0;
    for (const Row& row : rowsFor(masks)) {
        if (!isWanted(row.name(), options)) continue;
        ++rows;
        if (!checkRow(row, options.peers)) ++wrong;
    }
    if (isWanted(kTextPath, options) && !measureTextPath(options, report)) {
        std::printf("%s WRONG: a long text is not drawn\n", kTextPath);
        ++wrong;
    }
    std::printf("checked %d rows, %d wrong\n", rows, wrong);
    return wrong == 0 ? 0 : 1;
}

int measureAll(const Options& options) {
    const std::vector<Mask> masks = makeMasks();
    Report report(options.plain, options.peers);
    report.machine(describeMachine(options.peers));
    report.masks(masks);
    report.tableHead();
    const unsigned contenders = kOurs | (options.plain ? kPlain : 0u) | (options.peers ? kPeer : 0u);
    Rows measuredForMemory;
    for (const Row& row : rowsFor(masks)) {
        if (row.mask == kHeadline) measuredForMemory.push_back(row);
        if (isWanted(row.name(), options)) report.row(row, measure(row.make(), contenders, options.effort));
    }
    report.pictureSum();
    if (isWanted(kTextPath, options) && !measureTextPath(options, report)) return 1;
    measureMemory(options, measuredForMemory, report);
    if (!options.json.empty() && !report.writeJson(options.json)) {
        std::fprintf(stderr, "qxbench: %s cannot be written\n", options.json.c_str());
        return 1;
    }
    return 0;
}

}  // namespace
}  // namespace qxbench

int main(int argc, char** argv) {
    const qxbench::Options options = qxbench::readOptions(argc, argv);
    // Formatting and writing log lines is not what is measured.
    portable::setStderrLogPriority(ANDROID_LOG_SILENT);
    try {
        qxbench::setUpFonts();
        return options.check ? qxbench::check(options) : qxbench::measureAll(options);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "qxbench: %s\n", error.what());
        return 1;
    }
}
