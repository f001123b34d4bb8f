#include <chrono>
#include <exception>
#include <iostream>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include <android/log.h>
#include <portable/log_sink.h>

#include "failure.h"
#include "options.h"
#include "output_file.h"
#include "png_file.h"
#include "render.h"
#include "report.h"
#include "style_file.h"

namespace qxrender {

namespace {

void trim(Rendering& rendering, int margin) {
    Box box = inkBox(rendering.picture);
    if (box.isEmpty()) return;
    box = {box.left - margin, box.top - margin, box.right + margin, box.bottom + margin};
    rendering.picture = cropped(rendering.picture, box);
    rendering.textX -= box.left;
    rendering.textY -= box.top;
}

/// Every file is complete before the first one gets its name, so that a failure leaves none.
void publish(const std::vector<std::unique_ptr<OutputFile>>& files) {
    size_t done = 0;
    try {
        for (; done < files.size(); ++done) files[done]->publish();
    } catch (...) {
        for (size_t i = 0; i < done; ++i) files[i]->withdraw();
        throw;
    }
}

void run(const Options& options) {
    // An error is one line; what the library logs on the way is for those who ask.
    if (!options.verbose) portable::setStderrLogPriority(ANDROID_LOG_SILENT);
    std::vector<std::unique_ptr<OutputFile>> files;
    if (!options.saveStyle.empty())
        files.push_back(std::make_unique<OutputFile>("style ", options.saveStyle, formatStyle(options.job.style)));
    if (options.output.empty()) return publish(files);

    Rendering rendering = render(options.job);
    const auto start = std::chrono::steady_clock::now();
    if (options.trim) trim(rendering, *options.trim);
    if (options.background) flattenOnto(rendering.picture, *options.background);
    files.push_back(std::make_unique<OutputFile>("", options.output, encodePng(rendering.picture)));
    const std::chrono::duration<double, std::milli> writing = std::chrono::steady_clock::now() - start;
    rendering.milliseconds.emplace_back("write", writing.count());
    publish(files);
    if (!options.report || std::cout << formatReport(rendering) << std::flush) return;
    for (const auto& file : files) file->withdraw();
    throw Failure("cannot write the report to standard output");
}

int complain(const char* what) {
    std::cerr << "qxrender: " << what << "\n";
    return 2;
}

}  // namespace

}  // namespace qxrender

int main(int argc, char** argv) {
    try {
        const auto options = qxrender::parseOptions(argc, argv);
        if (options) qxrender::run(*options);
        return 0;
    } catch (const qxrender::Failure& failure) {
        return qxrender::complain(failure.what());
    } catch (const std::bad_alloc&) {
        return qxrender::complain("out of memory");
    } catch (const std::exception& error) {
        return qxrender::complain(error.what());
    }
}
