#include "text/text_path.h"

#include <string>

#include "text/long_text.h"

namespace qxbench {
namespace {

constexpr char kGroup[] = "text path: time per line of a render through a text object";

/// Seconds a line; 0 for a text that does not draw.
double timePerLine(int lines, Breaks breaks, const Options& options) {
    LongText text(lines, breaks);
    if (!text.lastLineIsDrawn()) return 0.0;
    if (options.check) return 1.0;
    Case work;
    work.ours = [&text] { text.render(); };
    return measure(work, kOurs, options.effort).ours.median / text.lines();
}

bool compareLengths(const std::string& name, Breaks breaks, const Options& options, Report& report) {
    const int few = options.check ? 5 : 500, many = options.check ? 50 : 5000;
    const double shortText = timePerLine(few, breaks, options);
    const double longText = timePerLine(many, breaks, options);
    if (shortText == 0.0 || longText == 0.0) return false;
    if (options.check) return true;
    report.figure(kGroup, name + ", 500 lines", shortText * 1e6, "us");
    report.figure(kGroup, name + ", 5,000 lines", longText * 1e6, "us");
    report.figure(kGroup, name + ", 5,000 lines against 500", longText / shortText, "");
    return true;
}

}  // namespace

bool measureTextPath(const Options& options, Report& report) {
    const bool paragraphs = compareLengths("newlines", Breaks::Newlines, options, report);
    return compareLengths("one wrapped paragraph", Breaks::Wrapping, options, report) && paragraphs;
}

}  // namespace qxbench
