#include <memory>
#include <string>
#include <vector>

#include "base/QxString.h"
#include "effect/QxEffect.h"
#include "scene/fonts.h"
#include "text/QxTextObject.h"
#include "text/counted_alloc.h"
#include "text/long_text.h"
#include "text/text_path.h"

namespace qxbench {

using namespace QxFontEffect;

namespace {

constexpr char kObjects[] = "memory: text objects";
constexpr char kEffects[] = "memory: most bytes that one effect takes while it runs";
constexpr int kObjectCount = 1000;

/// @param prepare  void(QxTextObject&).
template <typename Prepare>
double bytesPerObject(Prepare prepare) {
    std::vector<std::unique_ptr<QxTextObject>> objects(kObjectCount);
    // The first one also makes what all of them share.
    QxTextObject first;
    first.Construct();
    prepare(first);
    resetHeapPeak();
    for (std::unique_ptr<QxTextObject>& object : objects) {
        object = std::make_unique<QxTextObject>();
        object->Construct();
        prepare(*object);
    }
    return static_cast<double>(heapUse().current) / kObjectCount;
}

void giveText(QxTextObject& object) {
    QxString text;
    text.Construct(someWords(20).c_str());
    object.SetText(&text);
    android::Paint paint = benchPaint(32.0f);
    object.SetPaint(paint);
}

void giveEffects(QxTextObject& object) {
    giveText(object);
    object.GetEffect()->addOuterShadowText(135.0f, 4.0f, 8.0f, 0xFF000000u, 0.5f);
    object.GetEffect()->addStrokeText(3.0f, 0xFFFFFFFFu, 1.0f, 0, 1);
}

void measureObjects(Report& report) {
    report.figure(kObjects, "idle object", bytesPerObject([](QxTextObject&) {}), "bytes");
    report.figure(kObjects, "idle object with a text of 20 letters", bytesPerObject(giveText), "bytes");
    report.figure(kObjects, "idle object with text, shadow and stroke", bytesPerObject(giveEffects), "bytes");

    // Once before, for caches of glyphs and metrics.
    LongText text(500, Breaks::Newlines);
    text.render();
    resetHeapPeak();
    text.render();
    const HeapUse use = heapUse();
    report.figure(kObjects, "render of 500 lines, most bytes a pixel of the picture",
                  static_cast<double>(use.peak) / static_cast<double>(text.pixels()), "bytes");
    report.figure(kObjects, "render of 500 lines, requests a line",
                  static_cast<double>(use.requests) / static_cast<double>(text.lines()), "");
}

}  // namespace

void measureMemory(const Options& options, const Rows& rows, Report& report) {
    if (!heapIsCounted()) return;
    if (std::string(kObjects).find(options.filter) != std::string::npos) measureObjects(report);
    for (const Row& row : rows) {
        if (row.workingPixels == 0 || row.name().find(options.filter) == std::string::npos) continue;
        const Case work = row.make();
        work.reset();
        resetHeapPeak();
        work.ours();
        const double peak = static_cast<double>(heapUse().peak);
        report.figure(kEffects, row.name() + ", a pixel of its area", peak / static_cast<double>(row.workingPixels),
                      "bytes");
    }
}

}  // namespace qxbench
